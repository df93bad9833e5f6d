#include "automation/Interface.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <cmath>
#include <string_view>
#include <vector>

#include "core/Nearest.h"
#include "core/Numbers.h"

namespace {

constexpr qsizetype kLongestText = 4096;
constexpr qsizetype kLongestList = 32767;

QString TypeOf(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<QDBusArgument>()) {
        return value.value<QDBusArgument>().currentSignature();
    }
    return QString::fromLatin1(QDBusMetaType::typeToSignature(value.metaType()));
}

/// A type as a sentence has it.
QString InWords(const QString& type) {
    static const QMap<QString, QString> kWords{
        {"s", "a string"},           {"d", "a double"},         {"b", "a boolean"},
        {"i", "a 32-bit integer"},   {"n", "a 16-bit integer"}, {"as", "a list of strings"},
        {"ad", "a list of doubles"}, {"o", "an object path"},   {"v", "a variant"}};
    const auto found = kWords.find(type);
    return found == kWords.end() ? "of the type " + type : *found + " (" + type + ")";
}

QString Described(const Interface::Argument& argument, qsizetype index) {
    return QStringLiteral("argument %1 (%2)").arg(index + 1).arg(argument.name);
}

void NeedFinite(double value, const QString& what) {
    if (!std::isfinite(value)) {
        throw ConversionError(
            (what + " is " + QString::fromStdString(GeneralText(value)) + ": a finite number is expected")
                .toStdString());
    }
}

void NeedLength(qsizetype length, qsizetype most, const QString& what, const char* unit) {
    if (length > most) {
        throw ConversionError(QStringLiteral("%1 has %2 %3: at most %4 are taken")
                                  .arg(what)
                                  .arg(length)
                                  .arg(unit)
                                  .arg(most)
                                  .toStdString());
    }
}

/// Makes of a value of the right type one that the model may see, or refuses it.
void Admit(QVariant& value, const QString& type, const QString& what) {
    if (type == "d") {
        NeedFinite(value.toDouble(), what);
    } else if (type == "s") {
        NeedLength(value.toString().size(), kLongestText, what, "characters");
    } else if (type == "as") {
        const QStringList texts = value.toStringList();
        NeedLength(texts.size(), kLongestList, what, "entries");
        for (const QString& text : texts) {
            NeedLength(text.size(), kLongestText, "an entry of " + what, "characters");
        }
    } else if (type == "ad") {
        const auto numbers = qdbus_cast<QList<double>>(value);
        NeedLength(numbers.size(), kLongestList, what, "entries");
        for (const double number : numbers) {
            NeedFinite(number, "an entry of " + what);
        }
        value = QVariant::fromValue(numbers);
    }
}

/// What is wrong with the arguments of a call of that method.
[[noreturn]] void RefuseArguments(const Interface::MethodRow& method, const QVariantList& given) {
    for (qsizetype i = 0; i < method.in.size(); ++i) {
        const Interface::Argument& wanted = method.in[i];
        const QString place = method.name + ": " + Described(wanted, i);
        if (i >= given.size()) {
            throw CallError("Arguments", place + " is missing: it is " + InWords(wanted.type));
        }
        if (TypeOf(given[i]) != wanted.type) {
            throw CallError("Arguments",
                            place + " is " + InWords(TypeOf(given[i])) + ": " + InWords(wanted.type) + " is expected");
        }
    }
    QStringList names;
    for (const Interface::Argument& wanted : method.in) {
        names << wanted.name;
    }
    throw CallError("Arguments", QStringLiteral("%1: %2 arguments were given, %3 are expected: %4")
                                     .arg(method.name)
                                     .arg(given.size())
                                     .arg(names.size())
                                     .arg(names.isEmpty() ? QStringLiteral("none") : names.join(", ")));
}

template <class Rows>
[[noreturn]] void RefuseName(const char* error, const char* kind, const QString& name, const Rows& rows) {
    std::vector<std::string> texts;
    for (const auto& row : rows) {
        texts.push_back(row.name.toStdString());
    }
    const std::vector<std::string_view> known(texts.begin(), texts.end());
    throw CallError(error, QString::fromStdString(UnknownName(kind, name.toStdString(), known)));
}

QString ArgumentXml(const Interface::Argument& argument, const char* direction) {
    return QStringLiteral("      <arg name=\"%1\" type=\"%2\" direction=\"%3\"/>\n")
        .arg(argument.name, argument.type, QString::fromLatin1(direction));
}

