#include "DeviceOperations.h"
#include "FuzzInput.h"
#include "PartFileWriter.h"
#include "core/Errors.h"
#include "core/cPart.h"
#include "pll/cPLL.h"
#include "ports/SimulatedPort.h"
#include "settings/DeviceSetup.h"
#include "settings/Modes.h"

// Any bytes as a part file, or as the description of one: selecting it never fails, whatever is wrong with it is
// reported, and the device that comes of it bears whatever is done with it.

namespace {

/// Files that begin with this byte describe the part file that is read.
constexpr char kDescribed = '\1';

std::string PartFileOf(std::string_view bytes) {
    const bool described = !bytes.empty() && bytes.front() == kDescribed;
    return described ? DescribedPartFile(bytes.substr(1)) : std::string(bytes);
}

void CheckDevice(cPart& part) {
    for (const Problem& problem : part.FileProblems().All()) {
        Expect(!problem.text.empty() && problem.line >= 0, "a problem has a text");
    }
    for (const cRegister& one : part.Registers()) {
        Expect(part.Registers().Find(one.ID()) == &one, "a register has its name");
    }
    for (const cPrgmBits& field : part.PrgmBits()) {
        Expect(part.PrgmBits().Find(field.ID()) == &field, "a field has its name");
        IgnoringFailures([&] { static_cast<void>(field.Text()); });
        IgnoringFailures([&] { static_cast<void>(field.Value()); });
    }
    Expect(!part.Updating(), "selecting ends every redraw");
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFolder folder;
    static SimulatedPort port;
    FuzzInput input(data, size);
    std::filesystem::remove(folder.Path() + "DEVICE.ini");
    folder.Put("DEVICE.ini", PartFileOf(input.File()));
    cPart part;
    part.UsePort(port);
    std::string name = "DEVICE";
    SetupPartForm(part, folder.Path(), name, input.Flag());
    CheckDevice(part);
    const bool keep = input.Flag();
    OperateDevice(part, input);
    if (keep) {
        const ReferenceTexts references(static_cast<std::size_t>(part.PLLs().Count()), "10");
        std::string error;
        const int mode = AddMode(part, folder.Path(), "M", references, error);
        Expect(error.empty() == (mode >= 0), "a mode that isn't added says why");   // A COUNT may be unreadable.
        Expect(SaveDeviceSettings(part, folder.Path(), references).empty(), "settings are saved");
        try {
            RestoreMode(part, folder.Path(), mode);
        } catch (const UserError&) {   // A register may have a name that an INI file can't keep.
        }
        part.ClearPLL();
        name = "DEVICE";
        SetupPartForm(part, folder.Path(), name, false);
        CheckDevice(part);
    }
    return 0;
}
