#include <algorithm>

#include "Figures.h"
#include "Growth.h"
#include "LargeWindow.h"
#include "settings/DeviceSetup.h"
#include "ui/registers/RegistersPage.h"

// Registers, and fields: each in a device without a window, and in the real window.

namespace {

constexpr int kPLLs = 1;

/// A device without a window, on the bare simulated port.
struct BareDevice {
    TempFolder folder;
    SimulatedPort port;
    cPart part;

    BareDevice(int registers, int fields) {
        folder.File("LARGE.ini", LargeDevice(registers, fields, fields - 2 * kPLLs, kPLLs));
        part.UsePort(port);
        Select();
    }

    void Select() {
        std::string name = "LARGE";
        SetupPartForm(part, folder.Path(""), name, true);
    }
};

double RefreshSeconds(LargeWindow& large) {
    return MedianSeconds([&large] {
               large.Refresh(false);
               large.Refresh(true);
           }) /
           2;
}

/// Nothing is left over from the round before, as between two acts of the user.
void Settle() {
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

double SelectSeconds(LargeWindow& large) {
    return MedianSeconds(Settle, [&large] { large.Select(); });
}

double RowsSeconds(LargeWindow& large) {
    large.window->SelectTab("Registers");
    auto* page = large.window->findChild<RegistersPage*>();
    const auto prepare = [page] {
        page->ClearRows();
        Settle();
    };
    return MedianSeconds(prepare, [&large, page] {
        for (const cRegister& each : large.part.Registers()) {
            page->AddRow(each);
        }
    });
}

std::vector<double> WithRegisters(int registers) {
    constexpr int kFields = 10;
    BareDevice bare(registers, kFields);
    LargeWindow large(registers, kFields, kFields - 2 * kPLLs, kPLLs);
    const std::string last = "R" + std::to_string(registers - 1);
    return {MedianSeconds([&bare] { bare.Select(); }), SelectSeconds(large), RefreshSeconds(large), RowsSeconds(large),
            MedianSeconds([&bare, &last] {
                std::string name = last;
                bare.part.LoadRegister(name);
            })};
}

/// Ten fields lie in a register, as in a real device.
std::vector<double> WithFields(int fields) {
    constexpr int kFieldsOfRegister = 10;
    BareDevice bare(fields / kFieldsOfRegister, fields);
    LargeWindow large(fields / kFieldsOfRegister, fields, fields - 2 * kPLLs, kPLLs);
    const std::string last = "F" + std::to_string(fields - 1);
    double written = 0;
    return {MedianSeconds([&bare] { bare.Select(); }), SelectSeconds(large), RefreshSeconds(large),
            MedianSeconds([&bare, &last, &written] {
                written = written == 0 ? 1 : 0;
                bare.part.PrgmBits().At(last).Value(written);
            })};
}

}   // namespace

std::vector<Growth> RegisterGrowth() {
    return Grow({{"selecting a device, without a window", Expected::Proportional},
                 {"selecting a device, in the window", Expected::Proportional},
                 {"UpdateDisplays in the window, every bit turned", Expected::Proportional},
                 {"building the rows of the Registers page", Expected::Proportional},
                 {"LoadRegister of the last one by its name", Expected::Constant}},
                WithRegisters);
}

std::vector<Growth> FieldGrowth() {
    return Grow({{"selecting a device, without a window", Expected::Proportional},
                 {"selecting a device, in the window", Expected::Proportional},
                 {"UpdateDisplays in the window, every bit turned", Expected::Proportional},
                 {"writing the last one by its name", Expected::Constant}},
                WithFields);
}
