#include "ports/SimulatedPort.h"

bool SimulatedPort::OpenTVicPort() {
    levels_.fill(0);
    return true;
}

PortStatus SimulatedPort::Status() const {
    return {.ready = true,
            .summary = "Simulated port",
            .story =
                "The simulated port takes every write and drives no hardware: a board on the parallel port sees "
                "nothing.\n"
                "DRIVER in section [PORT] of tarnwick.ini chooses the driver, DEVICE what it opens.\n"
                "LOG and TRACE there name files that record what would go out, the trace as a VCD waveform."};
}
