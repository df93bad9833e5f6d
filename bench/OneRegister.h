#pragma once

#include "core/cPart.h"
#include "ports/PortDrivers.h"

/// A device with one register of 24 bits, called "R", on the bare simulated port. The port is made by its driver's
/// name, as in the program, and so out of the optimiser's sight.
struct OneRegister {
    MadePort made = MakePort({}, "");
    cPart part;

    OneRegister() {
        part.UsePort(*made.port);
        part.ID("ONE");
        part.PortAddress(0x378);
        part.ClockPosition(1);
        part.DataPosition(2);
        part.LEPosition(4);
        part.RegisterLength(24);
        part.AddRegister("R", 0, 0xA5C3F1, true, "");
    }
};
