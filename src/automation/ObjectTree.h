#pragma once

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QStringList>
#include <map>
#include <memory>

#include "automation/DeviceInterfaces.h"
#include "automation/Factory.h"
#include "automation/Interface.h"

class cPart;
class ProgramWindow;

/// All objects of the service: it finds the one that a call names, makes the call, and turns whatever fails in it into
/// the error that the client gets. While a call runs the window asks nobody anything.
class ObjectTree final : public QDBusVirtualObject {
public:
    ObjectTree(cPart& part, Factory& factory, ProgramWindow& window);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

private:
    /// One interface of an object and what its members work on.
    struct Face {
        const Interface* interface;
        void* object;
    };
    /// What stands at a path: an object, or only the way to others.
    struct Node {
        QList<Face> faces;
        QStringList children;
        std::shared_ptr<void> kept;   ///< Lives until the call has ended.
        bool exists = false;
    };

    [[nodiscard]] Node Find(const QString& path) const;
    [[nodiscard]] Node FindApplication(const QStringList& way) const;
    [[nodiscard]] Node FindDevice(const QStringList& way) const;
    [[nodiscard]] QVariantList Answer(const QDBusMessage& message) const;
    [[nodiscard]] static QVariantList AnswerProperty(const Node& node, const QDBusMessage& message);

    cPart& part_;
    Factory& factory_;
    ProgramWindow& window_;
    Interface factoryFace_ = FactoryInterface();
    Interface applicationFace_ = ApplicationInterface();
    Interface objectFace_ = ObjectInterface();
    DeviceInterfaces device_;
};
