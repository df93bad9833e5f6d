#include "support/TestPart.h"
#include "support/TextTable.h"

namespace {

/// The words of SBI frames: "<" starts and ">" stops one, each number between is a word of four bits.
std::vector<int> Frames(const std::string& text) {
    std::vector<int> words;
    std::istringstream in(text);
    for (std::string item; in >> item;) {
        if (item == "<" || item == ">") {
            words.insert(words.end(), {3, item == "<" ? 2 : 7});
            continue;
        }
        for (int weight = 8; weight > 0; weight /= 2) {
            const int data = (CellShort(item) & weight) != 0 ? 2 : 0;
            words.insert(words.end(), {data, data + 1, data});
        }
        words.insert(words.end(), {2, 3, 2});
    }
    return words;
}

std::string Marks(cPart& part) {
    std::string marks;
    for (cRegister& one : part.Registers()) {
        marks += one.Change() ? one.ID() : "";
    }
    return marks;
}

/// The names of what the last load of changes sent.
std::string SentNames(cPart& part) {
    std::string names;
    for (const std::string& name : part.SentChanges()) {
        names += name;
    }
    return names;
}

void Do(cPart& part, const std::string& operation) {
    if (operation == "changes") {
        part.LoadChanges();
    } else if (operation == "all") {
        part.LoadAll();
    } else {
        part.LoadRegisterNumber(CellShort(operation));
    }
}

TEST(LoadPolicy, PlainAndSBI) {
    // A, B and C hold 9, 6 and 11. Those marked before, the operation, what goes out plainly and on an SBI device,
    // those marked after.
    for (const TextRow& row : TextTable(R"(
        ''  changes ''                '' ''
        CA  changes '1001|1011|'      '< 9 1 9 3 11 >' ''
        A   changes '1001|'           '< 9 1 9 >' ''
        BC  changes '0110|1011|'      '< 9 2 6 3 11 >' ''
        B   all     '1001|0110|1011|' '< 9 1 9 2 6 3 11 >' B
        B   2       '0110|'           '< 6 >' B
        B   0       ''                '' B
        ''  -1      ''                '' ''
        ''  4       ''                '' '')")) {
        for (const bool sbi : {false, true}) {
            SCOPED_TRACE(row[1] + " with " + row[0] + (sbi ? ", SBI" : ""));
            TestPart device(4);
            device.part.SBIEnable(sbi);
            device.Register("A", 9);
            device.Register("B", 6);
            device.Register("C", 11);
            for (const char name : row[0]) {
                device.part.Registers().At(std::string(1, name)).Change(true);
            }
            Do(device.part, row[1]);
            const std::vector<int> words = device.port.TakeWords();
            if (sbi) {
                EXPECT_EQ(words, Frames(row[3]));
            } else {
                EXPECT_EQ(Shifted(words), row[2]);
            }
            EXPECT_EQ(Marks(device.part), row[4]);
            if (row[1] == "changes") {
                EXPECT_EQ(SentNames(device.part), row[0] == "CA" ? "AC" : row[0]) << "without the address word";
            }
        }
    }
}

TEST(LoadPolicy, Pairs) {
    // All are marked before. The order in the file, the operation, what goes out, those marked after.
    for (const TextRow& row : TextTable(R"(
        HLS changes 10010110|1011|          ''
        LHS changes 10010110|1011|          ''
        HLS all     10010110|10010110|1011| S
        HLS 1       10010110|               HS
        HLS 2       10010110|               S)")) {
        SCOPED_TRACE(row[1] + " of " + row[0]);
        TestPart device(4);
        device.part.HighByte(true);
        const std::map<char, double> values = {{'H', 9}, {'L', 6}, {'S', 11}};
        const std::map<char, const char*> partners = {{'H', "L"}, {'L', "H"}, {'S', ""}};
        for (const char name : row[0]) {
            device.Half(std::string(1, name), values.at(name), name != 'H', partners.at(name));
        }
        Do(device.part, row[1]);
        EXPECT_EQ(Shifted(device.port.TakeWords()), row[2]);
        EXPECT_EQ(Marks(device.part), row[3]);
        EXPECT_EQ(SentNames(device.part), row[1] == "changes" ? "HLS" : "");
    }
}

TEST(LoadPolicy, NewRegistersAndEqualWritesGoOut) {
    TestPart device(4);
    device.part.AddRegister("A", 0, 9, true, "");
    device.part.LoadChanges();
    device.part.LoadChanges();
    EXPECT_EQ(Shifted(device.port.TakeWords()), "1001|");
    device.part.Registers().At("A").Value(9);
    device.part.LoadChanges();
    EXPECT_EQ(Shifted(device.port.TakeWords()), "1001|");
}

}   // namespace
