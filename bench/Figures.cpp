#include "Figures.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "core/Numbers.h"

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(const std::function<void()>& work, int times) {
    const auto start = Clock::now();
    for (int i = 0; i < times; ++i) {
        work();
    }
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// How often the work must run for a round of some milliseconds.
int Repeats(const std::function<void()>& work) {
    constexpr double kRound = 0.004;
    constexpr int kMost = 1 << 22;
    int times = 1;
    while (times < kMost && Seconds(work, times) < kRound) {
        times *= 2;
    }
    return times;
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::string Readable(double seconds) {
    const char* unit = seconds < 1e-6 ? "ns" : seconds < 1e-3 ? "us" : seconds < 1 ? "ms" : "s";
    const double scale = seconds < 1e-6 ? 1e9 : seconds < 1e-3 ? 1e6 : seconds < 1 ? 1e3 : 1;
    char text[32];
    std::snprintf(text, sizeof text, "%.3g %s", seconds * scale, unit);
    return text;
}

}   // namespace

Figure Compare(std::string name, std::string yardstick, double goal, const std::function<void()>& ours,
               const std::function<void()>& bare) {
    constexpr int kRounds = 21;
    const int oursTimes = Repeats(ours);
    const int bareTimes = Repeats(bare);
    std::vector<double> ratios;
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        const double our = Seconds(ours, oursTimes) / oursTimes;
        const double yard = Seconds(bare, bareTimes) / bareTimes;
        ratios.push_back(our / yard);
        times.push_back(our);
    }
    return {std::move(name), std::move(yardstick), Median(ratios), goal, Readable(Median(times))};
}

Figure Relate(std::string name, std::string yardstick, double goal, double ours, double bare) {
    return {std::move(name), std::move(yardstick), ours / bare, goal, GeneralText(std::round(ours))};
}
