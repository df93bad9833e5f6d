#include "core/FieldEntry.h"

#include <gtest/gtest.h>

#include "support/TestPart.h"

namespace {

/// Fields of every form in a register of 16 bits.
struct Fields : TestPart {
    Fields() : TestPart(16) {
        Register("R");
        Field("PLAIN", 0, 4);
        Field("STEPS", 0, 4, [](cPrgmBits& field) {
            field.StepValue(2.5);
            field.MaximumValue(30);
            field.Units(" kHz");
        });
        Field("SIGNED", 4, 3, [](cPrgmBits& field) {
            field.Polarity(true);
            field.PolarityPosition(7);
            field.MinimumValue(-7);
            field.Units("dB");
        });
        Field("NUMBERS", 8, 2, [](cPrgmBits& field) { field.SetValueArray({10, 20, 40}); });
        Field("LONG", 8, 4, [](cPrgmBits& field) { field.SetValueArray({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 90}); });
        Field("WORDS", 8, 2, [](cPrgmBits& field) { field.SetStringArray({"5 mA", "Off"}); });
        Field("CONSTANT", -1, 1, [](cPrgmBits& field) { field.SetValueArray({8, 9}); });
        Field("CAPPED", 0, 4, [](cPrgmBits& field) { field.GreaterBitName("PLAIN"); });
        Field("LOST", 0, 4).Register("NOWHERE");
    }

    cPrgmBits& operator[](const char* name) { return part.PrgmBits().At(name); }
};

}   // namespace

TEST(FieldEntry, TakesNumbersWithBlanksAndTheFieldsOwnUnits) {
    Fields fields;
    const struct {
        const char* field;
        const char* text;
        std::optional<double> number;
    } cases[] = {
        {"PLAIN", " 5\t", 5},   {"PLAIN", "1e1", 10},   {"PLAIN", "5 kHz", {}},     {"PLAIN", "", {}},
        {"PLAIN", "five", {}},  {"PLAIN", "1e999", {}}, {"STEPS", "5 kHz", 5},      {"STEPS", "  -5kHz ", -5},
        {"STEPS", "5  kHz", 5}, {"STEPS", "5 KHZ", {}},   // As "mHz" isn't "MHz".
        {"STEPS", "5 MHz", {}}, {"STEPS", "kHz", {}},   {"STEPS", "5 kHz kHz", {}}, {"SIGNED", "-3dB", -3},
        {"NUMBERS", "20", 20},  {"WORDS", "10 mA", {}},   // The text of an entry has no units that could be told apart.
        {"LOST", "7", 7},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ParseFieldEntry(fields[c.field], c.text), c.number) << c.field << ": \"" << c.text << '"';
    }
}

TEST(FieldEntry, TellsWhatAFieldTakes) {
    Fields fields;
    const struct {
        const char* field;
        const char* limits;
    } cases[] = {
        {"PLAIN", "0 to 15 in steps of 1"},
        {"STEPS", "0 to 30 kHz in steps of 2.5 kHz"},
        {"SIGNED", "-7 to 7dB in steps of 1dB"},
        {"NUMBERS", "one of 10, 20, 40"},
        {"LONG", "one of 11 values from 0 to 90"},
        {"WORDS", "the number of an entry, 0 to 1"},
        {"CONSTANT", "a constant"},
        {"CAPPED", "0 to 15 in steps of 1, limited by 'PLAIN'"},
        {"LOST", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FieldLimits(fields[c.field]), c.limits) << c.field;
    }
}

TEST(FieldEntry, TellsWhatWasStoredInsteadOfWhatWasAsked) {
    Fields fields;
    const struct {
        const char* field;
        double asked;
        const char* note;
    } cases[] = {
        {"STEPS", 5, ""},
        {"STEPS", 6.1, "'STEPS': asked 6.1 kHz, stored 5 kHz; it takes 0 to 30 kHz in steps of 2.5 kHz"},
        {"STEPS", 1000, "'STEPS': asked 1000 kHz, stored 30 kHz; it takes 0 to 30 kHz in steps of 2.5 kHz"},
        {"SIGNED", -3, ""},   // Value reads 3 there; the text has the sign.
        {"NUMBERS", 24, "'NUMBERS': asked 24, stored 20; it takes one of 10, 20, 40"},
        {"WORDS", 1, ""},
        {"WORDS", 7, "'WORDS': asked 7, stored Off; it takes the number of an entry, 0 to 1"},
        {"CONSTANT", 9, "'CONSTANT': asked 9, stored 8; it takes a constant"},
    };
    for (const auto& c : cases) {
        fields[c.field].Value(c.asked);
        EXPECT_EQ(FieldEntryNote(fields[c.field], c.asked), c.note);
    }
}
