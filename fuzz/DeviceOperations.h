#pragma once

class FuzzInput;
class cPart;

/// Does to the device what the bytes choose, until they are used up: whatever a user or another program can do with its
/// fields, registers, PLLs, pins, loads and burst list. Faults of values and names are part of that; anything else
/// isn't.
void OperateDevice(cPart& part, FuzzInput& input);
