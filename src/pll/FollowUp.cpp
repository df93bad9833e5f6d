#include "pll/FollowUp.h"

#include "core/cPart.h"

namespace {

Sent Load(cPart& part) {
    part.LoadChanges();
    return {true, part.SentChanges()};
}

}   // namespace

Sent ShowAllAndLoad(cPart& part, bool /*autoReloadChange*/) {
    part.UpdateDisplays();
    return Load(part);
}

Sent ShowAllAndLoadIfReloading(cPart& part, bool autoReloadChange) {
    part.UpdateDisplays();
    return autoReloadChange ? Load(part) : Sent{};
}

Sent ShowPLLsAndLoad(cPart& part, bool /*autoReloadChange*/) {
    part.UpdatePLLDisplay();
    return Load(part);
}

Sent ShowPLLsRegistersAndLoad(cPart& part, bool /*autoReloadChange*/) {
    part.UpdatePLLDisplay();
    part.UpdateRegisterDisplay();
    return Load(part);
}

Sent ShowRegistersPLLsAndLoad(cPart& part, bool /*autoReloadChange*/) {
    part.UpdateRegisterDisplay();
    part.UpdatePLLDisplay();
    return Load(part);
}

Sent LoadAndShowRegistersPLLs(cPart& part, bool /*autoReloadChange*/) {
    Sent sent = Load(part);
    part.UpdateRegisterDisplay();
    part.UpdatePLLDisplay();
    return sent;
}
