#include <stdexcept>

#include "Figures.h"
#include "Growth.h"
#include "OneRegister.h"
#include "burst/BurstText.h"
#include "burst/SetupFile.h"
#include "burst/cBurst.h"
#include "support/TempFolder.h"

namespace {

void Add(cPart& part, int commands) {
    for (int i = 0; i < commands; ++i) {
        part.AddBurstCommand("R", BurstKind::Load);
    }
}

void Play(cPart& part) {
    for (const cBurst& command : part.BurstCmds()) {
        command.Execute();
    }
}

/// Leaves the list as it was: what is loaded takes the place of what was saved.
void SaveAndLoad(cPart& part, const std::string& file) {
    const std::string error = SaveBurstCommands(part, file);
    part.DeleteBurstCommands();
    if (!error.empty() || !LoadBurstCommands(part, file).applied) {
        throw std::runtime_error("the set-up file can't be saved and loaded: " + error);
    }
}

std::vector<double> WithCommands(int commands) {
    const TempFolder folder;
    OneRegister device;
    cPart& part = device.part;
    const double adding =
        MedianSeconds([&part] { part.DeleteBurstCommands(); }, [&part, commands] { Add(part, commands); });
    return {adding, MedianSeconds([&part] { Play(part); }),
            MedianSeconds([&part] { Keep(BurstText(part, false).size()); }),
            MedianSeconds([&part] { Keep(BurstText(part, true).size()); }),
            MedianSeconds([&part, &folder] { SaveAndLoad(part, folder.Path("set-up.mac")); })};
}

}   // namespace

std::vector<Growth> CommandGrowth() {
    return Grow({{"adding all", Expected::Proportional},
                 {"playing all", Expected::Proportional},
                 {"the text of the list", Expected::Proportional},
                 {"the list as waveforms", Expected::Proportional},
                 {"saving a set-up file and loading it", Expected::Proportional}},
                WithCommands);
}
