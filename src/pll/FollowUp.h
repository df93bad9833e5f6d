#pragma once

#include <string>
#include <vector>

class cPart;

/// What a follow-up sent to the device.
struct Sent {
    bool allowed = false;                 ///< False: changes aren't loaded by themselves.
    std::vector<std::string> registers;   ///< Their names, in the order of sending.
};

/// What follows a change of a PLL: redrawing and loading, in the order that belongs to the control. Loads always but
/// where the name says that it depends on mnuAutoReloadChange. What the display or the port throws ends it.
using FollowUp = Sent (*)(cPart& part, bool autoReloadChange);

Sent ShowAllAndLoad(cPart& part, bool autoReloadChange);
Sent ShowAllAndLoadIfReloading(cPart& part, bool autoReloadChange);
Sent ShowPLLsAndLoad(cPart& part, bool autoReloadChange);
Sent ShowPLLsRegistersAndLoad(cPart& part, bool autoReloadChange);
Sent ShowRegistersPLLsAndLoad(cPart& part, bool autoReloadChange);
Sent LoadAndShowRegistersPLLs(cPart& part, bool autoReloadChange);
