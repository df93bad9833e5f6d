#include <cmath>

#include "support/TestPart.h"
#include "support/TextTable.h"

namespace {

TEST(FieldRead, ValueBitsAndText) {
    // The fields, of which F is read; the register; value, bits and text.
    for (const TextRow& row : TextTable(R"(
        'F 4+4' 0x950 5 5 5
        'F 0+4 step=2 zero=1 units=MHz' 2 5 2 5MHz
        'F 0+4 step=0.1' 3 0.30000000000000004 3 0.3
        'F 0+4 step=0.5 format=0.00 units=V' 5 2.5 5 2.50
        'F 0+4 inv' 8 1 1 1
        'F 0+53' 9007199254740991 9007199254740991 9007199254740991 9.00719925474099E+15
        'F 0+0' 255 0 0 0

        'F 0+4 values=7' 3 3 3 3;  'F 0+4 texts=7' 3 3 3 3
        'F 0+2 values=10,20,40 zero=3 step=9 units=mA sign=8' 2 40 2 40
        'F 0+2 values=10,20,40' 3 0 3 '';  'F 0+2 texts=Off,On' 1 1 1 On;  'F 0+2 texts=Off,On' 3 0 3 ''
        'F 0+2 texts=5,10,20 units=mA' 1 10 1 10;  'F 0+2 texts=5,10,20' 3 0 3 ''
        'F 0+2 texts=1,2,4,Reserved' 2 4 2 4;  'F 0+2 texts=1,2,4,Reserved' 3 3 3 Reserved

        'F 0+4 values=100,200 texts=2,5' 5 200 5 '';  'F 0+4 values=100,200 texts=2,5' 3 0 3 ''
        'F 0+4 values=100,200 texts=2,5' 1 0 1 200;  'F 0+4 values=100,200 texts=2.5,5' 2 100 2 ''
        'F 0+4 values=100,200 texts=5,5' 5 100 5 '';  'F 0+4 values=100,200 texts=x,5' 5 200 5 ''
        'F 0+4 values=100,200,300 texts=0,5' 2 0 2 300;  'F 0+4 values=100,200 texts=0,1,2' 2 0 2 ''

        'F -1+4 values=8,9' 255 8 -1 8;  'F -1+4 values=8,9 texts=1,2' 255 8 -1 8;  'F -1+4 texts=3,4' 255 3 -1 3
        'F -1+4 texts=Low,High' 255 0 -1 Low;  'F -1+4 zero=5 units=dB' 255 0 -1 0dB
        'F -2+4 values=8,9 units=dB' 255 0 -1 0dB

        'F 0+4 sign=8 zero=1' 0x003 2 3 -4;  'F 0+4 sign=8 zero=1' 0x103 4 3 4;  'F 0+4 sign=8' 0 0 0 0
        'F 0+4 sign=8 signinv' 0x103 3 3 -3;  'F 0+4 sign=8 signinv' 0x003 3 3 3

        'F 0+4 link=G; G 4+4 step=16' 0x25 37 37 37;  'F 4+4 link=G; G 0+4 step=16' 0x52 37 37 37
        'F 0+4 link=G; G 4+4 step=16 link=H; H 8+4 step=256' 0x123 291 291 291
        'F 0+4 link=G; G 4+4 step=16 zero=1 sign=20' 0x05 -6 5 -6
        'F 0+40 link=G; G 40+13 step=1099511627776' 0x1p52 0x1p52 0x1p52 4.5035996273705E+15
        'F 0+4 stepfrom=S; S 8+4' 0x305 15 5 15
        'F 0+4 stepfrom=S; S 8+2 texts=1,2,4,Reserved' 0x203 12 3 12
        'F 0+4 link=G; G -1+4 values=7,8' 5 12 -11 12;  'F 0+4 texts=a,b link=G; G -1+4' 5 0 -11 ''
        'F 0+4 values=1,2 link=G; G -1+4' 14 0 -2 '';  'F 0+4 values=1,2 texts=x,5 link=G; G -1+4' 15 0 -1 ''

        'F 0+4 link=F' 5 5 5 5;  'F 0+4 link=G; G 4+4 step=16 link=F' 0x25 37 37 37
        'F 0+4 stepfrom=F zero=3' 5 3 5 3;  'F 0+4 stepfrom=G zero=3; G 4+4 stepfrom=F zero=2' 0x25 13 5 13)")) {
        SCOPED_TRACE(row[0] + " in " + row[1]);
        TestPart device(53);
        device.Register("R", CellNumber(row[1]));
        device.Fields(row[0]);
        const cPrgmBits& field = device.Field("F");
        EXPECT_EQ(field.Value(), CellNumber(row[2]));
        EXPECT_EQ(field.BitValue(), CellNumber(row[3]));
        EXPECT_EQ(field.Text(), row[4]);
        EXPECT_FALSE(device.part.Registers().At("R").Change());
    }
}

TEST(FieldRead, LimitsAndSizes) {
    // The fields; maximum, minimum, total length and entries of F.
    for (const TextRow& row : TextTable(R"(
        'F 0+4 step=2 zero=1' 31 0 4 0;  'F 0+4 step=2 zero=1 sign=8' 31 -31 4 0;  'F 0+4 max=9 min=-2' 15 0 4 0
        'F 0+4 link=G; G 4+10 step=16' 16383 0 14 0;  'F 0+4 stepfrom=S; S 8+4' 45 0 4 0
        'F 0+53' 9007199254740991 0 53 0
        'F 0+2 values=10,40,20 sign=8' 40 -40 2 3;  'F 0+2 values=-5,-3' 0 0 2 2;  'F 0+2 values=7 texts=8,9' 9 0 2 2
        'F 0+2 texts=5,10,x' 10 0 2 3;  'F 0+2 texts=Off,On' 0 0 2 2
         'F 0+2 texts=-5,-10' 0 0 2 2;  'F 0+4 values=100,300,200 texts=1,2' 300 0 4 3
        'F 0+4 link=F' 15 0 4 0;  'F 0+4 link=G; G 4+4 step=16 link=F' 255 0 8 0)")) {
        SCOPED_TRACE(row[0]);
        TestPart device(53);
        device.Register("R", 0x300);
        device.Fields(row[0]);
        const cPrgmBits& field = device.Field("F");
        EXPECT_EQ(field.Maximum(), CellNumber(row[1]));
        EXPECT_EQ(field.Minimum(), CellNumber(row[2]));
        EXPECT_EQ(field.TotalLength(), CellShort(row[3]));
        EXPECT_EQ(field.ArrayCount(), CellShort(row[4]));
    }
}

TEST(FieldRead, TheStringListIsCopiedOut) {
    TestPart device(8);
    device.Fields("F 0+2 texts=Off,On,Auto; P 0+2");
    std::vector<std::string> texts;
    EXPECT_EQ(device.Field("F").GetStringArray(texts), 2);
    EXPECT_EQ(texts, (std::vector<std::string>{"Off", "On", "Auto"}));
    EXPECT_EQ(device.Field("P").GetStringArray(texts), 0);
}

TEST(FieldRead, AChainThatDoublesAtEachFieldEnds) {
    TestPart device(53);
    device.Register("R", 1);
    for (int i = 0; i < 60; ++i) {
        const std::string next = "F" + std::to_string(i + 1);
        device.Fields("F" + std::to_string(i) + " 0+1 link=" + next + " stepfrom=" + next + " mirror=" + next);
    }
    device.Fields("F60 0+1");
    cPrgmBits& first = device.Field("F0");
    EXPECT_TRUE(std::isfinite(first.Value()));
    EXPECT_GE(first.TotalLength(), 1);
    first.Value(1);
    first.Increment();
    EXPECT_EQ(device.Field("F60").Value(), device.part.Registers().At("R").GetBits(0, 1)) << "nothing stays blocked";
}

}   // namespace
