#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "Figures.h"

// Prints one table: each figure as a ratio to its yardstick in this run, with its goal. Ends with 1 if one is missed.
int main(int argc, char* argv[]) {
    if (std::getenv("QT_QPA_PLATFORM") == nullptr && std::getenv("DISPLAY") == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication app(argc, argv);
    std::vector<Figure> figures;
    for (const auto& part : {CoreFigures, BurstFigures, WindowFigures}) {
        const auto more = part();
        figures.insert(figures.end(), more.begin(), more.end());
    }
    std::printf("%-58s %-46s %8s %8s %12s\n", "figure", "yardstick", "ratio", "goal", "ours");
    bool met = true;
    for (const Figure& figure : figures) {
        const bool good = figure.ratio <= figure.goal;
        met = met && good;
        std::printf("%-58s %-46s %8.2f %8.2f %12s%s\n", figure.name.c_str(), figure.yardstick.c_str(), figure.ratio,
                    figure.goal, figure.unit.c_str(), good ? "" : "  MISSED");
    }
    return met ? 0 : 1;
}
