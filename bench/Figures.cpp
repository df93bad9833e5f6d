#include "Figures.h"

#include <cmath>
#include <exception>

#include "Timing.h"
#include "core/Numbers.h"

Figure Compare(std::string name, std::string yardstick, double goal, const std::function<void()>& ours,
               const std::function<void()>& bare) {
    constexpr int kRounds = 21;
    const int oursTimes = Repeats(ours);
    const int bareTimes = Repeats(bare);
    std::vector<Pair> pairs;
    for (int round = 0; round < kRounds; ++round) {
        const double our = Seconds(ours, oursTimes) / oursTimes;
        pairs.push_back({our, Seconds(bare, bareTimes) / bareTimes});
    }
    Figure figure{std::move(name), std::move(yardstick), goal};
    Fill(figure, pairs, ReadableTime);
    return figure;
}

Figure Relate(std::string name, std::string yardstick, double goal, double ours, double bare) {
    return {std::move(name), std::move(yardstick), goal, ours / bare, GeneralText(std::round(ours))};
}

void Fill(Figure& figure, const std::vector<Pair>& pairs, const std::function<std::string(double)>& readable) {
    std::vector<double> ratios;
    std::vector<double> ours;
    for (const Pair& pair : pairs) {
        ratios.push_back(pair.ours / pair.bare);
        ours.push_back(pair.ours);
    }
    figure.ratio = Median(ratios);
    figure.ours = readable(Median(ours));
}

void FillOrTell(std::vector<Figure>& figures, const std::function<void()>& fill) {
    try {
        fill();
    } catch (const std::exception& error) {
        for (Figure& figure : figures) {
            if (std::isnan(figure.ratio)) {
                figure.why = error.what();
            }
        }
    }
}
