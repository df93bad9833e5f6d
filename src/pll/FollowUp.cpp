#include "pll/FollowUp.h"

#include "core/cPart.h"

Sent RunFollowUp(cPart& part, const FollowUp& followUp, bool autoReloadChange) {
    Sent sent;
    for (const FollowUpStep step : followUp.steps) {
        switch (step) {
            case FollowUpStep::Nothing:
                break;
            case FollowUpStep::ShowPLLs:
                part.UpdatePLLDisplay();
                break;
            case FollowUpStep::ShowRegisters:
                part.UpdateRegisterDisplay();
                break;
            case FollowUpStep::ShowAll:
                part.UpdateDisplays();
                break;
            case FollowUpStep::Load:
                if (followUp.rule == LoadRule::Always || autoReloadChange) {
                    part.LoadChanges();
                    sent = {true, part.SentChanges()};
                }
                break;
        }
    }
    return sent;
}
