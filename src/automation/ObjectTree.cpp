#include "automation/ObjectTree.h"

#include <QDBusConnection>
#include <QDBusVariant>

#include "automation/Application.h"
#include "automation/Factory.h"
#include "automation/Paths.h"
#include "burst/cBurst.h"
#include "core/Errors.h"
#include "core/cPart.h"
#include "machine/ProgramWindow.h"
#include "pll/cPLL.h"

namespace {

const QString kIntrospectable = QStringLiteral("org.freedesktop.DBus.Introspectable");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kErrors = kServiceName + QStringLiteral(".Error.");

/// A position or number as it stands in a path; 0 for any other text.
int NumberIn(const QString& text) {
    bool whole = false;
    const int number = text.toInt(&whole);
    return whole && number > 0 && QString::number(number) == text ? number : 0;
}

QStringList Positions(int count) {
    QStringList list;
    for (int i = 1; i <= count; ++i) {
        list << QString::number(i);
    }
    return list;
}

/// While it lives nothing of the window waits for somebody's click.
class Unattended {
public:
    explicit Unattended(ProgramWindow& window) : window_(window) { window_.Unattended(true); }
    Unattended(const Unattended&) = delete;
    Unattended& operator=(const Unattended&) = delete;
    ~Unattended() { window_.Unattended(false); }

private:
    ProgramWindow& window_;
};

QDBusMessage ErrorReply(const QDBusMessage& message, const char* name, const std::exception& error) {
    return message.createErrorReply(kErrors + QString::fromLatin1(name), QString::fromUtf8(error.what()));
}

}   // namespace

ObjectTree::ObjectTree(cPart& part, Factory& factory, ProgramWindow& window)
    : part_(part), factory_(factory), window_(window) {}

ObjectTree::Node ObjectTree::FindApplication(const QStringList& way) const {
    Node node;
    if (way.isEmpty()) {
        node.exists = true;
        for (const int number : factory_.Numbers()) {
            node.children << QString::number(number);
        }
    } else if (const auto served = factory_.Find(NumberIn(way[0])); served != nullptr && way.size() == 1) {
        node.exists = true;
        node.faces = {{&applicationFace_, &served->application}, {&objectFace_, &served->application}};
        node.kept = served;
    }
    return node;
}

ObjectTree::Node ObjectTree::FindDevice(const QStringList& way) const {
    Node node;
    if (way.isEmpty()) {
        node.exists = true;
        node.faces << Face{&device_.part, &part_};
    }
    const auto visit = [&](const char* name, const auto& items, const Interface& interface) {
        if (way.isEmpty()) {
            node.children << QString::fromLatin1(name);
        } else if (way[0] != QLatin1String(name) || way.size() > 2) {
            return;
        } else if (way.size() == 1) {
            node.exists = true;
            node.children = Positions(items.Count());
        } else if (const int position = NumberIn(way[1]); position > 0) {
            node.exists = true;
            node.faces << Face{&interface, &items.At(position)};
        }
    };
    visit("Registers", part_.Registers(), device_.registers);
    visit("PrgmBits", part_.PrgmBits(), device_.prgmBits);
    visit("PrgmPins", part_.PrgmPins(), device_.prgmPins);
    visit("PLLs", part_.PLLs(), device_.plls);
    visit("BurstCmds", part_.BurstCmds(), device_.burstCmds);
    return node;
}

ObjectTree::Node ObjectTree::Find(const QString& path) const {
    const QStringList way = path.mid(kRootPath.size()).split('/', Qt::SkipEmptyParts);
    Node node;
    if (way.isEmpty()) {
        node.exists = true;
        node.faces << Face{&factoryFace_, &factory_};
        node.children = {kApplications, QStringLiteral("Part")};
    } else if (way[0] == kApplications) {
        node = FindApplication(way.mid(1));
    } else if (way[0] == QLatin1String("Part")) {
        node = FindDevice(way.mid(1));
    }
    if (!node.exists) {
        throw CallError("UnknownObject", "there is no object at " + path.left(200) + ": introspecting " + kRootPath +
                                             " shows those that there are");
    }
    return node;
}

QString ObjectTree::introspect(const QString& path) const {
    QString text;
    try {
        const Node node = Find(path);
        for (const Face& face : node.faces) {
            text += face.interface->Introspection();
        }
        for (const QString& child : node.children) {
            text += QStringLiteral("  <node name=\"%1\"/>\n").arg(child);
        }
    } catch (const std::exception&) {
        // handleMessage has refused the call before.
    }
    return text;
}

QVariantList ObjectTree::AnswerProperty(const Node& node, const QDBusMessage& message) {
    const QVariantList in = message.arguments();
    const QString wanted = in.value(0).toString();
    for (const Face& face : node.faces) {
        if (!wanted.isEmpty() && face.interface->Name() != wanted) {
            continue;
        }
        if (message.member() == "Get" && message.signature() == "ss") {
            const QVariant value = face.interface->Get(face.object, in[1].toString());
            return {QVariant::fromValue(QDBusVariant(value))};
        }
        if (message.member() == "Set" && message.signature() == "ssv") {
            face.interface->Set(face.object, in[1].toString(), in[2].value<QDBusVariant>().variant());
            return {};
        }
        if (message.member() == "GetAll" && message.signature() == "s") {
            return {face.interface->All(face.object)};
        }
        throw CallError("UnknownMethod", "properties know Get (ss), Set (ssv) and GetAll (s)");
    }
    throw CallError("UnknownInterface", "the object has no interface called '" + wanted.left(200) + "'");
}

QVariantList ObjectTree::Answer(const QDBusMessage& message) const {
    const Node node = Find(message.path());
    if (message.interface() == kProperties) {
        return AnswerProperty(node, message);
    }
    const Face* asked = nullptr;
    for (const Face& face : node.faces) {
        const bool named = face.interface->Name() == message.interface();
        if (named || (message.interface().isEmpty() && face.interface->HasMethod(message.member()))) {
            asked = &face;
        }
    }
    if (asked == nullptr) {
        throw CallError("UnknownInterface", "the object at " + message.path() + " has no interface called '" +
                                                message.interface().left(200) + "'");
    }
    return asked->interface->Call(asked->object, message.member(), message.arguments());
}

bool ObjectTree::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
    QDBusMessage reply;
    try {
        if (message.interface() == kIntrospectable) {
            static_cast<void>(Find(message.path()));
            return false;   // Qt puts the answer together, with introspect().
        }
        const Unattended whileItRuns(window_);
        factory_.Calling(message.service());
        reply = message.createReply(Answer(message));
    } catch (const CallError& error) {
        reply = ErrorReply(message, error.Name(), error);
    } catch (const LookupError& error) {
        reply = ErrorReply(message, "Lookup", error);
    } catch (const ConversionError& error) {
        reply = ErrorReply(message, "Conversion", error);
    } catch (const RefusedError& error) {
        reply = ErrorReply(message, "Refused", error);
    } catch (const std::exception& error) {
        reply = ErrorReply(message, "Failed", error);
    }
    if (message.isReplyRequired()) {
        bus.send(reply);
    }
    return true;
}
