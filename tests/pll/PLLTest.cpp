#include "pll/cPLL.h"

#include "core/Errors.h"
#include "pll/TestLoop.h"
#include "support/Cases.h"
#include "support/TextTable.h"

namespace {

std::string Frequencies(cPLL& pll) {
    return GeneralText(pll.XtalFrequency()) + ' ' + GeneralText(pll.PDFrequency()) + ' ' +
           GeneralText(pll.VCOFrequency());
}

TEST(PLL, WrittenFrequenciesGoToTheCountersThatMeetThem) {
    // Ties go to even; a numerator doesn't carry into N; one that is raised to its minimum goes as high as it can.
    // From 10 MHz and an R of 100: the denominator and what is written; N/R/numerator/denominator; MHz, kHz, MHz.
    for (const TextRow& row : TextTable(R"(
        4 vco=1000.25 10002/100/2/4 '10 100 1000.25';  0 vco=1000.25 10002/100/0/0 '10 100 1000.2'
        0 vco=1000.35 10004/100/0/0 '10 100 1000.4';  100 n=7.9999 7/100/100/100 '10 100 0.8'
        4 n=5000000000 1000/100/0/4 '10 100 100';  0 n=-2147483649 1000/100/0/0 '10 100 100'
        0 n=2147483647 131071/100/0/0 '10 100 13107.1';  4 'N.min=56 vco=2' 56/100/4/4 '10 100 5.7'
        4 'n=20.75 DEN=0' 20/100/3/0 '10 100 2';  4 'n=20.75 DEN=0 vco=3.07' 30/100/0/0 '10 100 3'
        0 xtal=0 0/100/0/0 '0.000001 0.00001 0';  0 pd=300 0/33/0/0 '10 303.030303030303 0'
        0 r=2.5 0/2/0/0 '10 5000 0';  0 RDIV=0 0/1/0/0 '10 10000 0';  0 'RDIV=0 vco=500' 50/1/0/0 '10 10000 500'
        0 'n=1000 xtal=5' 1000/100/0/0 '5 50 50';  4 'n=1000.25 fixed=1 xtal=5' 2000/100/2/4 '5 50 100.025'
        4 'n=1001.5 fixed=1 pd=200' 500/50/3/4 '10 200 100.15';  0 'n=1000 fixed=1 pd=50000' 10/1/0/0 '10 10000 100'
        0 'n=20 RDIV=0 fixed=1 pd=200' 1000/50/0/0 '10 200 200')")) {
        TestLoop t(CellShort(row[0]));
        t.Do(row[1]);
        EXPECT_EQ(Frequencies(t.Loop()), row[3]) << row[1];
        EXPECT_EQ(t.Counters(), row[2]) << row[1];
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
    const Cases<const char*, const char*, const char*, const char*, const char*> cases = {
        {"NN", "RDIV", "", "", "'NN': did you mean 'N'?"},
        {"N", "RDIF", "", "", "'RDIF'"},
        {"N", "RDIV", "NUM", "", "no bit field"},
        {"N", "RDIV", "X", "DEN", "'X'"}};
    for (const auto& [n, r, numerator, denominator, told] : cases) {
        TestLoop t(4);
        t.part.AddPLL("BAD", n, r);
        t.part.SetupPLLFraction("BAD", numerator, denominator);
        cPLL& bad = t.part.PLLs().At("BAD");
        bad.XtalFrequency(10);
        const std::string before = t.Counters();
        EXPECT_THROW(static_cast<void>(bad.VCOFrequency()), LookupError) << told;
        try {
            bad.VCOFrequency(700);
            ADD_FAILURE() << told;
        } catch (const LookupError& error) {
            EXPECT_NE(std::string(error.what()).find("PLL 'BAD'"), std::string::npos) << error.what();
            EXPECT_NE(std::string(error.what()).find(told), std::string::npos) << error.what();
        }
        EXPECT_EQ(t.Counters(), before) << told;
    }
}

}   // namespace
