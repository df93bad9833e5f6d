#include "Growth.h"

#include <cmath>
#include <cstdio>
#include <exception>

#include "Timing.h"

namespace {

constexpr double kNoise = 0.25;

/// Takes times until there are enough, or, of something slow, until that took long.
std::vector<double> Sample(const std::function<double()>& time) {
    constexpr std::size_t kMost = 21;
    constexpr std::size_t kFewest = 3;
    constexpr double kLong = 2;   // seconds
    std::vector<double> times;
    double spent = 0;
    while (times.size() < kMost && (times.size() < kFewest || spent < kLong)) {
        spent += Seconds([&] { times.push_back(time()); });
    }
    return times;
}

bool Print(const char* subject, const Growth& row) {
    std::printf("%-10s %-52s ", subject, row.operation.c_str());
    if (!row.why.empty()) {
        std::printf("not measured: %s\n", row.why.c_str());
        return false;
    }
    for (const double seconds : row.seconds) {
        std::printf("%9s ", ReadableTime(seconds).c_str());
    }
    std::printf("%9.2f %13.2f %9d%s\n", row.Exponent(0), row.Exponent(1), row.expected == Expected::Constant ? 0 : 1,
                row.TooFast() ? "  TOO FAST" : "");
    return !row.TooFast();
}

}   // namespace

double Growth::Exponent(std::size_t from) const {
    double meanSize = 0;
    double meanTime = 0;
    const auto count = static_cast<double>(seconds.size() - from);
    for (std::size_t i = from; i < seconds.size(); ++i) {
        meanSize += std::log(kSizes[i]) / count;
        meanTime += std::log(seconds[i]) / count;
    }
    double together = 0;
    double alone = 0;
    for (std::size_t i = from; i < seconds.size(); ++i) {
        const double size = std::log(kSizes[i]) - meanSize;
        together += size * (std::log(seconds[i]) - meanTime);
        alone += size * size;
    }
    return together / alone;
}

bool Growth::TooFast() const {
    return Exponent(1) > (expected == Expected::Constant ? 0 : 1) + kNoise;
}

std::vector<Growth> Grow(std::vector<Growth> operations, const std::function<std::vector<double>(int size)>& measure) {
    try {
        for (const int size : kSizes) {
            const auto times = measure(size);
            for (std::size_t i = 0; i < operations.size(); ++i) {
                operations[i].seconds.push_back(times.at(i));
            }
        }
    } catch (const std::exception& error) {
        for (Growth& each : operations) {
            each.why = error.what();
        }
    }
    return operations;
}

double MedianSeconds(const std::function<void()>& work) {
    const int times = Repeats(work);
    return Median(Sample([&] { return Seconds(work, times) / times; }));
}

double MedianSeconds(const std::function<void()>& prepare, const std::function<void()>& work) {
    return Median(Sample([&] {
        prepare();
        return Seconds(work);
    }));
}

bool PrintGrowth() {
    struct Subject {
        const char* name;
        std::vector<Growth> (*measure)();
    };
    constexpr std::array kSubjects{Subject{"registers", RegisterGrowth}, Subject{"fields", FieldGrowth},
                                   Subject{"commands", CommandGrowth}, Subject{"clients", ClientGrowth}};
    std::printf("%-10s %-52s ", "number of", "operation");
    for (const int size : kSizes) {
        std::printf("%9d ", size);
    }
    std::printf("%9s %13s %9s\n", "exponent", "of the last", "expected");
    bool good = true;
    for (const Subject& subject : kSubjects) {
        for (const Growth& row : subject.measure()) {
            good = Print(subject.name, row) && good;
        }
        std::fflush(stdout);
    }
    return good;
}
