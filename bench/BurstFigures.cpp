#include "Figures.h"
#include "OneRegister.h"
#include "burst/BurstText.h"
#include "burst/SetupFile.h"
#include "burst/cBurst.h"
#include "ports/Connector.h"
#include "support/TempFolder.h"

namespace {

struct Device : OneRegister {
    void Add(int commands) {
        for (int i = 0; i < commands; ++i) {
            part.AddBurstCommand("R", BurstKind::Load);
        }
    }
};

constexpr int kCommands = 1000;

std::vector<Figure> PlayingAndBuilding() {
    static Device device;
    device.Add(kCommands);
    static std::vector<std::int16_t> words;
    for (const cBurst& command : device.part.BurstCmds()) {
        words.insert(words.end(), command.BurstPattern().begin(), command.BurstPattern().end());
    }
    Port& port = *device.made.port;
    const auto play = [] {
        for (const cBurst& command : device.part.BurstCmds()) {
            command.Execute();
        }
    };
    const auto bare = [&port] {
        for (const std::int16_t word : words) {
            port.WritePort(0x378, DataByte(word));
            port.WritePort(0x37A, ControlByte(word));
        }
    };
    const auto build = [] {
        Device fresh;
        fresh.Add(kCommands);
    };
    std::size_t memory = 0;
    for (const cBurst& command : device.part.BurstCmds()) {
        memory += sizeof command + command.BurstPattern().size_bytes() + command.Description().size() +
                  command.RegisterName().size();
    }
    return {Compare("playing 1,000 commands of 24 bits", "a bare loop over the same words", 1.1, play, bare),
            Compare("building 1,000 commands of 24 bits", "playing them", 10, build, play),
            Relate("memory of 1,000 commands, bytes", "their words", 3, static_cast<double>(memory),
                   static_cast<double>(words.size() * sizeof(std::int16_t)))};
}

/// How the cost of a list grows from a quarter of the largest list to the largest: 1 for in proportion.
std::vector<Figure> LongList() {
    const TempFolder folder;
    constexpr int kSmall = 8191;
    const auto roundTrip = [&folder](int commands) {
        Device device;
        device.Add(commands);
        const std::string file = folder.Path("set-up.mac");
        Keep(BurstText(device.part, false).size());
        Keep(SaveBurstCommands(device.part, file).size());
        device.part.DeleteBurstCommands();
        Keep(LoadBurstCommands(device.part, file).applied);
    };
    Figure growth = Compare(
        "list of 32,767: built, shown as text, saved, loaded", "four lists of 8,191", 1.5,
        [&] { roundTrip(4 * kSmall + 3); },
        [&] {
            for (int i = 0; i < 4; ++i) {
                roundTrip(kSmall);
            }
        });
    return {growth};
}

}   // namespace

std::vector<Figure> BurstFigures() {
    auto figures = PlayingAndBuilding();
    for (Figure& figure : LongList()) {
        figures.push_back(std::move(figure));
    }
    return figures;
}
