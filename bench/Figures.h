#pragma once

#include <functional>
#include <string>
#include <vector>

/// One measured figure: what we need over what its yardstick needs, in the same run. Times of one machine drift;
/// their ratio, taken pair by pair, doesn't.
struct Figure {
    std::string name;
    std::string yardstick;
    double ratio = 0;
    double goal = 0;    ///< The ratio must not exceed it.
    std::string unit;   ///< What one round of ours took, for orientation.
};

/// Runs both in turn, ours and the yardstick, and gives the median of the ratios. Each is repeated until a round
/// takes long enough to be timed.
Figure Compare(std::string name, std::string yardstick, double goal, const std::function<void()>& ours,
               const std::function<void()>& bare);

/// A figure that isn't a time: so much of ours over so much of the yardstick.
Figure Relate(std::string name, std::string yardstick, double goal, double ours, double bare);

/// Keeps the compiler from dropping a value that nobody reads.
template <class T>
void Keep(T const& value) {
    asm volatile("" : : "r,m"(value) : "memory");
}

std::vector<Figure> CoreFigures();
std::vector<Figure> BurstFigures();
std::vector<Figure> WindowFigures();
