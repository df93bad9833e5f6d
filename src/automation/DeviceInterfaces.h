#pragma once

#include "automation/Interface.h"

class cPart;

// The interfaces of the device object and of what it consists of. Each is made from one table; the objects that they
// work on are a cPart, cRegister, cPrgmBits, cPrgmPin, cPLL and cBurst.

Interface PartInterface();
Interface RegisterInterface();
Interface PrgmBitsInterface();
Interface PrgmPinInterface();
Interface PLLInterface();
Interface BurstCommandInterface();

struct DeviceInterfaces {
    Interface part = PartInterface();
    Interface registers = RegisterInterface();
    Interface prgmBits = PrgmBitsInterface();
    Interface prgmPins = PrgmPinInterface();
    Interface plls = PLLInterface();
    Interface burstCmds = BurstCommandInterface();
};
