#include <functional>
#include <limits>

#include "core/Errors.h"
#include "support/TestPart.h"
#include "support/TextTable.h"

namespace {

/// Steps on fields, parted by blanks: "F=5" sets the value, "F:=5" the bits, "F+" and "F-" step, "F!" toggles,
/// "F^" and "F_" set the sign.
void Act(TestPart& device, const std::string& steps) {
    static const std::map<char, void (cPrgmBits::*)()> plain = {{'+', &cPrgmBits::Increment},
                                                                {'-', &cPrgmBits::Decrement},
                                                                {'!', &cPrgmBits::ToggleBit},
                                                                {'^', &cPrgmBits::SetPositive},
                                                                {'_', &cPrgmBits::SetNegative}};
    std::istringstream in(steps);
    for (std::string step; in >> step;) {
        const auto at = step.find_first_of(":=+-!^_");
        cPrgmBits& field = device.Field(step.substr(0, at));
        if (step[at] == '=') {
            field.Value(NumberOf(step.substr(at + 1)));
        } else if (step[at] == ':') {
            field.BitValue(NumberOf(step.substr(at + 2)));
        } else {
            (field.*plain.at(step[at]))();
        }
    }
}

/// Each row: the fields in a register of 53 bits; then its bits before, the steps, its bits after, as often as wanted.
void Check(const std::string& table, std::int32_t mask = 0) {
    for (const TextRow& row : TextTable(table)) {
        for (std::size_t i = 1; i + 2 < row.size(); i += 3) {
            SCOPED_TRACE(row[0] + ": " + row[i + 1] + " from " + row[i]);
            TestPart device(53);
            cRegister& tested = device.Register("R", std::stod("0x" + row[i]), mask);
            device.Fields(row[0]);
            Act(device, row[i + 1]);
            EXPECT_EQ(HexText(WholeBits(tested.Value())), row[i + 2]);
            EXPECT_TRUE(device.port.Writes().empty());
        }
    }
}

TEST(FieldWrite, PlainValues) {
    Check(R"(
        'F 4+4'  909 F=5 959  0 F=20 F0;  'F 0+4 step=2 zero=1'  0 F=6 2  0 F=8 4;  'F 0+4 step=0.1'  0 F=0.3 3
        'F 0+4 zero=3'  9 F=2 9  9 F=2.6 9  9 F=3 0;  'F 0+4 inv'  0 F=1 8;  'F 0+4'  5 F=-3 0;  'F 0+4 min=4'  0 F=2 4
        'F 0+4 max=9'  0 F=12 9;  'F 0+4 max=-1'  0 F=12 C;  'F 0+4 min=9 max=4'  0 F=2 4;  'F 0+4 step=0 zero=3'  9 F=5 0  9 F=2 0
        'F 0+40'  0 F=687194767361 A000000001;  'F 0+53'  0 F=9007199254740991 1FFFFFFFFFFFFF
        'F 0+4 stepfrom=S; S 8+4'  300 F=9 303;  'F -1+4'  55 F=3 55  55 F:=3 55)");
    Check("'F 0+4'  0 F=15 C", 3);
}

TEST(FieldWrite, Signs) {
    Check(R"(
        'F 0+4 sign=8 min=-100'  100 F=-3 3  0 F=3 103  0 F=-40 8;  'F 0+4 sign=8 signinv min=-100'  0 F=-3 103
        'F 0+4 sign=8'  105 F=-3 0  3 F^ 103  103 F_ 3  103 F:=-5 105;  'F 0+4 sign=8 inv'  0 F=1 108
        'F 0+4 sign=8 signinv'  3 F_ 103  103 F^ 3;  'F 0+4'  3 F^ 3  3 F_ 3)");
}

TEST(FieldWrite, Lists) {
    // The earlier of two at the same distance; the first if none lies within 10000; words have their index.
    Check(R"(
        'F 0+2 values=10,20,40'  0 F=24 1  0 F=30 1  2 F=50000 0  2 F=-50 0
        'F 0+2 values=0,10000'  0 F=19999 1  1 F=20000 0;  'F 0+2 texts=5,10,20'  0 F=11 1
        'F 0+2 texts=1,2,4,Reserved'  0 F=4 2  0 F=3 1  0 F=9 2;  'F 0+2 texts=x,10,20'  0 F=50000 1;  'F 0+4 values=7'  0 F=5 5
        'F 0+4 values=100,200 texts=2,5'  0 F=200 5  0 F=-1 2;  'F 0+4 values=100,200 texts=x,5'  9 F=100 9
        'F 0+4 values=100,200,300 texts=2,5'  9 F=300 9
        'F 0+2 texts=Off,On,Auto mirror=M; M 4+4'  0 F=2 22  51 F=1.5 51  51 F=3 51  51 F=-1 51
        'F -1+4 values=8,9 mirror=M; M 4+4'  55 F=9 55  55 F:=1 55  55 F+ 55  55 F- 55  55 F! 55)");
}

TEST(FieldWrite, Bits) {
    Check(R"(
        'F 0+4'  0 F:=-3 3  0 F:=5.5 6;  'F 0+4 zero=9 step=3 max=2'  0 F:=20 4;  'F 0+4 link=G; G 4+4'  0 F:=37 25  0 F:=15.7 10
        'F 0+4 link=G; G 4+4 link=H; H 8+4'  0 F:=291 123;  'F 0+40 link=G; G 40+13'  0 F:=6597069766657 60000000001
        'F 0+4 step=0 link=G; G 4+4'  5 F:=9 95;  'F 0+4 step=0'  5 F:=9 9;  'F 0+4 mirror=M; M 4+4'  11 F:=6 16
        'F 0+4 atleast=A; A 4+4'  A0 F:=6 A6)");
}

TEST(FieldWrite, LinkedMirrorAndGreaterFields) {
    // A linked field gets the rest plus the zero value, a mirror the rest, and the greater rule runs when F is written.
    Check(R"(
        'F 0+4 link=G; G 4+4 step=16'  0 F=37 25  0 F=300 FF
        'F 0+4 link=G; G 4+4 step=16 link=H; H 8+4 step=256'  0 F=291 123
        'F 0+4 zero=8 link=G; G 4+4 step=16'  0 F=37 2D
        'F 0+40 link=G; G 40+13 step=1099511627776'  0 F=9007199254740990 1FFFFFFFFFFFFE
        'F 0+4 mirror=M; M 4+4 step=2'  0 F=6 36;  'F 0+4 mirror=M; M 4+4 mirror=N; N 8+4'  123 'F+ F+' 345
        'F 0+4 mirror=M; M 4+4'  55 'F- F!' 55;  'F 0+4 link=G mirror=M; G 4+4 step=16; M 8+8'  0 F=37 2025
        'F 0+4 atleast=A; A 4+4'  A0 F=4 AA  A0 F=12 AC  AA F- AA  AC F- AB  AB A=13 DB
        'F 0+4 atmost=A; A 4+4'  A0 F=40 AA  AA F+ AA  A3 F! A4
        'F 0+4 atmost=A mirror=M; A 4+4; M 8+4'  2AA F+ AAA)");
}

TEST(FieldWrite, Steps) {
    // Only codes hold a step in the list; bits that are none of the codes stay, and the mirror steps all the same.
    Check(R"(
        'F 0+3'  F F+ 8  8 F- 8;  'F 0+4 link=G; G 4+4'  F F+ 10  10 F- F  FF F+ 0  F F! 10;  'F 0+3 values=1,2'  1 F+ 2
        'F 0+4 values=10,20,30 texts=1,4,6 mirror=M; M 4+4'  6 F+ 11  11 F- 6  4 F+ 16  4 F! 16  6 F! 11  2 F+ 12
        'F 0+4 sign=8'  101 F- 100  101 'F- F-' 1  1 F+ 0  1 'F+ F+' 101  3 F- 4  103 F+ 104
        'F 0+4 sign=8 signinv'  0 'F- F-' 102;  'F 3+1'  0 F! 8;  'F 0+2'  3 F! 0;  'F 0+1 mirror=M; M 1+1'  0 F! 3
        'F 0+40'  1FFFFFFFF F+ 200000000  200000000 F- 1FFFFFFFF  FFFFFFFFFF F! 0;  'F 0+53'  1FFFFFFFFFFFFF F+ 0)");
    Check("'F 3+1'  8 F! 0;  'F 0+2'  0 F! 1", 10);   // A toggle of a single bit goes through the mask.
}

TEST(FieldWrite, NamesInCirclesAreVisitedOnce) {
    Check(R"(
        'F 0+4 mirror=G; G 4+4 mirror=F'  0 F=5 55  11 'F+ G+' 33  22 F- 11  11 F! 22;  'F 0+4 mirror=F'  1 F+ 2
        'F 0+4 link=F'  0 F:=37 5;  'F 0+4 link=G; G 4+4 link=F'  0 F:=37 25
        'F 0+4 atleast=G; G 4+4 atleast=F'  35 F=1 33;  'F 0+4 atleast=F'  5 F=1 5)");
}

TEST(FieldWrite, WhatIsNoNumberIsRefused) {
    TestPart device(8);
    device.Register("R", 5);
    device.Fields("F 0+4; L 0+2 values=1,2");
    for (const double value : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity()}) {
        for (const char* name : {"F", "L"}) {
            EXPECT_THROW(device.Field(name).Value(value), ConversionError) << name;
            EXPECT_THROW(device.Field(name).BitValue(value), ConversionError) << name;
        }
    }
    EXPECT_EQ(device.part.Registers().At("R").Value(), 5);
    EXPECT_FALSE(device.part.Registers().At("R").Change());
}

