#include "pll/cPLL.h"

#include <gtest/gtest.h>

#include "core/Errors.h"
#include "core/Numbers.h"
#include "pll/TestLoop.h"

namespace {

std::string Frequencies(cPLL& pll) {
    return GeneralText(pll.XtalFrequency()) + ' ' + GeneralText(pll.PDFrequency()) + ' ' +
           GeneralText(pll.VCOFrequency());
}

TEST(PLL, WrittenFrequenciesGoToTheCountersThatMeetThem) {
    struct Case {
        int denominator;
        const char* writes;        // From 10 MHz and an R of 100.
        const char* counters;      // N/R/numerator/denominator
        const char* frequencies;   // MHz, kHz, MHz
    };
    const Case cases[] = {
        {4, "vco=1000.25", "10002/100/2/4", "10 100 1000.25"},
        {0, "vco=1000.25", "10002/100/0/0", "10 100 1000.2"},   // Ties go to even.
        {0, "vco=1000.35", "10004/100/0/0", "10 100 1000.4"},
        {100, "n=7.9999", "7/100/100/100", "10 100 0.8"},   // No carry.
        {4, "n=5000000000", "1000/100/0/4", "10 100 100"},
        {0, "n=-2147483649", "1000/100/0/0", "10 100 100"},
        {0, "n=2147483647", "131071/100/0/0", "10 100 13107.1"},
        {4, "N.min=56 vco=2", "56/100/4/4", "10 100 5.7"},   // Raised: the numerator goes as high as it can.
        {4, "n=20.75 DEN=0", "20/100/3/0", "10 100 2"},
        {4, "n=20.75 DEN=0 vco=3.07", "30/100/0/0", "10 100 3"},
        {0, "xtal=0", "0/100/0/0", "0.000001 0.00001 0"},
        {0, "pd=300", "0/33/0/0", "10 303.030303030303 0"},
        {0, "r=2.5", "0/2/0/0", "10 5000 0"},
        {0, "RDIV=0", "0/1/0/0", "10 10000 0"},   // Repaired by the read.
        {0, "RDIV=0 vco=500", "50/1/0/0", "10 10000 500"},
        {0, "n=1000 xtal=5", "1000/100/0/0", "5 50 50"},
        {4, "n=1000.25 fixed=1 xtal=5", "2000/100/2/4", "5 50 100.025"},
        {4, "n=1001.5 fixed=1 pd=200", "500/50/3/4", "10 200 100.15"},
    };
    for (const Case& c : cases) {
        TestLoop t(c.denominator);
        t.Do(c.writes);
        EXPECT_EQ(Frequencies(t.Loop()), c.frequencies) << c.writes;
        EXPECT_EQ(t.Counters(), c.counters) << c.writes;
    }
}

TEST(PLL, WithoutAReferenceReadsZeroAndTakesOneMegahertzAtTheFirstWrite) {
    for (const char* write : {"vco=50", "pd=10"}) {
        TestLoop t;
        t.part.PLLs().Clear();
        t.part.AddPLL("RF", "N", "RDIV");
        EXPECT_EQ(Frequencies(t.Loop()), "0 0 0");
        t.Do(write);
        EXPECT_EQ(t.Loop().XtalFrequency(), 1) << write;
    }
}

TEST(PLL, NumeratorAndDenominatorAreThirtyTwoBitsWide) {
    TestLoop t;
    t.Register("WIDE");
    t.part.AddCounter("WIDE_NUM", "WIDE", 0, 26, false);
    t.part.AddCounter("WIDE_DEN", "WIDE", 26, 27, false);
    t.part.SetupPLLFraction("RF", "WIDE_NUM", "WIDE_DEN");
    t.Do("WIDE_DEN=100000000 n=9000.12345678");
    EXPECT_EQ(t.Loop().NumValue(), 12345678);
    EXPECT_EQ(t.Loop().Resolution(), 0.001);
    EXPECT_EQ(GeneralText(t.Loop().VCOFrequency()), "900.012345678");
}

TEST(PLL, RefusesWhatHasNoMeaningAndChangesNothing) {
    for (const char* write : {"pd=0", "pd=1E-7", "pd=-1E-320", "r=3E9", "xtal=1E305"}) {
        TestLoop t(4);
        t.Do("vco=1000.25");
        EXPECT_THROW(t.Do(write), UserError) << write;
        EXPECT_EQ(t.Counters(), "10002/100/2/4") << write;
        EXPECT_EQ(t.Loop().XtalFrequency(), 10) << write;
    }
}

TEST(PLL, BoundToMissingFieldsFailsByNameAndWritesNothing) {
    struct Case {
        const char* n;
        const char* r;
        const char* numerator;
        const char* denominator;
        const char* told;
    };
    for (const Case& c : {Case{"NN", "RDIV", "", "", "'NN': did you mean 'N'?"}, Case{"N", "RDIF", "", "", "'RDIF'"},
                          Case{"N", "RDIV", "NUM", "", "no bit field"}, Case{"N", "RDIV", "X", "DEN", "'X'"}}) {
        TestLoop t(4);
        t.part.AddPLL("BAD", c.n, c.r);
        t.part.SetupPLLFraction("BAD", c.numerator, c.denominator);
        cPLL& bad = t.part.PLLs().At("BAD");
        bad.XtalFrequency(10);
        const std::string before = t.Counters();
        EXPECT_THROW(static_cast<void>(bad.VCOFrequency()), LookupError) << c.told;
        try {
            bad.VCOFrequency(700);
            ADD_FAILURE() << c.told;
        } catch (const LookupError& error) {
            EXPECT_NE(std::string(error.what()).find("PLL 'BAD'"), std::string::npos) << error.what();
            EXPECT_NE(std::string(error.what()).find(c.told), std::string::npos) << error.what();
        }
        EXPECT_EQ(t.Counters(), before) << c.told;
    }
}

}   // namespace
