#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/Errors.h"
#include "support/RecordingDisplay.h"
#include "support/TestPart.h"
#include "support/TextTable.h"

namespace {

using Calls = std::vector<std::string>;

/// "A+" and "A-" switch a pin, "A!" toggles it; "set=", "clear=", "toggle=", "word=" and "reset" act on the word.
void Act(cPart& part, const std::string& step) {
    const auto at = step.find('=');
    const std::int16_t word = at == std::string::npos ? std::int16_t{0} : CellShort(step.substr(at + 1));
    if (step == "reset") {
        part.ResetOutputPins();
    } else if (at == std::string::npos) {
        cPrgmPin& pin = part.PrgmPins().At(step.substr(0, 1));
        step[1] == '!' ? pin.Toggle() : pin.Enabled(step[1] == '+');
    } else if (step.starts_with("word")) {
        part.OutputPinValue(word);
    } else {
        step.starts_with("set") ? part.SetOutPins(word)
                                : step.starts_with("clear") ? part.ClearOutPins(word) : part.ToggleOutPins(word);
    }
}

TEST(Pins, AreViewsOfOneWord) {
    // Pins A and B on line 3, C on line 11, and a bit 4 that no pin has: the word, the pins that are on, the steps.
    for (const TextRow& row : TextTable(R"(0x010 '';  0x018 AB A+;  0x010 '' A+ B-;  0x810 C C!;  0x010 '' C! C!
        0x818 ABC set=0x00F clear=0x003 toggle=0x804;  0x818 ABC word=0x0FEF;  0x010 '' set=0x808 word=0
        0x000 '' reset;  0x017 '' set=0x7)")) {
        SCOPED_TRACE(row.back());
        TestPart device(8);
        device.part.SetOutPins(0x10);
        for (const char* name : {"A", "B", "C"}) {
            device.part.AddProgramPin(name, *name == 'C' ? 11 : 3);
        }
        for (std::size_t step = 2; step < row.size(); ++step) {
            Act(device.part, row[step]);
        }
        std::string on;
        for (const cPrgmPin& pin : device.part.PrgmPins()) {
            on += pin.Enabled() ? pin.ID() : "";
        }
        EXPECT_EQ(device.part.OutputPinValue(), CellShort(row[0]));
        EXPECT_EQ(on, row[1]);
        EXPECT_TRUE(device.port.Writes().empty());
    }
}

TEST(Pins, LinesAndMasks) {
    TestPart device(8);
    device.part.AddProgramPin("A", 0);
    cPrgmPin& pin = device.part.PrgmPins().At("A");
    for (std::int16_t line = 0; line <= 14; ++line) {
        pin.Position(line);
        EXPECT_EQ(pin.Position(), line);
        EXPECT_EQ(pin.Value(), 1 << line);
    }
    for (const std::int16_t line : {std::int16_t{-1}, std::int16_t{15}}) {
        EXPECT_THROW(pin.Position(line), ConversionError);
        EXPECT_EQ(pin.Position(), 14);
        EXPECT_THROW(device.part.AddProgramPin("B", line), ConversionError);
        EXPECT_EQ(device.part.PrgmPins().Count(), 1);
    }
}

TEST(Device, ClearingTakesAllButTheWiringAway) {
    TestPart device(8);
    RecordingDisplay display(device.part);
    device.part.UseDisplay(display);
    device.Register("R", 1);
    device.Fields("F 0+4");
    device.part.AddProgramPin("A", 3);
    device.part.SetOutPins(8);
    device.part.Lines(9);
    device.part.FileProblems().Add({});
    display.Take();
    device.part.ClearPLL();
    // The form is cleared while the device is still there, for it keeps the device's settings.
    EXPECT_EQ(display.Take(), (Calls{"ClearForm TEST", "RemovePLLPages", "*ShowBurst"}));
    EXPECT_EQ(device.part.Registers().Count() + device.part.PrgmBits().Count() + device.part.PrgmPins().Count(), 0);
    EXPECT_EQ(device.part.FileProblems().Count() + device.part.Lines(), 0);
    EXPECT_EQ(device.part.ID(), "");
    EXPECT_EQ(device.part.OutputPinValue(), 8) << "the pins keep their levels";
}

TEST(Device, DisplaysShowWhatThereIs) {
    TestPart device(8);
    RecordingDisplay display(device.part);
    device.part.UseDisplay(display);
    device.part.ClockPosition(0);
    device.part.LEPosition(0);
    device.Register("R", 1);
    device.part.RegisterLength(9);
    device.part.UpdateDisplays();
    EXPECT_EQ(display.Take(), (Calls{"row R", "RebuildRulers 9", "*ShowRegisters", "*ShowPort", "*ShowBurst"}));
    EXPECT_FALSE(device.part.Updating());
    EXPECT_EQ(device.part.ClockPosition(), 1);   // A line that isn't set gets its usual place.
    EXPECT_EQ(device.part.DataPosition(), 2);
    EXPECT_EQ(device.part.LEPosition(), 4);
}

TEST(Device, ASecondItemOfANameIsRefusedWithoutATrace) {
    TestPart device(8);
    RecordingDisplay display(device.part);
    device.part.UseDisplay(display);
    device.Register("R", 1);
    device.Fields("F 0+4");
    display.Take();
    EXPECT_THROW(device.part.AddRegister("R", 0, 7, true, ""), LookupError);
    EXPECT_THROW(device.part.AddCounter("F", "R", 4, 4, true, "G"), LookupError);
    EXPECT_THROW(device.part.AddList("X", "G"), LookupError);
    EXPECT_EQ(display.Take(), Calls{});
    EXPECT_EQ(device.part.Registers().At("R").Value(), 1);
    EXPECT_EQ(device.Field("F").Position(), 0);
}

}   // namespace
