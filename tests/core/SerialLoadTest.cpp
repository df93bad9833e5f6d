#include "core/Errors.h"
#include "support/TestPart.h"
#include "support/TextTable.h"

namespace {

using Words = std::vector<int>;

std::string Text(const Words& words) {
    std::string text;
    for (const int word : words) {
        text += (text.empty() ? "" : " ") + std::to_string(word);
    }
    return text;
}

TEST(SerialLoad, WaveformsOf101) {
    for (const TextRow& row : TextTable(R"(
        ''                              '2 3 0 1 2 3 0 4 0'
        'inverted'                      '3 2 1 0 3 2 0 4 0'
        'sbi'                           '2 3 2 0 1 0 2 3 2 2 3 2'
        'sbi inverted'                  '2 3 2 0 1 0 2 3 2 2 3 2'
        'sbi sbi=0'                     '2 3 0 1 2 3 0 4 0'
        'lehigh'                        '2 3 0 1 2 3 0 4 0'
        'pins=-4096'                    '2 3 0 1 2 3 0 4 0'
        'clock=256'                     '2 258 0 256 2 258 0 4 0'
        'clock=1024 data=512 le=2048'   '512 1536 0 1024 512 1536 0 2048 0'
        'CE=3'                          '10 11 8 9 10 11 8 12 8'
        'CE=8'                          '258 259 256 257 258 259 256 260 256'
        'Trigger=3'                     '2 3 0 1 2 3 0 12 0'
        'trigger=3'                     '10 11 8 9 10 11 8 12 8'
        'CE=4 Trigger=3'                '18 19 16 17 18 19 16 28 16'
        'sbi CE=4 Trigger=3'            '18 19 18 16 17 16 18 19 18 18 19 18')")) {
        SCOPED_TRACE(row[0]);
        TestPart device(3);
        device.Register("R", 5).LowByte(false);   // On a device without pairs that means nothing.
        device.Wire(row[0]);
        const int pins = device.part.OutputPinValue();
        std::string name = "R";
        device.part.LoadRegister(name);
        EXPECT_EQ(Text(device.port.TakeWords()), row[1]);
        EXPECT_EQ(name, "R");
        EXPECT_EQ(device.part.OutputPinValue(), pins);
        device.part.LoadValue(5);
        EXPECT_EQ(Text(device.port.TakeWords()), row[1]) << "as a number";
    }
}

TEST(SerialLoad, DataRegisterFirstThenControlRegisterInverted) {
    TestPart device(1);
    device.part.ClockPosition(256);
    device.part.PortAddress(-2);   // 0xFFFE: the control register's address wraps.
    device.part.LoadValue(1);
    const std::vector<PortWrite> expected = {{0xFFFE, 2}, {0, 0x0B},   {0xFFFE, 2}, {0, 0x0A},   {0xFFFE, 0},
                                             {0, 0x0B},   {0xFFFE, 4}, {0, 0x0B},   {0xFFFE, 0}, {0, 0x0B}};
    EXPECT_EQ(device.port.Writes(), expected);
}

TEST(SerialLoad, RegistersSendTheirTopBitsAndNumbersTheirLowBits) {
    // Length and value; what goes out as a register and as a number, "x" for all the bits that are missing.
    for (const TextRow& row : TextTable(R"(3 0 000 000; 3 1 001 001; 3 45 101 101; 3 52 110 100; 3 5.9 101 101
        3 -5 000 011; 8 300 10010110 00101100; 32 4294967295 1x1 1x1; 32 4294967296 10x0 0x0; 40 -2 0x0 1x10
        53 4503599627370497 10x01 10x01; 70 5 0x0101 0x0101; 3 0x6p100 110 000; 3 nan 000 000; 3 inf 000 000
        0 1 '' ''; 0 0x1p63 '' ''; -4 5 '' '')")) {
        SCOPED_TRACE(row[1] + " in " + row[0]);
        const auto filled = [&](std::string text) {
            const auto gap = text.find('x');
            if (gap != std::string::npos) {
                text.replace(gap, 1, std::stoul(row[0]) + 1 - text.size(), text[gap - 1]);
            }
            return text + '|';
        };
        TestPart device(CellShort(row[0]));
        device.Register("R", CellNumber(row[1]));
        std::string name = "R";
        device.part.LoadRegister(name);
        EXPECT_EQ(Shifted(device.port.TakeWords()), filled(row[2]));
        device.part.LoadValue(CellNumber(row[1]));
        EXPECT_EQ(Shifted(device.port.TakeWords()), filled(row[3]));
    }
}

TEST(SerialLoad, Pairs) {
    // H, the high part, holds 101 and L, the low one, 011. The partners of H and L, and the name that is loaded;
    // what goes out, the name that comes back, the marks of H and L that are left.
    for (const TextRow& row : TextTable(R"(
        'the low part brings the high one'     L H  L  101011| L 00
        'the high part brings the low one'     L H  H  101011| L 10
        'a low part of its own'                L '' L  011|    L 11
        'a low part without a partner'         L X  L  011|    L 11
        'a low part that names itself'         L L  L  011|    L 11
        'a high part without a partner'        X H  H  101|    H 11
        'a high part that names itself'        H H  H  101|    H 11
        'a low part whose partner has none'    X H  L  011|    L 11
        'a low part whose partner is confused' H H  L  011|    L 11)")) {
        SCOPED_TRACE(row[0]);
        TestPart device(3);
        device.part.HighByte(true);
        cRegister& high = device.Half("H", 5, false, row[1]);
        cRegister& low = device.Half("L", 3, true, row[2]);
        std::string name = row[3];
        device.part.LoadRegister(name);
        EXPECT_EQ(Shifted(device.port.TakeWords()), row[4]);
        EXPECT_EQ(name, row[5]);
        EXPECT_EQ(high.Change(), row[6][0] == '1');
        EXPECT_EQ(low.Change(), row[6][1] == '1');
    }
}

TEST(SerialLoad, APairLatchesOnceAndKnowsNoSBI) {
    TestPart device(3);
    device.part.HighByte(true);
    device.Wire("Trigger=3");
    device.Half("H", 5, false, "L");
    device.Half("L", 3, true, "H");
    std::string name = "L";
    device.part.LoadRegister(name);
    EXPECT_EQ(Text(device.port.TakeWords()), "2 3 0 1 2 3 0 0 0 0 1 2 3 2 3 0 12 0");
    device.part.SBIEnable(true);
    device.part.LoadRegister(name);
    EXPECT_EQ(Text(device.port.TakeWords()), "0 1 0 2 3 2 2 3 2 2 3 2");
}

TEST(SerialLoad, SBIFramesAndReadCycle) {
    TestPart device(3);
    device.Register("ADR", 5);
    EXPECT_EQ(device.part.ReadRegister(1), -1);
    EXPECT_TRUE(device.port.Writes().empty());

    device.part.SBIEnable(true);
    device.part.StartSBILoad();
    device.part.StopSBILoad();
    EXPECT_EQ(Text(device.port.TakeWords()), "3 2 3 7");
    EXPECT_EQ(device.part.ReadRegister(2), 0);
    EXPECT_EQ(Text(device.port.TakeWords()),
              "3 2 2 3 2 0 1 0 2 3 2 2 3 2 0 1 0 2 3 2 0 1 0 2 3 2 3 2 3 2 3 2 2 3 2 3 7");

    // The trigger is in start, stop and the first of the read clocks only.
    device.Wire("Trigger=3");
    EXPECT_EQ(device.part.ReadRegister(2), 0);
    EXPECT_EQ(Text(device.port.TakeWords()),
              "11 10 2 3 2 0 1 0 2 3 2 2 3 2 0 1 0 2 3 2 0 1 0 2 3 2 11 2 3 2 3 2 2 3 2 11 15");
    device.part.ResetOutputPins();   // A trigger that is off is no trigger.
    device.part.LoadValue(5);
    EXPECT_EQ(Text(device.port.TakeWords()), "2 3 2 0 1 0 2 3 2 2 3 2");
    device.part.LEPosition(1);   // Added to a line in use, LE carries into the next.
    device.part.StopSBILoad();
    EXPECT_EQ(Text(device.port.TakeWords()), "3 4");
}

TEST(SerialLoad, ReadNumberHasBit7SetAtAnyLength) {
    for (const std::int16_t length : {std::int16_t{8}, std::int16_t{32}, std::int16_t{53}}) {
        TestPart device(length);
        device.Register("ADR", 0);
        device.part.SBIEnable(true);
        device.part.ReadRegister(5);
        const std::string taken = Shifted(device.port.TakeWords());
        const auto whole = static_cast<std::size_t>(length) + 1;   // A word and its extra clock.
        EXPECT_EQ(taken.substr(1 + whole + whole - 9, 9), "100001011") << taken;
        EXPECT_EQ(taken.size(), 1 + 3 * whole + 2) << taken;
    }
}

TEST(SerialLoad, OutputPinsAlone) {
    TestPart device(3);
    device.Wire("Trigger=3 CE=11");
    device.part.UpdateOutputPins();
    device.part.SBIEnable(true);   // Its lines rest high.
    device.part.UpdateOutputPins();
    EXPECT_EQ(device.port.TakeWords(), (Words{8 + 2048, 8 + 2048 + 7}));
}

TEST(SerialLoad, AnUnknownRegisterWritesNothing) {
    TestPart device(3);
    device.Register("MAIN");
    std::string name = "MAN";
    EXPECT_THROW(device.part.LoadRegister(name), LookupError);
    EXPECT_TRUE(device.port.Writes().empty());
    device.part.ClearPLL();
    device.part.LoadValue(5);   // The work buffer went with the device.
    EXPECT_EQ(Shifted(device.port.TakeWords()), "101|");
}

}   // namespace
