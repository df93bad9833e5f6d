#pragma once

#include <functional>
#include <limits>
#include <string>
#include <vector>

/// One measured figure: what we need over what its yardstick needs, in the same run. Times of one machine drift;
/// their ratio, taken pair by pair, doesn't.
struct Figure {
    std::string name;
    std::string yardstick;
    double goal = 0;   ///< The ratio must not exceed it.
    double ratio = std::numeric_limits<double>::quiet_NaN();
    std::string ours = {};   ///< What one round of ours took, for orientation.
    std::string why = {};    ///< Why there is no ratio.
};

/// Runs both in turn, ours and the yardstick, and gives the median of the ratios. Each is repeated until a round
/// takes long enough to be timed.
Figure Compare(std::string name, std::string yardstick, double goal, const std::function<void()>& ours,
               const std::function<void()>& bare);

/// A figure that isn't a time: so much of ours over so much of the yardstick.
Figure Relate(std::string name, std::string yardstick, double goal, double ours, double bare);

/// One round of ours and one of the yardstick, in seconds or another unit.
struct Pair {
    double ours;
    double bare;
};

/// Gives a figure the median of the ratios, and `ours` the median of ours with its unit.
void Fill(Figure& figure, const std::vector<Pair>& pairs, const std::function<std::string(double)>& readable);

/// Does what fills the figures. What it throws becomes the reason of those that it left empty.
void FillOrTell(std::vector<Figure>& figures, const std::function<void()>& fill);

/// Keeps the compiler from dropping a value that nobody reads.
template <class T>
void Keep(T const& value) {
    asm volatile("" : : "r,m"(value) : "memory");
}

std::vector<Figure> CoreFigures();
std::vector<Figure> BurstFigures();
std::vector<Figure> WindowFigures();
std::vector<Figure> AutomationFigures();
std::vector<Figure> StartFigures();
