#pragma once

#include <string>
#include <vector>

class cPart;
class Dialogs;

// The file that holds a set-up of the device: port lines, register values, references, pins, and the burst list. An
// INI file, usually named *.mac. The two saving commands write the same file, and the two loading ones read it alike.

/// How loading went.
struct SetupReport {
    bool applied = false;
    std::string refusal;                ///< Why the file was left unread; the device is as it was.
    std::vector<std::string> skipped;   ///< What of an applied file couldn't be used, each with section and key.
    std::string file;

    /// All of it for the user, a long list shortened; empty if there is nothing to say.
    [[nodiscard]] std::string Message() const;
};

/// Replaces the file in one piece. Returns why that failed; the file then is as it was.
std::string SaveBurstCommands(cPart& part, const std::string& file);

/// Brings the device to the state of the file and adds its commands behind those of the list. Entries that can't be
/// used are left out. A file without the name of this very device changes nothing.
SetupReport LoadBurstCommands(cPart& part, const std::string& file);

/// The menu and button commands: ask for the file in a dialog of that title, do it, and tell what went wrong. Nothing
/// happens during a burst run. Device and dialogs must outlive the question.
void SaveWithDialog(cPart& part, Dialogs& dialogs, const std::string& title);
void LoadWithDialog(cPart& part, Dialogs& dialogs, const std::string& title);
