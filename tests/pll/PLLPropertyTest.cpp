#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <random>
#include <set>

#include "pll/FrequencyEntry.h"
#include "pll/StepCommands.h"
#include "pll/cPLL.h"
#include "support/TestPart.h"

// Random loops and requests, held against what the register holds. The contents are decoded here from its bits, and
// the frequency is worked out from them as one fraction, X * (W * den + num) / (R * den * 10^6), in numbers with at
// least 64 bits of mantissa: W * den + num is exact, and the whole fraction to 2^-62, as good as exact beside a double.

static_assert(LDBL_MANT_DIG >= 64, "needs numbers finer than a double");

namespace {

using Names = std::set<std::string>;

struct FieldModel {
    int position;
    int length;
    double minimum;
    double maximum;   // What the bits and the limit allow.
};

class RandomLoop {
public:
    explicit RandomLoop(std::uint64_t seed) : random_(seed), test_(53) {
        fractional_ = Chance(2);
        if (fractional_) {
            n_.insert("NUM");
        }
        test_.Register("R", static_cast<double>(random_() >> 11U));
        const int n = Between(6, 18);
        const int r = Between(3, 9);
        const int fraction = Between(4, 12);
        MakeField("N", 0, n, "");
        MakeField("RDIV", n, r, "");
        MakeField("DEN", n + r, fraction, "");
        MakeField("NUM", n + r + fraction, fraction, Chance(2) ? " atmost=DEN" : "");
        test_.part.AddPLL("RF", "N", "RDIV");
        test_.part.SetupPLLFraction("RF", fractional_ ? "NUM" : "", "DEN");
        const double megahertz = Between(1, 200000000) / 1e6;
        Loop().XtalFrequency(megahertz);
        hertz_ = 1e6 * megahertz;
        fixed_ = Chance(5);
        Loop().VCOFixed(fixed_);
        carries_ = fractional_ && Chance(2);
        Loop().FractCarry(carries_);
        beyond_ = Beyond();
    }

    /// One request and all that must hold afterwards.
    void Request() {
        static_cast<void>(Loop().VCOFrequency());   // An R of 0 is repaired.
        const std::map<std::string, double> before = Contents();
        Names mayChange;
        std::optional<double> wantedN;
        const Outcome outcome = Chance(4) ? Step(mayChange) : Type(mayChange, wantedN);
        if (outcome.Refused()) {
            mayChange.clear();
        }
        CheckFrequency(Loop().VCOFrequency());
        CheckContents(before, mayChange);
        if (wantedN && !outcome.Refused()) {
            CheckNearest(*wantedN);
            if (carries_ && std::fabs(*wantedN) < 2147483647) {
                CheckCarried(*wantedN);
            }
        }
    }

    inline static int nearestChecked = 0;

private:
    int Between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    bool Chance(int oneIn) { return Between(1, oneIn) == 1; }
    cPLL& Loop() { return test_.part.PLLs().At("RF"); }

    void MakeField(const std::string& name, int position, int length, const std::string& more) {
        const int most = (1 << length) - 1;
        const int minimum = (name == "N" || name == "RDIV") && Chance(2) ? Between(1, 6) : 0;
        const int maximum = Chance(3) ? Between(7, most) : most;
        test_.Fields(name + ' ' + std::to_string(position) + '+' + std::to_string(length) +
                     " min=" + std::to_string(minimum) + " max=" + std::to_string(maximum < most ? maximum : 0) + more);
        test_.Field(name).Value(Between(minimum, maximum));
        fields_[name] = {position, length, static_cast<double>(minimum), static_cast<double>(maximum)};
    }

    std::uint64_t Register() { return static_cast<std::uint64_t>(test_.part.Registers().At("R").Value()); }

    double Decode(const std::string& name) {
        const FieldModel& f = fields_.at(name);
        return static_cast<double>(Register() >> static_cast<unsigned>(f.position) & ((1U << f.length) - 1U));
    }

    std::map<std::string, double> Contents() {
        std::map<std::string, double> contents;
        for (const auto& [name, field] : fields_) {
            contents[name] = Decode(name);
        }
        return contents;
    }

    /// The bits above all fields.
    std::uint64_t Beyond() {
        const FieldModel& last = fields_.at("NUM");
        return Register() >> static_cast<unsigned>(last.position + last.length);
    }

    /// Numbers as they are typed: most of them sensible, some not at all.
    double AnyNumber(double sensible) {
        static constexpr std::array kOdd{0.0, -1.0, 0.5, 1e-9, 2.5, 4294967296.0, 1e12, 1e-30, 1e40, -1e15, 5e9};
        return Chance(4) ? kOdd.at(static_cast<std::size_t>(Between(0, kOdd.size() - 1)))
                         : sensible * Between(1, Chance(4) ? 100000 : 15000) / 10000;
    }

    Outcome Step(Names& mayChange) {
        const int command = Between(0, 5);
        mayChange = command < 4 ? n_ : Names{"NUM"};
        const std::string fpd = Chance(10) ? "?" : GeneralText(Loop().PDFrequency());
        constexpr std::array kSteps{-1, 1, -10, 10};
        return command < 4 ? StepN(test_.part, 0, kSteps.at(static_cast<std::size_t>(command)), fpd)
                           : StepNumerator(test_.part, 0, command == 5);
    }

