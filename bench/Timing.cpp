#include "Timing.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

double Seconds(const std::function<void()>& work, int times) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    for (int i = 0; i < times; ++i) {
        work();
    }
    return std::chrono::duration<double>(Clock::now() - start).count();
}

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

std::string ReadableTime(double seconds) {
    const char* unit = seconds < 1e-6 ? "ns" : seconds < 1e-3 ? "us" : seconds < 1 ? "ms" : "s";
    const double scale = seconds < 1e-6 ? 1e9 : seconds < 1e-3 ? 1e6 : seconds < 1 ? 1e3 : 1;
    char text[32];
    std::snprintf(text, sizeof text, "%.3g %s", seconds * scale, unit);
    return text;
}
