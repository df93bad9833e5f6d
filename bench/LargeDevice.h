#pragma once

#include <string>

/// The part file of an invented device: so many registers of 32 bits, so many fields of four bits, of which `shown`
/// have controls (check boxes, counters and lists in turn), and so many PLLs.
std::string LargeDevice(int registers, int fields, int shown, int plls);
