#include "pll/PLLSection.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/DeviceDisplay.h"
#include "core/Numbers.h"
#include "core/PartFile.h"
#include "pll/TestLoop.h"
#include "support/TempFolder.h"

namespace {

/// Notes pages and bindings as lines.
class BindingDisplay final : public DeviceDisplay {
public:
    std::vector<std::string> lines;
    void AddPLLPage(int index, const std::string& name) override { Note(index, "page " + name); }
    void BindPLLBlocks(int index, const PLLBlocks& b) override {
        Note(index, "blocks " + b.polarity + ',' + b.gain + ',' + b.state + ',' + b.nPrescaler + ',' + b.rPrescaler);
    }
    void BindFraction(int index, const std::string& numerator, const std::string& denominator) override {
        Note(index, "fraction " + numerator + ',' + denominator);
    }

private:
    void Note(int index, const std::string& what) { lines.push_back(std::to_string(index) + ' ' + what); }
};

struct ReadDevice : TestLoop {
    BindingDisplay display;
    Problems problems;

    explicit ReadDevice(const std::string& section) {
        part.PLLs().Clear();
        part.Lines(0);
        part.UseDisplay(display);
        const TempFolder folder;
        PartFile file(folder.File("device.ini", "[PLLS]\n" + section), problems);
        ReadPLLs(part, file);
        CheckPLLs(part, file);
    }

    /// The problems as "key:line", in their order.
    [[nodiscard]] std::string Places() const {
        std::string places;
        for (const Problem& problem : problems.All()) {
            places += (places.empty() ? "" : " ") + problem.key + ':' + std::to_string(problem.line);
        }
        return places;
    }
};

TEST(PLLSection, BindsEachPLLToItsFieldsAndItsPage) {
    ReadDevice device(
        "COUNT=3\n"
        "NAME00=TX\nN00=N\nR00=RDIV\nFRACTNUM00=NUM\nFRACTDEN00=DEN\nOSCIN00=26\nPD00=N\nIPO00=RDIV\nTRI00=NUM\n"
        "NP00=DEN\nRP00=N\n"
        "N01=N\nR01=RDIV\nFRACTDEN01=DEN\n"   // Without a name, a reference and a numerator.
        "NAME02=IF\nN02=N\nR02=RDIV\nNP02=NUM\n");
    EXPECT_EQ(
        device.display.lines,
        (std::vector<std::string>{"0 page TX", "0 blocks N,RDIV,NUM,DEN,N", "0 fraction NUM,DEN", "1 page PLL01",
                                  "1 blocks ,,,,", "1 fraction ,", "2 page IF", "2 blocks ,,,NUM,", "2 fraction ,"}));
    EXPECT_EQ(device.part.PLLs().At("TX").XtalFrequency(), 26);
    EXPECT_EQ(device.part.PLLs().At("TX").DenominatorName(), "DEN");
    EXPECT_EQ(device.part.PLLs().At("PLL01").XtalFrequency(), 10);
    EXPECT_EQ(device.part.PLLs().At("PLL01").DenominatorName(), "");
    EXPECT_GT(device.part.Lines(), 0);
    EXPECT_EQ(device.Places(), "");
}

TEST(PLLSection, ListsWhatCantWorkAndReadsOn) {
    struct Case {
        const char* section;
        int plls;
        const char* places;
    };
    for (const Case& c :
         {Case{"", 0, ""}, Case{"COUNT=0\n", 0, ""}, Case{"COUNT=-3\n", 0, ""}, Case{"COUNT=many\n", 0, "COUNT:2"},
          Case{"COUNT=2\nNAME00=A\nN00=N\nR00=RDIV\nNAME01=A\nN01=N\nR01=RDIV\n", 1, "NAME01:6"},
          Case{"COUNT=1\nN00=X\nR00=RDIV\nPD00=Y\n", 1, "N00:3 PD00:5"}, Case{"COUNT=1\nN00=N\n", 1, "R00:1"},
          Case{"COUNT=1\nN00=N\nR00=RDIV\nFRACTNUM00=NUM\n", 1, "FRACTNUM00:5"},
          Case{"COUNT=1\nN00=N\nR00=RDIV\nFRACTNUM00=NUM\nFRACTDEN00=Z\n", 1, "FRACTDEN00:6"},
          Case{"COUNT=1\nN00=N\nR00=RDIV\nOSCIN00=ten\n", 1, "OSCIN00:5"},
          Case{"COUNT=1\nN00=N\nR00=RDIV\nOSCIN00=1E308\n", 1, "OSCIN00:5"}}) {
        ReadDevice device(c.section);
        EXPECT_EQ(device.part.PLLs().Count(), c.plls) << c.section;
        EXPECT_EQ(device.Places(), c.places) << c.section;
        for (const cPLL& pll : device.part.PLLs()) {
            EXPECT_EQ(pll.XtalFrequency(), 10) << c.section;
        }
    }
}

TEST(PLLSection, SetUpWithoutItsPLLFailsAndBindsNothing) {
    ReadDevice device("");
    EXPECT_THROW(device.part.SetupPLL("N", "", "", "", ""), LookupError);
    EXPECT_THROW(device.part.SetupFraction("NUM", "DEN"), LookupError);
    EXPECT_THROW(device.part.SetupPLLFraction("RF", "", ""), LookupError);
    EXPECT_TRUE(device.display.lines.empty());
    device.part.AddPLL("RF", "N", "RDIV");
    device.part.SetupFraction("NUM", "DEN");
    EXPECT_EQ(device.display.lines.back(), "0 fraction NUM,DEN");
    EXPECT_EQ(device.part.PLLs().At("RF").NumeratorName(), "NUM");
}

}   // namespace
