#pragma once

#include "ports/PortRecord.h"

/// The plain log: a line for each write with the microseconds since the start in decimal, the port as four
/// and the value as two hexadecimal digits, separated by single blanks ("1042 0378 02"). Times may repeat.
class PortLog final : public PortRecord {
public:
    void Start(std::string&) override {}
    void Write(std::uint64_t microseconds, std::uint16_t port, std::uint8_t value, std::string& text) override;
    void Complete(std::string&) override {}
};