    Outcome Type(Names& mayChange, std::optional<double>& wantedN) {
        const auto box = static_cast<EntryBox>(Between(0, 6));
        const auto row = static_cast<std::size_t>(box);
        const std::array<double, 7> usual{10, Loop().VCOFrequency(), Loop().PDFrequency(), 100, Loop().NValue(), 99,
                                          99};
        const std::string text = GeneralText(AnyNumber(usual.at(row)));
        const double typed = NumberOf(text);
        const Names held = fixed_ ? n_ : Names{};
        const std::array<Names, 7> changes{held, n_, held, {"RDIV"}, n_, {"NUM"}, {"DEN"}};
        mayChange = changes.at(row);
        if (box == EntryBox::Fpd) {
            mayChange.insert("RDIV");
        } else if (box == EntryBox::VCO) {
            wantedN = typed / Loop().PDFrequency() * 1e3;
        } else if (box == EntryBox::NCounter) {
            wantedN = typed;
        } else if (box == EntryBox::Osc) {
            hertz_ = typed == 0 ? 1 : 1e6 * std::fabs(typed);
        }
        return Enter(test_.part, 0, box, text, true);
    }

    void CheckFrequency(double read) {
        const bool counts = fractional_ && Decode("DEN") > 0;
        const long double den = counts ? Decode("DEN") : 1;
        const long double n = den * static_cast<long double>(Decode("N")) + (counts ? Decode("NUM") : 0);
        const long double exact = hertz_ * n / (static_cast<long double>(Decode("RDIV")) * den * 1e6L);
        // Five operations make the number (two quotients, a sum, a product, a quotient), each off by half a unit of
        // the last place at most.
        const long double allowed = std::fabs(exact) * (5.01L / 9007199254740992.0L);
        ASSERT_LE(std::fabs(static_cast<long double>(read) - exact), allowed) << read;
    }

    void CheckContents(const std::map<std::string, double>& before, const Names& mayChange) {
        for (const auto& [name, value] : Contents()) {
            if (mayChange.count(name) == 0) {
                ASSERT_EQ(value, before.at(name)) << name << " was none of this request's business";
            } else if (value != before.at(name) && mayChange != Names{"NUM"}) {   // A step knows its bits alone.
                ASSERT_GE(value, fields_.at(name).minimum) << name;
                ASSERT_LE(value, fields_.at(name).maximum) << name;
            }
        }
        if (mayChange.count("NUM") != 0 && !test_.Field("NUM").GreaterBitName().empty()) {
            ASSERT_LE(Decode("NUM"), Decode("DEN")) << "against its rule";
        }
        ASSERT_EQ(Beyond(), beyond_) << "bits of no field changed";
    }

    /// Where no limit is in the way, N comes as near to the request as its parts can.
    void CheckNearest(double wanted) {
        const FieldModel& n = fields_.at("N");
        const double den = fractional_ ? Decode("DEN") : 1;
        if (wanted >= std::max(1.0, n.minimum) && wanted < n.maximum &&
            (!fractional_ || (!carries_ && den > 0 && fields_.at("NUM").maximum >= den))) {
            ++nearestChecked;
            const double reached = Decode("N") + (fractional_ ? Decode("NUM") / den : 0);
            ASSERT_LE(std::fabs(reached - wanted), 0.5 / den + wanted * 1e-14) << wanted;
        }
    }

    /// With carry no other whole part and numerator below the denominator comes nearer, the frequency that reads back
    /// moves nothing, and a step forth and back returns.
    void CheckCarried(double wanted) {
        const FieldModel& n = fields_.at("N");
        const FieldModel& num = fields_.at("NUM");
        const double den = std::max(1.0, Decode("DEN"));
        double top = std::min(num.maximum, den - 1);
        if (!test_.Field("NUM").GreaterBitName().empty()) {
            top = std::min(top, Decode("DEN"));
        }
        ASSERT_LE(Decode("NUM"), top);
        double best = HUGE_VAL;
        for (double whole = std::floor(wanted) - 1; whole <= std::floor(wanted) + 1; ++whole) {
            const double w = std::clamp(whole, n.minimum, n.maximum);
            const double above = Decode("DEN") > 0 ? std::clamp(std::round((wanted - w) * den), 0.0, top) / den : 0;
            best = std::min(best, std::fabs(w + above - wanted));
        }
        const double reached = Loop().NValue();
        ASSERT_LE(std::fabs(reached - wanted), best + std::fabs(wanted) * 1e-14 + 1e-14) << wanted;
        if (Decode("DEN") > top + 1) {
            return;   // The numerator's own bits leave gaps between one whole part and the next.
        }
        const std::uint64_t before = Register();
        Loop().VCOFrequency(Loop().VCOFrequency());
        ASSERT_EQ(Register(), before) << "the frequency that reads back";
        if (reached + 1 <= n.maximum) {
            const std::string fpd = GeneralText(Loop().PDFrequency());
            StepN(test_.part, 0, 1, fpd);
            StepN(test_.part, 0, -1, fpd);
            ASSERT_EQ(Register(), before) << "a step forth and back";
        }
    }

    std::mt19937_64 random_;
    TestPart test_;
    std::map<std::string, FieldModel> fields_;
    Names n_{"N"};   // What a new N goes to.
    std::uint64_t beyond_ = 0;
    double hertz_ = 0;
    bool fractional_ = false;
    bool carries_ = false;
    bool fixed_ = false;
};

TEST(PLLProperty, EveryRequestIsMetByWhatTheFieldsAllowAndReadsBackExactly) {
    for (std::uint64_t seed = 1; seed <= 4000; ++seed) {
        RandomLoop loop(seed);
        for (int request = 0; request < 12; ++request) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", request " + std::to_string(request));
            ASSERT_NO_THROW(loop.Request());
            if (testing::Test::HasFatalFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(RandomLoop::nearestChecked, 2000);
}

}   // namespace