TEST(FieldWrite, AnUnknownNameReachesTheCallerAndBlocksNothing) {
    const std::vector<std::function<void(cPrgmBits&)>> operations = {
        [](cPrgmBits& f) { static_cast<void>(f.Value()); },       [](cPrgmBits& f) { f.Value(3); },
        [](cPrgmBits& f) { static_cast<void>(f.BitValue()); },    [](cPrgmBits& f) { f.BitValue(3); },
        [](cPrgmBits& f) { static_cast<void>(f.Text()); },        [](cPrgmBits& f) { static_cast<void>(f.Maximum()); },
        [](cPrgmBits& f) { static_cast<void>(f.TotalLength()); }, [](cPrgmBits& f) { f.Increment(); }};
    TestPart device(8);
    cRegister& tested = device.Register("R", 5);
    device.Fields("F 0+4 link=X; G 4+4 step=16");
    for (const auto& operation : operations) {
        EXPECT_THROW(operation(device.Field("F")), LookupError) << "operation " << &operation - operations.data();
        EXPECT_EQ(tested.Value(), 5) << "what was written is taken back";
        EXPECT_FALSE(tested.Change());
    }
    device.Field("F").LinkedBits("G");
    device.Field("F").Value(37);
    EXPECT_EQ(device.Field("F").Value(), 37);
    device.Field("F").Register("Q");
    EXPECT_THROW(device.Field("F").Value(3), LookupError);
}

}   // namespace
