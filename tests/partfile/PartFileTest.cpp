#include <sstream>

#include "ini/PrivateSetting.h"
#include "partfile/PartCheck.h"
#include "partfile/PartFile.h"
#include "partfile/PartFileReader.h"
#include "support/Cases.h"
#include "support/PartText.h"
#include "support/RecordingDisplay.h"
#include "support/TempFolder.h"

namespace {

template <class List>
std::string Joined(const List& list) {
    std::ostringstream out;
    for (const auto& entry : list) {
        out << (&entry == &*list.begin() ? "" : ",") << entry;
    }
    return out.str();
}

/// A device read from a part file.
struct ReadDevice {
    cPart part;
    RecordingDisplay display{part};

    explicit ReadDevice(const std::string& path) {
        part.UseDisplay(display);
        PartFile file(path, part.FileProblems());
        PartFileReader reader(part, file);
        reader.ReadSetup();
        reader.ReadPins();
        reader.ReadRegisters();
        reader.ReadBits();
        CheckRegistersAndFields(part, file);
    }

    [[nodiscard]] std::string Messages() {
        std::string all;
        for (const Problem& problem : part.FileProblems().All()) {
            all += problem.Message() + '\n';
        }
        return all;
    }

    /// All that was read, a line for each item.
    [[nodiscard]] std::string Held() {
        std::ostringstream out;
        out.precision(17);
        out << "setup " << part.RegisterLength() << ' ' << part.ControlLength() << ' ' << part.PortAddress() << ' '
            << part.ClockPosition() << ' ' << part.DataPosition() << ' ' << part.LEPosition()
            << (part.SBIEnable() ? " sbi" : "") << (part.HighByte() ? " pairs" : "")
            << (part.InvertClock() ? " inverted" : "");
        for (const cPrgmPin& pin : part.PrgmPins()) {
            out << "\npin " << pin.ID() << ' ' << pin.Position() << (pin.Enabled() ? " on" : " off");
        }
        for (const cRegister& one : part.Registers()) {
            out << "\nregister " << one.ID() << ' ' << one.Mask() << ' ' << one.Value()
                << (one.LowByte() ? " low/" : " high/") << one.HighLowRegister();
        }
        for (const cPrgmBits& f : part.PrgmBits()) {
            out << "\nfield " << f.ID() << " in " << f.Register() << ' ' << f.Position() << '+' << f.Length()
                << (f.Display() ? " shown " : " ") << f.MinimumValue() << ' ' << f.MaximumValue() << ' '
                << f.ZeroValue() << ' ' << f.StepValue() << " link/" << f.LinkedBits() << " mirror/" << f.MirrorBits()
                << " step/" << f.StepValueBitName() << " greater/" << f.GreaterBitName()
                << (f.Polarity() ? " sign " : " ") << f.PolarityPosition() << (f.PolarityInverted() ? " signinv" : "")
                << (f.DataInverted() ? " inv" : "") << " [" << Joined(f.ValueList()) << "] [" << Joined(f.StringList())
                << ']' << f.Description();
        }
        return out.str();
    }
};

/// The device of a file with these contents.
struct WrittenDevice : ReadDevice {
    explicit WrittenDevice(const std::string& contents) : ReadDevice(TempFolder().File("x.ini", Lines(contents))) {}
};

const std::string kSound = "[REGISTERS]|COUNT=1|NAME00=R|MASK00=0|";
const std::string kPins = "[PINS]|COUNT=2|NAME00=CE|";
const std::string kField = kSound + "[BITS]|COUNT=1|REG00=R|NAME00=F|POS00=0|";
const std::string kFields = kSound + "[BITS]|COUNT=2|REG00=R|NAME00=F|POS00=0|LEN00=4|REG01=R|NAME01=G|LEN01=4|";
const std::string kPair = "[SETUP]|HIGHBYTE=TRUE|[REGISTERS]|NAME00=H|LOWBYTE00=FALSE|NAME01=L|";

const std::string kPlain = " 0 0 0 1 link/ mirror/ step/ greater/ 0 [0] ";

TEST(PartFile, WhatIsMissingHasDefaults) {
    const TempFolder folder;
    ReadDevice none(folder.Path("none.ini"));
    EXPECT_EQ(none.Held(), "setup 24 3 888 1 2 4");
    EXPECT_EQ(none.display.Take(), (std::vector<std::string>{"RebuildRulers 24", "version a|No ini description"}));
    ASSERT_EQ(none.part.FileProblems().Count(), 1) << none.Messages();
    EXPECT_EQ(none.part.FileProblems().All()[0].line, 0);

    WrittenDevice device("[PINS]|COUNT=2|[REGISTERS]|COUNT=2|[BITS]|COUNT=2|");
    EXPECT_EQ(device.Held(), Lines("setup 24 3 888 1 2 4|pin Pin00 3 off|pin Pin01 3 off|register Reg00 3 0 low/"
                                   "|register Reg01 3 1 low/|field Reg00 in Reg01 1+1" +
                                   kPlain + "[]|field Reg01 in Reg00 1+1" + kPlain + "[]"));
    EXPECT_TRUE(device.part.Registers().At(1).Change()) << "a new register is to be sent";
}

TEST(PartFile, AFieldWithoutRegisterTakesTheNameBefore) {
    for (const auto& [items, name] :
         Cases<const char*, const char*>{{"", ""},
                                         {"[PINS]|COUNT=2|NAME01=CE|", "CE"},
                                         {"[PINS]|COUNT=1|[REGISTERS]|COUNT=1|NAME00=MAIN|", "MAIN"},
                                         {"[REGISTERS]|COUNT=2|NAME00=MAIN|NAME01=MAIN|", "MAIN"}}) {
        WrittenDevice device(items + std::string("[BITS]|COUNT=2|NAME01=G|REG01=Q|"));
        EXPECT_EQ(device.part.PrgmBits().At(1).Register(), name);
        EXPECT_EQ(device.part.PrgmBits().At("G").Register(), "Q");
    }
}

TEST(PartFile, ReadsEveryKey) {
    WrittenDevice device(R"([SETUP]
REGISTER_LENGTH=53|CONTROL_LENGTH=0|ADDRESS=&HFFFC|CLOCK=&H100|DATA=512|LE=2048|SBI=-1|HIGHBYTE=true|INVERTCLOCK=2
VERSION=1.5|VERSION_DESCRIPTION= For board B
[PINS]|COUNT=1|NAME00=Trigger|LOCATION00=11|ENABLED00=TRUE
[REGISTERS]|COUNT=1|NAME00=M|MASK00=&HFFFFFFFF|VALUE00=9007199254740991|LOWBYTE00=0|HIGHLOWREGISTER00=L
[BITS]|COUNT=5|REG00=M|NAME00=A|POS00=4|LEN00=8|DISPLAY00=TRUE|FRAME00=Frame one|TYPE00=Counter|LINKEDBITS00=B
MINIMUMVALUE00=-2.5|MAXIMUMVALUE00=1e3|ZEROVALUE00=0.5|STEPVALUE00=&H10|MIRRORBITS00=C|STEPVALUEBITNAME00=D
DESCRIPTION00=What A does; and more|GREATERBITS00=E|POLARITY00=1|POLARITYPOSITION00=52|POLARITYINVERTED00=TRUE
DATAINVERTED00=TRUE|NAME01=B|REG01=M|TYPE01=Bit|DISPLAY01=1|NAME02=C|REG02=M|TYPE02=List|DISPLAY02=TRUE|COUNT02=2
NAME03=D|REG03=M|DISPLAY03=TRUE|TYPE03=Bits|NAME04=E|REG04=M|TYPE04=bit|DISPLAY04=TRUE
)");
    EXPECT_EQ(
        device.Held(),
        Lines("setup 53 0 -4 256 512 2048 sbi pairs inverted|pin Trigger 11 on"
              "|register M -1 9007199254740991 high/L|field A in M 4+8 shown -2.5 1000 0.5 16 link/B mirror/C step/D"
              " greater/E sign 52 signinv inv [0] []What A does; and more|field B in M 1+1 shown" +
              kPlain + "[]|field C in M 1+1" + kPlain + "[00,01]|field D in M 1+1" + kPlain + "[]|field E in M 1+1" +
              kPlain + "[]"));
    // Only the three exact types have a control; a list gets it with its list.
    EXPECT_EQ(device.display.Take(),
              (std::vector<std::string>{"RebuildRulers 53", "version 1.5|For board B", "pin Trigger", "row M",
                                        "count A/0 in Frame one", "check B/0 in Frame", "list C/2 in Frame"}));
}

TEST(PartFile, UnitsAndDirectionsAct) {
    for (const auto& [keys, text] : Cases<const char*, const char*>{
             {"UNITS00= dB|", "9dB"}, {"UNITS00=dB|GREATERTHAN00=FALSE|", "2dB"}, {"UNITS00=\" dB\"|", "9 dB"}}) {
        WrittenDevice device(kFields + "POS01=4|GREATERBITS00=G|" + keys);
        device.part.PrgmBits().At("G").Value(2);
        device.part.PrgmBits().At("F").Value(9);
        EXPECT_EQ(device.part.PrgmBits().At("F").Text(), text) << keys;
    }
}

TEST(PartFile, Lists) {
    for (const auto& [keys, lists] : Cases<std::string, std::string>{
             {"COUNT00=3|VAL0000=Off|VAL0002=Auto|", "[0] [Off,01,Auto]"},
             {"COUNT00=3|FORMAT00=Number|VAL0000=1.5|VAL0001=&H10|", "[1.5,16,2] []"},
             {"COUNT00=2|FORMAT00=string|VAL0000=7|VAL0001=8|", "[7,8] []"},
             {"COUNT00=2|FORMAT00=D|VAL0000=7|VAL0001=8|COUNTB00=2|VALB0001=5|", "[7,8] [00,5]"},
             {"COUNT00=2|FORMAT00=D|VAL0000=7|VAL0001=8|COUNTB00=1|VALB0000=5|", "[7,8] [5]"},
             {"COUNT00=2|VAL0000=a|VAL0001=b|COUNTB00=2|VALB0000=5|", "[0] [a,b]"},
             {"COUNT00=0|VAL0000=a|FORMAT00=D|COUNTB00=2|", "[0] []"},
             {"COUNT00=-1|", "[0] []"}}) {
        WrittenDevice device("[BITS]|COUNT=1|NAME00=F|" + keys);
        EXPECT_NE(device.Held().find(lists), std::string::npos) << keys << device.Held();
    }
    WrittenDevice many("[BITS]|COUNT=101|COUNT100=101|VAL100100=last|VAL10009=ten|");
    EXPECT_EQ(many.part.PrgmBits().At("Reg100").StringList()[100], "last");
    EXPECT_EQ(many.part.PrgmBits().At("Reg100").StringList()[9], "ten");
}

TEST(PartFile, ValuesOfAnyLength) {
    const TempFolder folder;
    for (const std::size_t length : {0U, 1U, 253U, 254U, 255U, 256U, 510U, 511U, 5000U}) {
        const std::string value(length, 'x');
        const std::string path = folder.File("x.ini", "[S]\nK=" + value + "\n");
        EXPECT_EQ(GetPrivateSetting(path, "S", "K", "default"), value) << length;
        EXPECT_EQ(GetPrivateSetting(path, "S", "L", value), value) << length;
    }
}

/// A file whose only problem stands in that place, such as "2: error: [SETUP] LE".
void CheckReport(const std::string& contents, const std::string& place, const std::string& said) {
    SCOPED_TRACE(contents);
    const TempFolder folder;
    const std::string path = folder.File("x.ini", Lines(contents));
    ReadDevice device(path);
    ASSERT_EQ(device.part.FileProblems().Count(), 1) << device.Messages();
    const std::string message = device.part.FileProblems().All()[0].Message();
    EXPECT_TRUE(message.starts_with(path + ':' + place + ": ")) << message;
    EXPECT_NE(message.find(said), std::string::npos) << message;
    EXPECT_EQ(device.part.FileProblems().Count(Severity::Error), place.find("error") == std::string::npos ? 0 : 1);
}

/// A value that doesn't convert or doesn't fit is as if its key weren't there.
TEST(PartFile, ARefusedValueIsReportedAndLeavesTheDefault) {
    for (const auto& [contents, place, said] : Cases<std::string, std::string, const char*>{
             {"[SETUP]|REGISTER_LENGTH=eight|", "2: error: [SETUP] REGISTER_LENGTH", "\"eight\" is no whole number"},
             {"[SETUP]|REGISTER_LENGTH=|", "2: error: [SETUP] REGISTER_LENGTH", "the default \"24\""},
             {"[SETUP]|REGISTER_LENGTH=0|", "2: error: [SETUP] REGISTER_LENGTH", "0 is not within 1 to 53"},
             {"[SETUP]|REGISTER_LENGTH=54|", "2: error: [SETUP] REGISTER_LENGTH", "54 is not within 1 to 53"},
             {"[SETUP]|SBI=FALSE|ADDRESS=70000|", "3: error: [SETUP] ADDRESS", "70000 doesn't fit"},
             {"[SETUP]|CLOCK=&H10000|", "2: error: [SETUP] CLOCK", "\"&H10000\" has more than 16 bits"},
             {"[SETUP]|INVERTCLOCK=maybe|", "2: error: [SETUP] INVERTCLOCK", "\"maybe\" is neither TRUE nor FALSE"},
             {"[PINS]|COUNT=many|", "2: error: [PINS] COUNT", "\"many\""},
             {kPins + "LOCATION00=12|", "4: error: [PINS] LOCATION00", "12 is not within 0 to 11"},
             {"[REGISTERS]|COUNT=1|MASK00=&H1FFFFFFFF|", "3: error: [REGISTERS] MASK00", "more than 32 bits"},
             {"[REGISTERS]|COUNT=2|VALUE01=1,5|", "3: error: [REGISTERS] VALUE01", "\"1,5\" is no number"},
             {kField + "STEPVALUE00=x|", "10: error: [BITS] STEPVALUE00", "the default \"1\""},
             {kField + "COUNT00=2|FORMAT00=D|VAL0001=x|", "12: error: [BITS] VAL0001", "the default \"01\""}}) {
        CheckReport(contents, place, said);
        const auto start = contents.rfind('|' + place.substr(place.rfind(' ') + 1));
        const std::string without = contents.substr(0, start) + contents.substr(contents.find('|', start + 1));
        EXPECT_EQ(WrittenDevice(contents).Held(), WrittenDevice(without).Held()) << contents;
    }
}

/// The faulty files among the data of the tests have the faults of each kind; here are the limits of some.
TEST(PartFile, WhatCannotBeAsMeantIsReported) {
    for (const auto& [contents, place, said] : Cases<std::string, const char*, const char*>{
             {kSound + "[BITS]|COUNT=2|REG00=R|NAME00=F|POS01=3|", "5: error: [BITS] REG01", "no register called 'F'"},
             {kFields + "TYPE00=Bit|DISPLAY00=TRUE|POLARITY00=TRUE|POLARITYPOSITION00=7|TYPE01=List|POS01=4|",
              "19: warning: [BITS] POS01", "share bits of 'R'"},
             {kFields + "POS01=4|LINKEDBITS00=G|GREATERBITS01=F|", "16: warning: [BITS] GREATERBITS01",
              "back to itself"},
             {kField + "STEPVALUEBITNAME00=F|", "10: warning: [BITS] STEPVALUEBITNAME00", "back to itself"}}) {
        CheckReport(contents, place, said);
    }
}

TEST(PartFile, TheSecondOfANameHasNoEffect) {
    WrittenDevice device(R"([PINS]|COUNT=2|NAME00=CE|NAME01=CE|ENABLED01=TRUE
[REGISTERS]|COUNT=2|NAME00=A|VALUE00=7|NAME01=A|VALUE01=8|[BITS]|COUNT=2|REG00=A|NAME00=F|NAME01=F|COUNT01=2|)");
    EXPECT_EQ(device.Held(),
              Lines("setup 24 3 888 1 2 4|pin CE 3 off|register A 3 7 low/|field F in A 1+1" + kPlain + "[]"));
    EXPECT_EQ(device.part.FileProblems().Count(Severity::Error), 3) << device.Messages();
}

TEST(PartFile, WhatIsMeantIsNotReported) {
    for (const std::string& contents : std::initializer_list<std::string>{
             kFields + "TYPE00=Bit|DISPLAY00=TRUE|POS01=3|",
             kFields + "TYPE00=Bit|DISPLAY00=TRUE|TYPE01=Bit|DISPLAY01=TRUE|POS01=3|MIRRORBITS01=F|",
             kFields + "TYPE00=Bit|DISPLAY00=TRUE|TYPE01=Bit|DISPLAY01=TRUE|POS01=4|",
             kFields + "POS01=4|LINKEDBITS00=G|MIRRORBITS00=G|GREATERBITS00=G|", kField + "LEN00=2|COUNT00=4|",
             kField + "LEN00=4|COUNT00=2|FORMAT00=D|COUNTB00=2|", kSound + "[BITS]|COUNT=1|REG00=R|NAME00=|",
             kSound + "[BITS]|COUNT=1|REG00=|POS00=-1|LEN00=0|COUNT00=2|",
             kPair + "COUNT=2|HIGHLOWREGISTER00=L|HIGHLOWREGISTER01=H|",
             "[REGISTERS]|COUNT=1|LOWBYTE00=FALSE|HIGHLOWREGISTER00=X|MASK00=-1|VALUE00=-2.5|", ""}) {
        EXPECT_EQ(WrittenDevice(contents).Messages(), "") << contents;
    }
}

}   // namespace
