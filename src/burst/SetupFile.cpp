#include "burst/SetupFile.h"

#include <algorithm>
#include <utility>

#include "burst/cBurst.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "ini/PrivateProfile.h"
#include "machine/Dialogs.h"
#include "pll/cPLL.h"

namespace {

// The order of the keys is part of the format.

void WriteSetup(cPart& part, ProfileTransaction& file) {
    file.Write("SETUP", "ADDRESS", std::to_string(part.PortAddress()));
    file.Write("SETUP", "CLOCK", std::to_string(part.ClockPosition()));
    file.Write("SETUP", "DATA", std::to_string(part.DataPosition()));
    file.Write("SETUP", "LE", std::to_string(part.LEPosition()));
    file.Write("SETUP", "PART", part.ID());
    int item = 0;
    for (const cPrgmPin& pin : part.PrgmPins()) {
        file.Write("SETUP", "PINPOSITION" + ItemNumber(item++), std::to_string(pin.Position()));
    }
}

void WriteState(cPart& part, ProfileTransaction& file) {
    int item = 0;
    for (const cRegister& stored : part.Registers()) {
        const std::string number = ItemNumber(item++);
        file.Write("MODES", "NAME" + number, stored.ID());
        file.Write("MODES", "VALUE" + number, FileText(stored.Value()));
    }
    item = 0;
    for (const cPLL& pll : part.PLLs()) {
        file.Write("MODES", "OSCIN" + ItemNumber(item++), FileText(pll.XtalFrequency()));
    }
    file.Write("MODES", "PINS", std::to_string(part.OutputPinValue()));
}

void WriteCommand(const cBurst& command, const std::string& number, ProfileTransaction& file) {
    const bool delays = command.Command() == BurstKind::Delay;
    file.Write("BURST", "COMMAND" + number, std::to_string(command.Command()));
    file.Write("BURST", "REGISTER" + number, FileText(delays ? command.Delay() : command.Register()));
    if (!delays) {
        file.Write("BURST", "REGISTERNAME" + number, command.RegisterName());
        file.Write("BURST", "PINS" + number, std::to_string(command.OutputPinValue()));
    }
}

/// Asks for a file and uses it. A burst may have begun meanwhile.
void AskForFile(cPart& part, Dialogs& dialogs, const std::string& title, bool save, Dialogs::Answered use) {
    if (part.BurstRunning()) {
        return;
    }
    dialogs.FileDialog(
        {save, title, "All Files (*.*)|*.*|Text Files (*.txt)|*.txt|BurstCommand Files (*.mac)|*.mac", 3, "mac"},
        [&part, &dialogs, title, use = std::move(use)](const std::string& file) {
            if (part.BurstRunning()) {
                dialogs.MessageBox("The burst list is being played: stop it first. Nothing was done.", title,
                                   MessageIcon::Exclamation);
            } else {
                use(file);
            }
        });
}

}   // namespace

std::string SetupReport::Message() const {
    if (!applied || skipped.empty()) {
        return refusal;
    }
    constexpr std::size_t kListed = 20;
    std::string text = "Not all of " + file + " could be used. The rest has been loaded.\n";
    for (std::size_t i = 0; i < std::min(kListed, skipped.size()); ++i) {
        text += '\n' + skipped[i];
    }
    if (skipped.size() > kListed) {
        text += "\nand " + std::to_string(skipped.size() - kListed) + " more.";
    }
    return text;
}

std::string SaveBurstCommands(cPart& part, const std::string& file) {
    ProfileTransaction saved(file, ProfileTransaction::Start::Empty);
    WriteSetup(part, saved);
    WriteState(part, saved);
    saved.Write("BURST", "COUNT", std::to_string(part.BurstCmds().Count()));
    int item = 0;
    for (const cBurst& command : part.BurstCmds()) {
        WriteCommand(command, ItemNumber(item++), saved);
    }
    return saved.Commit() ? std::string() : "Nothing was saved: " + PrivateProfileError();
}

void SaveWithDialog(cPart& part, Dialogs& dialogs, const std::string& title) {
    AskForFile(part, dialogs, title, true, [&part, &dialogs, title](const std::string& file) {
        if (const std::string error = SaveBurstCommands(part, file); !error.empty()) {
            dialogs.MessageBox(error, title, MessageIcon::Exclamation);
        }
    });
}

void LoadWithDialog(cPart& part, Dialogs& dialogs, const std::string& title) {
    AskForFile(part, dialogs, title, false, [&part, &dialogs, title](const std::string& file) {
        if (const std::string message = LoadBurstCommands(part, file).Message(); !message.empty()) {
            dialogs.MessageBox(message, title, MessageIcon::None);
        }
    });
}
