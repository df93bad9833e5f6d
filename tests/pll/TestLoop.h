#pragma once

#include <sstream>
#include <string>

#include "core/Numbers.h"
#include "pll/cPLL.h"
#include "support/TestPart.h"

/// A device with one PLL called "RF": N of 17 bits, R of 14, and with a denominator given numerator and denominator
/// of 8 bits each, all in one register.
struct TestLoop : TestPart {
    explicit TestLoop(int denominator = 0, double megahertz = 10, double r = 100) : TestPart(53) {
        Register("R");
        Fields("N 0+17; RDIV 17+14; NUM 31+8; DEN 39+8");
        part.AddPLL("RF", "N", "RDIV");
        if (denominator > 0) {
            part.SetupPLLFraction("RF", "NUM", "DEN");
            Field("DEN").Value(denominator);
        }
        Loop().XtalFrequency(megahertz);
        Field("RDIV").Value(r);
    }

    [[nodiscard]] cPLL& Loop() { return part.PLLs().At("RF"); }

    /// Writes in their order, such as "N.min=56 vco=2": frequencies and counters of the loop, values of fields.
    void Do(const std::string& writes) {
        std::istringstream words(writes);
        for (std::string word; words >> word;) {
            const auto equals = word.find('=');
            Write(word.substr(0, equals), NumberOf(word.substr(equals + 1)));
        }
    }

    /// The four fields as "N/R/numerator/denominator".
    [[nodiscard]] std::string Counters() {
        const auto text = [&](const char* field) { return GeneralText(Field(field).Value()); };
        return text("N") + '/' + text("RDIV") + '/' + text("NUM") + '/' + text("DEN");
    }

private:
    void Write(const std::string& what, double v) {
        static const std::map<std::string, void (cPLL::*)(double)> frequencies = {{"xtal", &cPLL::XtalFrequency},
                                                                                  {"vco", &cPLL::VCOFrequency},
                                                                                  {"pd", &cPLL::PDFrequency},
                                                                                  {"n", &cPLL::NValue},
                                                                                  {"r", &cPLL::RValue}};
        if (frequencies.contains(what)) {
            (Loop().*frequencies.at(what))(v);
        } else if (what == "fixed") {
            Loop().VCOFixed(v != 0);
        } else if (what == "N.min") {
            Field("N").MinimumValue(v);
        } else {
            Field(what).Value(v);
        }
    }
};
