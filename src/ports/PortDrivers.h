#pragma once

#include <memory>
#include <string>

#include "ports/Port.h"

/// The section PORT of the settings file.
struct PortSettings {
    std::string driver = "simulated";
    std::string device = {};             ///< Empty: the driver's own default.
    std::string backend = "simulated";   ///< The driver that a wrapping driver wraps.
    std::string seed = "1";
    std::string log = {};     ///< File of port writes, relative to the program folder; empty: none.
    std::string trace = {};   ///< VCD file, relative to the program folder; empty: none.
};

struct MadePort {
    std::unique_ptr<Port> port;   ///< Never null; not opened yet.
    std::string message;          ///< What in the settings couldn't be followed, for the user; empty if nothing.
};

/// The port that the settings ask for, with the records that they ask for. An unknown driver gives the
/// simulated port and a message that lists the known ones. Never fails.
MadePort MakePort(const PortSettings& settings, const std::string& appPath);

/// The names that `driver` may have, separated by ", ".
std::string KnownDrivers();
