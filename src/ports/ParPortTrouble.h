#pragma once

#include <string>

#include "ports/PortCalls.h"

// Why a parallel port can't be had, and what to do about it: each in one line. They look round in the system for what
// is the matter.

/// No device, or one without a port behind it.
std::string NoParPort(PortCalls& calls, const std::string& device);

/// The system refuses the device file.
std::string NoParPortRights(PortCalls& calls, const std::string& device);

/// The driver of that name, as the kernel calls it, has the port.
std::string ParPortHeld(PortCalls& calls, const std::string& device, const std::string& holder);

/// The folder in which the kernel tells which drivers use the port.
std::string ParPortDrivers(unsigned number);
