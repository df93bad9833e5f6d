#include "DeviceOperations.h"
#include "FuzzInput.h"
#include "burst/SetupFile.h"
#include "core/cPart.h"
#include "ports/SimulatedPort.h"
#include "settings/DeviceSetup.h"

// Any bytes as a set-up file: loading it leaves a device that works, and what is then saved brings it back.

namespace {

constexpr auto kDevice =
    "[SETUP]\nREGISTER_LENGTH=24\nCONTROL_LENGTH=2\nADDRESS=888\nCLOCK=1\nDATA=2\nLE=4\n"
    "[PINS]\nCOUNT=2\nNAME00=CE\nLOCATION00=3\nNAME01=Trigger\nLOCATION01=9\n"
    "[REGISTERS]\nCOUNT=2\nNAME00=R\nVALUE00=800\nNAME01=N\nVALUE01=80001\n"
    "[BITS]\nCOUNT=2\nNAME00=NDIV\nREG00=N\nPOS00=2\nLEN00=16\nTYPE00=Counter\n"
    "NAME01=RDIV\nREG01=R\nPOS01=2\nLEN01=14\nTYPE01=Counter\n"
    "[PLLS]\nCOUNT=1\nNAME00=RF\nNCOUNTER00=NDIV\nRCOUNTER00=RDIV\nOSCIN00=10\n";

void Select(cPart& part, const FuzzFolder& folder) {
    std::string name = "DEVICE";
    SetupPartForm(part, folder.Path(), name, false);
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFolder folder;
    static const std::string device = folder.Put("DEVICE.ini", kDevice);
    static SimulatedPort port;
    FuzzInput input(data, size);
    std::filesystem::remove(folder.Path() + "a.mac");
    const std::string given = folder.Put("a.mac", input.File());
    cPart part;
    part.UsePort(port);
    Select(part, folder);
    const SetupReport report = LoadBurstCommands(part, given);
    Expect(report.applied == report.refusal.empty(), "an unread file is refused with a reason");
    const std::string first = folder.Path() + "first.mac";
    const std::string second = folder.Path() + "second.mac";
    Expect(SaveBurstCommands(part, first).empty(), "a set-up is saved");
    Select(part, folder);
    const SetupReport again = LoadBurstCommands(part, first);
    Expect(again.applied && again.skipped.empty(), "what was saved is loaded: " + again.Message());
    Expect(SaveBurstCommands(part, second).empty(), "a set-up is saved again");
    Expect(FuzzFolder::Read(first) == FuzzFolder::Read(second), "a set-up comes back as it was");
    OperateDevice(part, input);
    return 0;
}
