#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/Numbers.h"
#include "core/cPart.h"
#include "support/FakePort.h"

/// A device on a fake port at 0x378, wired Clock 1, Data 2, LE 4, without registers.
struct TestPart {
    FakePort port;
    cPart part;

    explicit TestPart(int registerLength) {
        part.UsePort(port);
        part.ID("TEST");
        part.PortAddress(0x378);
        part.ClockPosition(1);
        part.DataPosition(2);
        part.LEPosition(4);
        part.RegisterLength(static_cast<std::int16_t>(registerLength));
    }

    /// Sets the framing and the lines, "sbi clock=256 Trigger=3": lines as words; what is neither is a pin that is on,
    /// with the number of its line.
    void Wire(const std::string& description) {
        static const std::map<std::string, void (cPart::*)(bool)> flags = {{"sbi", &cPart::SBIEnable},
                                                                           {"inverted", &cPart::InvertClock},
                                                                           {"lehigh", &cPart::LEModeHigh},
                                                                           {"pairs", &cPart::HighByte}};
        static const std::map<std::string, void (cPart::*)(std::int16_t)> words = {{"clock", &cPart::ClockPosition},
                                                                                   {"data", &cPart::DataPosition},
                                                                                   {"le", &cPart::LEPosition},
                                                                                   {"pins", &cPart::SetOutPins}};
        std::istringstream in(description);
        for (std::string word; in >> word;) {
            const auto equals = std::min(word.find('='), word.size());
            const std::string key = word.substr(0, equals);
            const auto value = equals < word.size() ? FileShort(word.substr(equals + 1)) : std::int16_t{1};
            if (flags.contains(key)) {
                (part.*flags.at(key))(value != 0);
            } else if (words.contains(key)) {
                (part.*words.at(key))(value);
            } else {
                if (part.PrgmPins().Find(key) == nullptr) {
                    part.AddProgramPin(key, value);
                }
                part.PrgmPins().At(key).Enabled(true);
            }
        }
    }

    /// Adds an unmasked register. It counts as sent, unlike one that was just read from a file.
    cRegister& Register(const std::string& name, double value = 0, std::int32_t mask = 0) {
        part.AddRegister(name, mask, value, true, "");
        cRegister& added = part.Registers().At(name);
        added.Change(false);
        return added;
    }

    /// Adds one half of a register pair.
    cRegister& Half(const std::string& name, double value, bool low, const std::string& other) {
        part.AddRegister(name, 0, value, low, other);
        return part.Registers().At(name);
    }

    /// Adds fields in the register "R" from a description: "F 4+4 step=2 link=G; G 8+4" is a field F of four bits
    /// from bit 4, and a field G. DescribeField() has all the words.
    void Fields(const std::string& description) {
        std::istringstream fields(description);
        for (std::string one; std::getline(fields, one, ';');) {
            std::istringstream words(one);
            std::string name;
            std::string place;
            words >> name >> place;
            const auto plus = place.find('+');
            Field(name, std::stoi(place), std::stoi(place.substr(plus + 1)));
            for (std::string word; words >> word;) {
                DescribeField(Field(name), word);
            }
        }
    }

    cPrgmBits& Field(const std::string& name, int position, int length) {
        part.AddProgramBit(name, "R", static_cast<std::int16_t>(position), static_cast<std::int16_t>(length), false);
        return Field(name);
    }

    cPrgmBits& Field(const std::string& name) { return part.PrgmBits().At(name); }

private:
    static std::vector<std::string> List(const std::string& text) {
        std::vector<std::string> entries;
        std::istringstream in(text);
        for (std::string entry; std::getline(in, entry, ',');) {
            entries.push_back(entry);
        }
        return entries;
    }

    static void DescribeField(cPrgmBits& field, const std::string& word) {
        const auto equals = std::min(word.find('='), word.size());
        const std::string key = word.substr(0, equals);
        const std::string value = equals < word.size() ? word.substr(equals + 1) : "";
        using Text = void (cPrgmBits::*)(std::string);
        static const std::map<std::string, Text> texts = {
            {"units", &cPrgmBits::Units},          {"format", &cPrgmBits::FormatString},
            {"link", &cPrgmBits::LinkedBits},      {"stepfrom", &cPrgmBits::StepValueBitName},
            {"mirror", &cPrgmBits::MirrorBits},    {"atleast", &cPrgmBits::GreaterBitName},
            {"atmost", &cPrgmBits::GreaterBitName}};
        using Number = void (cPrgmBits::*)(double);
        static const std::map<std::string, Number> numbers = {{"step", &cPrgmBits::StepValue},
                                                              {"zero", &cPrgmBits::ZeroValue},
                                                              {"min", &cPrgmBits::MinimumValue},
                                                              {"max", &cPrgmBits::MaximumValue}};
        if (texts.contains(key)) {
            (field.*texts.at(key))(value);
            field.GreaterEqual(key == "atleast");
        } else if (numbers.contains(key)) {
            (field.*numbers.at(key))(NumberOf(value));
        } else if (key == "texts") {
            field.SetStringArray(List(value));
        } else if (key == "values") {
            std::vector<double> values;
            for (const std::string& entry : List(value)) {
                values.push_back(NumberOf(entry));
            }
            field.SetValueArray(std::move(values));
        } else if (key == "sign") {
            field.Polarity(true);
            field.PolarityPosition(FileShort(value));
        } else if (key == "signinv") {
            field.PolarityInverted(true);
        } else if (key == "inv") {
            field.DataInverted(true);
        } else {
            ADD_FAILURE() << "no such word: " << word;
        }
    }
};

/// What a device on those lines takes in: each level of Data at a rising Clock, or at a falling one, and "|" at a
/// rising LE.
inline std::string Shifted(const std::vector<int>& words, int clock = 1, int data = 2, int le = 4,
                           bool inverted = false) {
    std::string taken;
    int last = 0;
    for (const int word : words) {
        const int rising = word & ~last;
        if (((inverted ? last & ~word : rising) & clock) != 0) {
            taken += (word & data) != 0 ? '1' : '0';
        }
        if ((rising & le) != 0) {
            taken += '|';
        }
        last = word;
    }
    return taken;
}