QString AnnotationsXml(const QList<Interface::Annotation>& annotations) {
    QString text;
    for (const Interface::Annotation& annotation : annotations) {
        text += QStringLiteral("    <annotation name=\"%1\" value=\"%2\"/>\n").arg(annotation.name, annotation.value);
    }
    return text;
}

QString MethodXml(const Interface::MethodRow& method) {
    QString text = QStringLiteral("    <method name=\"%1\">\n").arg(method.name) + AnnotationsXml(method.annotations);
    for (const Interface::Argument& argument : method.in) {
        text += ArgumentXml(argument, "in");
    }
    for (const Interface::Argument& argument : method.out) {
        text += ArgumentXml(argument, "out");
    }
    return text + "    </method>\n";
}

QString PropertyXml(const Interface::PropertyRow& property) {
    const char* access = !property.set ? "read" : property.get ? "readwrite" : "write";
    return QStringLiteral("    <property name=\"%1\" type=\"%2\" access=\"%3\">\n")
               .arg(property.name, property.type, QString::fromLatin1(access)) +
           AnnotationsXml(property.annotations) + "    </property>\n";
}

}   // namespace

QString Interface::Introspection() const {
    QString text = QStringLiteral("  <interface name=\"%1\">\n").arg(name_) + AnnotationsXml(annotations_);
    for (const PropertyRow& property : properties_) {
        text += PropertyXml(property);
    }
    for (const MethodRow& method : methods_) {
        text += MethodXml(method);
    }
    return text + "  </interface>\n";
}

bool Interface::HasMethod(const QString& name) const {
    return std::any_of(methods_.begin(), methods_.end(), [&](const MethodRow& row) { return row.name == name; });
}

/// The row that takes these arguments. Where several have the name, the one with the nearest number of them tells what
/// is wrong.
const Interface::MethodRow& Interface::FindMethod(const QString& name, const QString& signature,
                                                  const QVariantList& arguments) const {
    const MethodRow* closest = nullptr;
    const auto distance = [&](const MethodRow& row) { return std::abs(row.in.size() - arguments.size()); };
    for (const MethodRow& row : methods_) {
        if (row.name != name) {
            continue;
        }
        QString wanted;
        for (const Argument& argument : row.in) {
            wanted += argument.type;
        }
        if (wanted == signature) {
            return row;
        }
        if (closest == nullptr || distance(row) < distance(*closest)) {
            closest = &row;
        }
    }
    if (closest == nullptr) {
        RefuseName("UnknownMethod", "method", name, methods_);
    }
    RefuseArguments(*closest, arguments);
}

const Interface::PropertyRow& Interface::FindProperty(const QString& name) const {
    for (const PropertyRow& row : properties_) {
        if (row.name == name) {
            return row;
        }
    }
    RefuseName("UnknownProperty", "property", name, properties_);
}

QVariantList Interface::Call(void* object, const QString& method, QVariantList arguments) const {
    QString signature;
    for (const QVariant& argument : arguments) {
        signature += TypeOf(argument);
    }
    const MethodRow& row = FindMethod(method, signature, arguments);
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        Admit(arguments[i], row.in[i].type, row.name + ": " + Described(row.in[i], i));
    }
    return row.run(object, arguments);
}

QVariant Interface::Get(void* object, const QString& property) const {
    const PropertyRow& row = FindProperty(property);
    if (!row.get) {
        throw CallError("PropertyWriteOnly", "the property " + row.name + " can only be written" +
                                                 (HasMethod(row.name) ? ": the method of that name reads it" : ""));
    }
    return row.get(object);
}

void Interface::Set(void* object, const QString& property, QVariant value) const {
    const PropertyRow& row = FindProperty(property);
    if (!row.set) {
        throw CallError("PropertyReadOnly", "the property " + row.name + " can only be read");
    }
    if (TypeOf(value) != row.type) {
        throw CallError("Arguments", "the property " + row.name + " is " + InWords(row.type) + ": " +
                                         InWords(TypeOf(value)) + " was given");
    }
    Admit(value, row.type, "the value for the property " + row.name);
    row.set(object, value);
}

QVariantMap Interface::All(void* object) const {
    QVariantMap all;
    for (const PropertyRow& row : properties_) {
        if (row.get) {
            IgnoringFailures([&] { all.insert(row.name, row.get(object)); });
        }
    }
    return all;
}
