#include "burst/BurstText.h"

#include "burst/cBurst.h"
#include "core/cPart.h"

std::string BurstText(cPart& part, bool vectors) {
    std::string text;
    for (const cBurst& command : part.BurstCmds()) {
        if (vectors) {
            text += command.Pattern();
        } else {
            text += command.Description();
        }
        text += "\r\n";
    }
    return text;
}
