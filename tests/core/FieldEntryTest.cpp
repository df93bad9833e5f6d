#include "core/FieldEntry.h"

#include "support/Cases.h"
#include "support/TestPart.h"

namespace {

/// Fields of every form in a register of 16 bits.
struct AllForms : TestPart {
    AllForms() : TestPart(16) {
        Register("R");
        Fields(
            "PLAIN 0+4; STEPS 0+4 step=2.5 max=30; SIGNED 4+3 sign=7 min=-7 units=dB; NUMBERS 8+2 values=10,20,40;"
            "LONG 8+4 values=0,1,2,3,4,5,6,7,8,9,90; CONSTANT -1+1 values=8,9; CAPPED 0+4 atmost=PLAIN; LOST 0+4");
        Field("STEPS").Units(" kHz");
        Field("WORDS", 8, 2).SetStringArray({"5 mA", "Off"});
        Field("LOST").Register("NOWHERE");
    }

    cPrgmBits& operator[](const char* name) { return part.PrgmBits().At(name); }
};

}   // namespace

TEST(FieldEntry, TakesNumbersWithBlanksAndTheFieldsOwnUnits) {
    AllForms fields;
    const Cases<const char*, const char*, std::optional<double>> cases = {
        {"PLAIN", " 5\t", 5},   {"PLAIN", "1e1", 10},   {"PLAIN", "5 kHz", {}},     {"PLAIN", "", {}},
        {"PLAIN", "five", {}},  {"PLAIN", "1e999", {}}, {"STEPS", "5 kHz", 5},      {"STEPS", "  -5kHz ", -5},
        {"STEPS", "5  kHz", 5}, {"STEPS", "5 KHZ", {}},   // As "mHz" isn't "MHz".
        {"STEPS", "5 MHz", {}}, {"STEPS", "kHz", {}},   {"STEPS", "5 kHz kHz", {}}, {"SIGNED", "-3dB", -3},
        {"NUMBERS", "20", 20},  {"WORDS", "10 mA", {}},   // The text of an entry has no units that could be told apart.
        {"LOST", "7", 7}};
    for (const auto& [field, text, number] : cases) {
        EXPECT_EQ(ParseFieldEntry(fields[field], text), number) << field << ": \"" << text << '"';
    }
}

TEST(FieldEntry, TellsWhatAFieldTakes) {
    AllForms fields;
    const Cases<const char*, const char*> cases = {{"PLAIN", "0 to 15 in steps of 1"},
                                                   {"STEPS", "0 to 30 kHz in steps of 2.5 kHz"},
                                                   {"SIGNED", "-7 to 7dB in steps of 1dB"},
                                                   {"NUMBERS", "one of 10, 20, 40"},
                                                   {"LONG", "one of 11 values from 0 to 90"},
                                                   {"WORDS", "the number of an entry, 0 to 1"},
                                                   {"CONSTANT", "a constant"},
                                                   {"CAPPED", "0 to 15 in steps of 1, limited by 'PLAIN'"},
                                                   {"LOST", ""}};
    for (const auto& [field, limits] : cases) {
        EXPECT_EQ(FieldLimits(fields[field]), limits) << field;
    }
}

TEST(FieldEntry, TellsWhatWasStoredInsteadOfWhatWasAsked) {
    AllForms fields;
    for (const auto& [field, asked, note] : Cases<const char*, double, const char*>{
             {"STEPS", 5, ""},
             {"STEPS", 6.1, "'STEPS': asked 6.1 kHz, stored 5 kHz; it takes 0 to 30 kHz in steps of 2.5 kHz"},
             {"STEPS", 1000, "'STEPS': asked 1000 kHz, stored 30 kHz; it takes 0 to 30 kHz in steps of 2.5 kHz"},
             {"SIGNED", -3, ""},   // Value reads 3 there; the text has the sign.
             {"NUMBERS", 24, "'NUMBERS': asked 24, stored 20; it takes one of 10, 20, 40"},
             {"WORDS", 1, ""},
             {"WORDS", 7, "'WORDS': asked 7, stored Off; it takes the number of an entry, 0 to 1"},
             {"CONSTANT", 9, "'CONSTANT': asked 9, stored 8; it takes a constant"}}) {
        fields[field].Value(asked);
        EXPECT_EQ(FieldEntryNote(fields[field], asked), note);
    }
}
