#include <QApplication>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Figures.h"
#include "Growth.h"

namespace {

struct Group {
    const char* name;
    std::vector<Figure> (*measure)();
};

constexpr std::array kGroups{Group{"core", CoreFigures}, Group{"burst", BurstFigures}, Group{"window", WindowFigures},
                             Group{"automation", AutomationFigures}, Group{"start", StartFigures}};

constexpr const char* kUsage =
    "usage: tarnwick_bench [core] [burst] [window] [automation] [start]    figures of these groups, by default all\n"
    "       tarnwick_bench growth                                          how costs grow from 10 to 1,000\n"
    "Ends with 1 if a goal is missed or a figure couldn't be measured.\n";

const Group* FindGroup(const char* name) {
    for (const Group& group : kGroups) {
        if (std::strcmp(group.name, name) == 0) {
            return &group;
        }
    }
    return nullptr;
}

bool Print(const Figure& figure) {
    std::printf("%-64s %-46s ", figure.name.c_str(), figure.yardstick.c_str());
    if (!figure.why.empty()) {
        std::printf("not measured: %s\n", figure.why.c_str());
        return false;
    }
    const bool met = figure.ratio <= figure.goal;
    std::printf("%8.2f %8.2f %10s%s\n", figure.ratio, figure.goal, figure.ours.c_str(), met ? "" : "  MISSED");
    return met;
}

bool PrintFigures(const std::vector<const Group*>& groups) {
    std::printf("%-64s %-46s %8s %8s %10s\n", "figure", "yardstick", "ratio", "goal", "ours");
    bool met = true;
    for (const Group* group : groups) {
        for (const Figure& figure : group->measure()) {
            met = Print(figure) && met;
        }
        std::fflush(stdout);
    }
    return met;
}

}   // namespace

// Prints one table: each figure as a ratio to its yardstick in this run, with its goal.
int main(int argc, char* argv[]) {
    if (std::getenv("QT_QPA_PLATFORM") == nullptr && std::getenv("DISPLAY") == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication app(argc, argv);
    if (argc == 2 && std::strcmp(argv[1], "growth") == 0) {
        return PrintGrowth() ? 0 : 1;
    }
    if (argc == 4 && std::strcmp(argv[1], "hold") == 0) {
        HoldClients(QString::fromLocal8Bit(argv[2]), std::atoi(argv[3]));
        return 0;
    }
    std::vector<const Group*> groups;
    for (int i = 1; i < argc; ++i) {
        groups.push_back(FindGroup(argv[i]));
        if (groups.back() == nullptr) {
            std::fputs(kUsage, stderr);
            return 2;
        }
    }
    for (const Group& group : kGroups) {
        if (argc == 1) {
            groups.push_back(&group);
        }
    }
    return PrintFigures(groups) ? 0 : 1;
}
