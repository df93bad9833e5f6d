#include "core/cRegister.h"

#include <cmath>
#include <random>

#include "core/BinaryString.h"
#include "support/TestPart.h"
#include "support/TextTable.h"

namespace {

TEST(BinaryString, NumbersToTextsAndBack) {
    for (const TextRow& row : TextTable(R"(0 01 0; 5 01 101; 8 01 1000; 4294967295 01 11111111111111111111111111111111
        0x1p53 01 100000000000000000000000000000000000000000000000000000; 100 0123456789 100; 255 0123456789ABCDEF FF
        4 .x x..; 5.75 01 101; -3 01 0; nan 01 0; inf 01 0)")) {
        EXPECT_EQ(ToBase(CellNumber(row[0]), row[1]), row[2]) << row[0];
    }
    EXPECT_EQ(BinaryValue(""), 0);
    EXPECT_EQ(BinaryValue("0x1-1"), 5);   // Only "1" counts as a one.
    EXPECT_EQ(BinaryValue(std::string(53, '1')), 9007199254740991.0);
}

TEST(BinaryString, OperandsMeetAtTheirRightEnds) {
    for (const TextRow& row : TextTable(R"(1101 11 01 1111; 1000 11 00 1011; '' 101 '' 101; '' '' '' ''
        2x01 1 1 0001; 0110 0011 0010 0111; 1 10 0 11)")) {
        SCOPED_TRACE(row[0] + " and " + row[1]);
        EXPECT_EQ(BinaryAnd(row[0], row[1]), row[2]);
        EXPECT_EQ(BinaryAnd(row[1], row[0]), row[2]);
        EXPECT_EQ(BinaryOr(row[0], row[1]), row[3]);
        EXPECT_EQ(BinaryOr(row[1], row[0]), row[3]);
    }
    EXPECT_EQ(BinaryNot("1x1", {}), "010");
    for (const TextRow& row : TextTable("101 5 11010; 101 2 10; 101 0 ''; 101 -1 ''; '' 2 11")) {
        EXPECT_EQ(BinaryNot(row[0], CellShort(row[1])), row[2]) << row[1];
    }
    for (const TextRow& row : TextTable("'' '' ''; 101 0101 5; 0 0000 0; 11111 00011111 1F; 101010 00101010 2A")) {
        std::string text = row[0];
        EXPECT_EQ(BinaryToHex(text), row[2]);
        EXPECT_EQ(text, row[1]) << "the caller's text is filled up";
    }
}

TEST(Register, FieldWrites) {
    // Register length, mask, value before; bits, position, length, reversed; value after; whether it is marked.
    for (const TextRow& row : TextTable(R"(
        'masked, 32 bits'            32 3 4294967295    5 28 4 0    1610612735 1
        'no length'                  24 0 9    5 0 0 0    9 0
        'negative length'            24 0 9    5 0 -1 0    9 0
        'negative position'          24 0 9    5 -1 4 0    9 0
        'beyond the register'        8 0 5    1 60 4 0    5 1
        'far beyond'                 24 0 5    1 1020 5 0    5 0
        'negative'                   24 0 9    -3 0 4 0    9 0
        'negative, reversed'         24 0 9    -3 0 4 1    9 0
        'no number'                  24 0 9    nan 0 4 0    9 0
        'infinite'                   24 0 9    inf 0 4 0    9 0
        'a fraction'                 24 0 0    6.9 0 4 0    6 1
        'onto a fraction'            24 0 18.75    1 0 1 0    19 1
        'onto a negative value'      24 0 -7    1 4 1 0    16 1
        'a negative mask is 32 bits' 40 -16 0    1099511627775 0 40 0    1095216660495 1
        'bit 31 is never masked'     32 2147483647 0    4294967295 0 32 0    0x1p31 1
        'a register of no bits'      0 0 9    1 0 1 0    0 1
        'a register of fewer'        -3 0 9    1 0 1 0    0 1)")) {
        SCOPED_TRACE(row[0]);
        TestPart device(CellShort(row[1]));
        cRegister& tested = device.Register("R", CellNumber(row[3]), std::stoi(row[2]));
        tested.SetBits(CellNumber(row[4]), CellShort(row[5]), CellShort(row[6]), row[7] == "1");
        EXPECT_EQ(tested.Value(), CellNumber(row[8]));
        EXPECT_EQ(tested.Change(), row[9] == "1");
        EXPECT_FALSE(tested.Change()) << "reading clears the mark";
    }
}

TEST(Register, FieldReads) {
    TestPart device(8);   // Reading looks neither at the register's length nor at its mask.
    cRegister& tested = device.Register("R", 0, 255);
    for (const TextRow& row : TextTable(R"(1610612735 28 4 0 5; 8 0 4 1 1; 255 4 0 0 0; 255 4 -2 0 0; 255 -1 4 0 0
        255 4 32767 0 0; 255 32767 4 0 0; 255 64 1 0 0; 6 0 3 1 3; 18.75 1 4 0 9; -5 0 8 0 0; nan 0 8 0 0
        4095 0 12 0 4095; 9007199254740991 52 1 0 1; 9007199254740991 0 53 1 9007199254740991; 0x1p52 40 13 1 1)")) {
        tested.Value(CellNumber(row[0]));
        EXPECT_EQ(tested.GetBits(CellShort(row[1]), CellShort(row[2]), row[3] == "1"), CellNumber(row[4]))
            << row[0] << " from " << row[1] << ", " << row[2] << " bits";
    }
}

// The operations as arithmetic on texts: slow, and nothing like the one on integers.
std::string Bits(double value, int length) {
    std::string text;
    for (int i = 0; i < length; ++i) {
        text.insert(text.begin(), std::fmod(std::floor(std::ldexp(value, -i)), 2) == 1 ? '1' : '0');
    }
    return text;
}

std::string Reversed(std::string text, bool inv) {
    return inv ? std::string(text.rbegin(), text.rend()) : text;
}

std::string Written(const std::string& before, const std::string& mask, const std::string& field, int position) {
    std::string after = before;
    const std::size_t start = before.size() - static_cast<std::size_t>(position) - field.size();
    for (std::size_t i = 0; i < field.size(); ++i) {
        after[start + i] = mask[start + i] == '1' ? before[start + i] : field[i];
    }
    return after;
}

TEST(Register, AgreesWithArithmeticOnTexts) {
    std::mt19937_64 random(20240229);
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    for (int round = 0; round < 20000 && !HasFailure(); ++round) {
        const int width = 1 + below(53);
        const auto mask = static_cast<std::int32_t>(random() >> (33U + static_cast<unsigned>(below(31))));
        const auto value = static_cast<double>(random() >> (11U + static_cast<unsigned>(below(53))));
        const auto bits = static_cast<double>(random() >> (11U + static_cast<unsigned>(below(53))));
        const int position = below(53);
        const int length = 1 + below(53 - position);
        const bool inv = below(2) == 0;
        TestPart device(width);
        cRegister& tested = device.Register("R", value, mask);
        const auto at = static_cast<std::int16_t>(position);
        const auto size = static_cast<std::int16_t>(length);
        SCOPED_TRACE(Bits(value, 53) + ", mask " + Bits(mask, 31) + ", bits " + Bits(bits, 53) + " at " +
                     std::to_string(position) + '+' + std::to_string(length) + " of " + std::to_string(width));
        const std::string held = Bits(std::ldexp(value, -position), length);
        EXPECT_EQ(Bits(tested.GetBits(at, size, inv), 53), std::string(53U - held.size(), '0') + Reversed(held, inv));
        tested.SetBits(bits, at, size, inv);
        std::string after = Written(Bits(value, 53), Bits(mask, 53), Reversed(Bits(bits, length), inv), position);
        after.replace(0, 53U - static_cast<unsigned>(width), std::string(53U - static_cast<unsigned>(width), '0'));
        EXPECT_EQ(Bits(tested.Value(), 53), after);
    }
}

TEST(Register, SingleBitsAndBinaryText) {
    // Value, mask, bit; cleared, toggled: clearing respects the mask, toggling doesn't, neither cuts to the 8 bits.
    for (const TextRow& row : TextTable(R"(255 3 1 255 253; 255 3 2 251 251; 0 0 3 0 8; 0 0 12 0 4096; 4096 0 12 0 0
        18.75 0 1 16 16; 9007199254740991 0 52 4503599627370495 4503599627370495
        255 -1 7 255 127; 255 0 64 255 255)")) {
        SCOPED_TRACE(row[0] + ", bit " + row[2]);
        TestPart device(8);
        cRegister& tested = device.Register("R", CellNumber(row[0]), std::stoi(row[1]));
        tested.ClrBit(CellShort(row[2]));
        EXPECT_EQ(tested.Value(), CellNumber(row[3]));
        EXPECT_TRUE(tested.Change());
        tested.Value(CellNumber(row[0]));
        tested.Change(false);
        tested.ToggleBit(CellShort(row[2]));
        EXPECT_EQ(tested.Value(), CellNumber(row[4]));
        EXPECT_TRUE(tested.Change());
    }
    TestPart device(8);
    cRegister& tested = device.Register("R");
    for (const TextRow& row : TextTable("5 00000101; 0 00000000; 511 111111111; -1 00000000; 2.5 00000010")) {
        tested.Value(CellNumber(row[0]));
        EXPECT_EQ(tested.RegisterString(), row[1]);
    }
}

}   // namespace
