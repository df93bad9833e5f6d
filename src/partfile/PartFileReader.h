#pragma once

#include <string>

class cPart;
class PartFile;

/// Builds the device's wiring, pins, registers and bit fields from the sections SETUP, PINS, REGISTERS and BITS
/// of its part file. The order counts: a field names its register, and a pin's state goes into the pin word at
/// once.
class PartFileReader {
public:
    PartFileReader(cPart& part, PartFile& file) : part_(part), file_(file) {}

    void ReadSetup();
    void ReadPins();
    void ReadRegisters();
    void ReadBits();

private:
    void ReadField(int item);
    void ReadLists(int item, const std::string& name);
    void ReadRules(int item, const std::string& name);
    void AddField(int item, const std::string& name, const std::string& registerName, const std::string& type);

    cPart& part_;
    PartFile& file_;
    std::string lastName_;   ///< A field that names no register lies in the one named last.
};
