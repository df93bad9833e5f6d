#pragma once

#include <QString>
#include <array>
#include <functional>
#include <string>
#include <vector>

/// The numbers of registers, fields, commands or clients that an operation is measured at.
inline constexpr std::array kSizes{10, 100, 1000};

/// What an operation should cost: the same at any size, or in proportion to it.
enum class Expected { Constant, Proportional };

/// How the cost of an operation grows.
struct Growth {
    std::string operation;
    Expected expected;
    std::vector<double> seconds = {};   ///< At each size.
    std::string why = {};               ///< Why there are no times.

    /// The power of the size that the time goes with: the slope of the logarithms, from the size of that index on.
    /// From the second on, what costs the same at any size hides little of it.
    [[nodiscard]] double Exponent(std::size_t from) const;

    /// Whether it grows faster than it should, beyond what noise does.
    [[nodiscard]] bool TooFast() const;
};

/// Measures operations at all sizes: `measure` gives the time of each at one size. What it throws becomes the reason
/// why there are none.
std::vector<Growth> Grow(std::vector<Growth> operations, const std::function<std::vector<double>(int size)>& measure);

/// The median time of the work. With `prepare`, which isn't timed, before each time.
double MedianSeconds(const std::function<void()>& work);
double MedianSeconds(const std::function<void()>& prepare, const std::function<void()>& work);

std::vector<Growth> RegisterGrowth();
std::vector<Growth> FieldGrowth();
std::vector<Growth> CommandGrowth();
std::vector<Growth> ClientGrowth();

/// What a process for ClientGrowth does: attaches clients to the program, says so, and stays until it is ended.
void HoldClients(const QString& bus, int clients);

/// Measures and prints all of them. False if one grows too fast or couldn't be measured.
bool PrintGrowth();
