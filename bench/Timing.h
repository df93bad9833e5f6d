#pragma once

#include <functional>
#include <string>
#include <vector>

/// How long the work takes when it is done so many times, in seconds.
double Seconds(const std::function<void()>& work, int times = 1);

/// How often the work must be done for a round of some milliseconds.
int Repeats(const std::function<void()>& work);

/// The middle one; of an even number the upper of the two.
double Median(std::vector<double> values);

/// With three digits and a fitting unit.
std::string ReadableTime(double seconds);
