#include "core/LineUse.h"

#include "support/TestPart.h"
#include "support/TextTable.h"

namespace {

/// The lines that are used, such as "c0:Clock !3:Data+LE": a letter for the role, "!" for a conflict.
std::string Uses(const cPart& part) {
    static const std::map<LineRole, char> marks = {{LineRole::Clock, 'c'},
                                                   {LineRole::Data, 'd'},
                                                   {LineRole::LE, 'l'},
                                                   {LineRole::Pin, 'p'},
                                                   {LineRole::Conflict, '!'}};
    std::string text;
    for (int line = 0; const LineUse& use : LineUses(part)) {
        std::string names;
        for (const std::string& name : use.names) {
            names += (names.empty() ? "" : "+") + name;
        }
        if (use.role != LineRole::None) {
            text += (text.empty() ? "" : " ") + std::string(1, marks.at(use.role)) + std::to_string(line) + ':' + names;
        }
        EXPECT_EQ(use.role == LineRole::None, names.empty()) << "line " << line;
        ++line;
    }
    return text;
}

}   // namespace

TEST(LineUse, TellsTheJobsOfALineAndMarksTwoOrMore) {
    // Clock, Data and LE, the lines of the pins "P0", "P1"...; what the lines do. A word of two lines uses neither.
    for (const TextRow& row : TextTable(R"(1 2 4 '' 'c0:Clock d1:Data l2:LE';  256 2 4 '' 'd1:Data l2:LE c8:Clock'
        1 2 4 '11' 'c0:Clock d1:Data l2:LE p11:P0';  1 2 4 '12 14' 'c0:Clock d1:Data l2:LE'
        8 8 4 '' 'l2:LE !3:Clock+Data';  1 2 4 '9 9' 'c0:Clock d1:Data l2:LE !9:P0+P1'
        1 2 4 '5 2' 'c0:Clock d1:Data !2:LE+P1 p5:P0';  16 16 16 '4' '!4:Clock+Data+LE+P0'
        16 16 16 '4 4' '!4:Clock+Data+LE+P0+P1';  1 1 1 '0 0 0 0' '!0:Clock+Data+LE+P0+P1+P2+P3'
        3 4 8 '' 'd2:Data l3:LE';  4096 0 1 '' 'l0:LE')")) {
        TestPart device(8);
        device.part.ClockPosition(CellShort(row[0]));
        device.part.DataPosition(CellShort(row[1]));
        device.part.LEPosition(CellShort(row[2]));
        std::istringstream pins(row[3]);
        for (std::int16_t line = 0; pins >> line;) {
            device.part.AddProgramPin("P" + std::to_string(device.part.PrgmPins().Count()), line);
        }
        EXPECT_EQ(Uses(device.part), row[4]) << row[0] << ' ' << row[1] << ' ' << row[2] << ", pins on " << row[3];
    }
}
