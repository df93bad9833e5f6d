#include "LargeDevice.h"

#include <array>
#include <sstream>

#include "core/Numbers.h"

namespace {

void WriteField(std::ostringstream& file, int field, int registers, bool shown) {
    static constexpr std::array kTypes{"Bit", "Counter", "List"};
    const std::string nn = ItemNumber(field);
    const std::string type = shown ? kTypes[static_cast<std::size_t>(field) % 3] : "Bits";
    const int length = type == "List" ? 2 : 3;
    file << "REG" << nn << "=R" << field % registers << "\nNAME" << nn << "=F" << field << "\nPOS" << nn << '='
         << (field / registers * 3) % 28 << "\nLEN" << nn << '=' << length << "\nDISPLAY" << nn << '='
         << (shown ? "True" : "False") << "\nFRAME" << nn << "=Group " << field / 40 << "\nTYPE" << nn << '=' << type
         << "\nDESCRIPTION" << nn << "=What field " << field << " is for\n";
    if (type == "List") {
        file << "COUNT" << nn << "=4\nFORMAT" << nn << "=String\n";
        for (int entry = 0; entry < 4; ++entry) {
            file << "VAL" << nn << ItemNumber(entry) << "=Choice " << entry << '\n';
        }
    }
}

}   // namespace

std::string LargeDevice(int registers, int fields, int shown, int plls) {
    std::ostringstream file;
    file << "[SETUP]\nREGISTER_LENGTH=32\nCONTROL_LENGTH=0\n[REGISTERS]\nCOUNT=" << registers << '\n';
    for (int i = 0; i < registers; ++i) {
        file << "NAME" << ItemNumber(i) << "=R" << i << "\nMASK" << ItemNumber(i) << "=0\nVALUE" << ItemNumber(i)
             << "=305419896\n";
    }
    file << "[BITS]\nCOUNT=" << fields << '\n';
    for (int i = 0; i < fields; ++i) {
        WriteField(file, i, registers, i < shown);
    }
    file << "[PLLS]\nCOUNT=" << plls << '\n';
    for (int i = 0; i < plls; ++i) {
        file << "NAME" << ItemNumber(i) << "=PLL" << i << "\nN" << ItemNumber(i) << "=F" << fields - 1 - 2 * i << "\nR"
             << ItemNumber(i) << "=F" << fields - 2 - 2 * i << "\nOSCIN" << ItemNumber(i) << "=10\n";
    }
    return file.str();
}
