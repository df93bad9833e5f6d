#include <QSettings>
#include <array>

#include "Figures.h"
#include "LargeDevice.h"
#include "OneRegister.h"
#include "ports/Connector.h"
#include "settings/DeviceSetup.h"
#include "support/TempFolder.h"

namespace {

/// A register of 24 bits by its name, against a loop that hands the same bytes to the same port.
Figure LoadRegister() {
    static OneRegister device;
    static std::array<std::uint8_t, 102> bytes{};
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        bytes[i] = static_cast<std::uint8_t>(i % 8);
        bytes[i + 1] = kInvertedControls;
    }
    Port& bare = *device.made.port;
    return Compare(
        "LoadRegister, 24 bits, simulated port", "a bare loop of the same 102 writes", 2,
        [] {
            std::string name = "R";
            device.part.LoadRegister(name);
        },
        [&bare] {
            for (std::size_t i = 0; i < bytes.size(); i += 2) {
                bare.WritePort(0x378, bytes[i]);
                bare.WritePort(0x37A, bytes[i + 1]);
            }
        });
}

/// A whole device from its file, against the toolkit's own reader asked for the keys that the file holds.
Figure SelectDevice(const TempFolder& folder) {
    constexpr int kRegisters = 100;
    constexpr int kFields = 1000;
    const std::string path = folder.File("LARGE.ini", LargeDevice(kRegisters, kFields, 400, 3));
    const QString file = QString::fromStdString(path);
    const QStringList keys = QSettings(file, QSettings::IniFormat).allKeys();
    return Compare(
        "selecting a device, 100 registers and 1,000 fields", "QSettings reading the same keys of the file", 2,
        [&folder] {
            static cPart part;
            std::string name = "LARGE";
            SetupPartForm(part, folder.Path(""), name, true);
            Keep(part.PrgmBits().Count());
        },
        [&] {
            const QSettings settings(file, QSettings::IniFormat);
            for (const QString& key : keys) {
                Keep(settings.value(key).toString().size());
            }
        });
}

}   // namespace

std::vector<Figure> CoreFigures() {
    const TempFolder folder;
    return {LoadRegister(), SelectDevice(folder)};
}
