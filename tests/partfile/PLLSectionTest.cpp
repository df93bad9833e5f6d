#include "partfile/PLLSection.h"

#include "partfile/PartFile.h"
#include "pll/TestLoop.h"
#include "support/PartText.h"
#include "support/RecordingDisplay.h"
#include "support/TempFolder.h"

namespace {

struct ReadDevice : TestLoop {
    RecordingDisplay display{part};
    Problems problems;

    explicit ReadDevice(const std::string& section) {
        part.PLLs().Clear();
        part.Lines(0);
        part.UseDisplay(display);
        const TempFolder folder;
        PartFile file(folder.File("device.ini", Lines("[PLLS]|" + section)), problems);
        ReadPLLs(part, file);
        CheckPLLs(part, file);
    }
};

TEST(PLLSection, BindsEachPLLToItsFieldsAndItsPage) {
    ReadDevice device(
        "COUNT=3|"
        "NAME00=TX|N00=N|R00=RDIV|FRACTNUM00=NUM|FRACTDEN00=DEN|FRACTCARRY00=true|OSCIN00=26|PD00=N|IPO00=RDIV|TRI00="
        "NUM|"
        "NP00=DEN|RP00=N|"
        "N01=N|R01=RDIV|FRACTDEN01=DEN|"   // Without a name, a reference and a numerator.
        "NAME02=IF|N02=N|R02=RDIV|NP02=NUM|");
    EXPECT_EQ(
        device.display.Take(),
        (std::vector<std::string>{"page 0 TX", "blocks 0 N,RDIV,NUM,DEN,N", "fraction 0 NUM,DEN", "page 1 PLL01",
                                  "blocks 1 ,,,,", "fraction 1 ,", "page 2 IF", "blocks 2 ,,,NUM,", "fraction 2 ,"}));
    EXPECT_EQ(device.part.PLLs().At("TX").XtalFrequency(), 26);
    EXPECT_EQ(device.part.PLLs().At("TX").DenominatorName(), "DEN");
    EXPECT_EQ(device.part.PLLs().At("PLL01").XtalFrequency(), 10);
    EXPECT_EQ(device.part.PLLs().At("PLL01").DenominatorName(), "");
    EXPECT_TRUE(device.part.PLLs().At("TX").FractCarry() && !device.part.PLLs().At("IF").FractCarry());
    EXPECT_GT(device.part.Lines(), 0);
    EXPECT_TRUE(device.problems.All().empty());
}

TEST(PLLSection, SetUpWithoutItsPLLFailsAndBindsNothing) {
    ReadDevice device("");
    EXPECT_THROW(device.part.SetupPLL("N", "", "", "", ""), LookupError);
    EXPECT_THROW(device.part.SetupFraction("NUM", "DEN"), LookupError);
    EXPECT_THROW(device.part.SetupPLLFraction("RF", "", ""), LookupError);
    EXPECT_TRUE(device.display.Take().empty());
    device.part.AddPLL("RF", "N", "RDIV");
    device.part.SetupFraction("NUM", "DEN");
    EXPECT_EQ(device.display.Take().back(), "fraction 0 NUM,DEN");
    EXPECT_EQ(device.part.PLLs().At("RF").NumeratorName(), "NUM");
}

}   // namespace
