#include "core/Errors.h"
#include "support/RecordingDisplay.h"
#include "support/TestPart.h"
#include "support/TextTable.h"

namespace {

using Calls = std::vector<std::string>;

TEST(Pins, AreViewsOfOneWord) {
    // Pins A and B on line 3, C on line 11, and a bit 4 that no pin has: steps, the word, the pins that are on.
    // "A+", "A-" and "A!" switch and toggle a pin; "|", "&", "^" and "=" act on the word with the number behind.
    for (const TextRow& row : TextTable(R"('' 0x010 ''; 'A+' 0x018 AB; 'A+ B-' 0x010 ''; 'C!' 0x810 C; 'C! C!' 0x010 ''
        '|0x00F &0x003 ^0x804' 0x818 ABC; '=0x0FEF' 0x818 ABC; '|0x808 =0' 0x010 ''; '|7' 0x017 '')")) {
        SCOPED_TRACE(row[0]);
        TestPart device(8);
        cPart& part = device.part;
        part.SetOutPins(0x10);
        for (const char* name : {"A", "B", "C"}) {
            part.AddProgramPin(name, *name == 'C' ? 11 : 3);
        }
        std::istringstream steps(row[0]);
        for (std::string step; steps >> step;) {
            if (cPrgmPin* pin = part.PrgmPins().Find(step.substr(0, 1))) {
                step[1] == '!' ? pin->Toggle() : pin->Enabled(step[1] == '+');
                continue;
            }
            const std::int16_t word = CellShort(step.substr(1));
            step[0] == '|'   ? part.SetOutPins(word)
            : step[0] == '&' ? part.ClearOutPins(word)
            : step[0] == '^' ? part.ToggleOutPins(word)
                             : part.OutputPinValue(word);
        }
        std::string on;
        for (const cPrgmPin& pin : part.PrgmPins()) {
            on += pin.Enabled() ? pin.ID() : "";
        }
        EXPECT_EQ(part.OutputPinValue(), CellShort(row[1]));
        EXPECT_EQ(on, row[2]);
        part.ResetOutputPins();
        EXPECT_EQ(part.OutputPinValue(), 0);
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

}   // namespace
