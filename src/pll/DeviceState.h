#pragma once

#include <vector>

class cPart;

/// Every number that a device's state consists of: the registers, the references, the word of the pins. What was said
/// of a device holds as long as these stay the same.
std::vector<double> DeviceState(cPart& part);
