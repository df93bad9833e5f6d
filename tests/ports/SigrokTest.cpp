#include <gtest/gtest.h>
#include <stdlib.h>

#include <sstream>
#include <vector>

#include "ports/PortDrivers.h"
#include "support/TempFolder.h"

namespace {

struct Wiring {
    unsigned clock, data, le;   // Port words: bits 0 to 7 are D0 to D7, bits 8 to 11 are C1 to C4.
    const char* decoder;        // The same for the decoder.
};

void WriteWord(Port& port, unsigned word) {
    port.WritePort(0x378, static_cast<std::uint8_t>(word));
    port.WritePort(0x37A, static_cast<std::uint8_t>(((word & 0xF00) >> 8) ^ 0x0B));
}

// Most significant bit first, data set while the clock is low, one pulse of LE at the end.
void Load(Port& port, const Wiring& wiring, int width, unsigned value) {
    for (int bit = width - 1; bit >= 0; --bit) {
        const unsigned data = (value >> bit & 1) != 0 ? wiring.data : 0;
        WriteWord(port, data);
        WriteWord(port, data | wiring.clock);
    }
    for (const unsigned word : {0U, wiring.le, 0U})
        WriteWord(port, word);
}

// What the decoder found between two rises of LE, as numbers: one list for each line "spi-1: 580005". Any
// other line gives a list that was never sent.
std::vector<std::vector<unsigned>> Transfers(const TempFolder& folder, const Wiring& wiring, int wordSize) {
    const std::string command = "sigrok-cli -I vcd -i " + folder.Path("load.vcd") +
                                " -A spi=mosi-transfer -P spi:" + wiring.decoder +
                                ":cpol=0:cpha=0:wordsize=" + std::to_string(wordSize);
    if (::system((command + " > " + folder.Path("transfers") + " 2>&1").c_str()) != 0)
        return {};
    std::vector<std::vector<unsigned>> transfers;
    std::istringstream lines(folder.Read("transfers"));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string name;
        words >> name >> std::hex;
        auto& transfer = transfers.emplace_back();
        for (unsigned word = 0; words >> word;)
            transfer.push_back(word);
    }
    return transfers;
}

}   // namespace

// An independent decoder must read from the trace what was shifted out: one word of the right length for
// each rise of LE.
TEST(Sigrok, ReadsTheLoadedWordsBackFromTheTrace) {
    ASSERT_EQ(::system("sigrok-cli --version > /dev/null 2>&1"), 0)
        << "the program sigrok-cli doesn't run; install the package sigrok-cli";
    const Wiring dataLines = {1, 2, 4, "clk=D0:mosi=D1:cs=D2"};
    const Wiring clockOnC1 = {0x100, 2, 4, "clk=C1:mosi=D1:cs=D2"};
    const Wiring controlLines = {0x800, 0x400, 0x200, "clk=C4:mosi=C3:cs=C2"};
    const std::vector<unsigned> words24 = {0, 0xFFFFFF, 0x800001, 0x438082, 0x020820, 0x555555, 0xAAAAAA, 1};
    const std::vector<unsigned> words32 = {0x00580005, 0xFFFFFFFF, 0, 0x80000001, 0x18006E42, 0x800001};
    struct {
        Wiring wiring;
        int width;
        const std::vector<unsigned>& words;
    } const cases[] = {
        {dataLines, 24, words24}, {dataLines, 32, words32},    {clockOnC1, 24, words24},
        {clockOnC1, 32, words32}, {controlLines, 24, words24},
    };
    for (const auto& c : cases) {
        const TempFolder folder;
        const MadePort made = MakePort({.trace = "load.vcd"}, folder.Path(""));
        made.port->OpenTVicPort();
        std::vector<std::vector<unsigned>> sent;
        for (const unsigned word : c.words) {
            Load(*made.port, c.wiring, c.width, word);
            made.port->Idle();
            sent.push_back({word});
        }
        EXPECT_EQ(Transfers(folder, c.wiring, c.width), sent) << folder.Read("transfers");
        for (const auto& bits : Transfers(folder, c.wiring, 1))
            EXPECT_EQ(bits.size(), static_cast<std::size_t>(c.width)) << c.wiring.decoder;
    }
}
