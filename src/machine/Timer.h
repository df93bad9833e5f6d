#pragma once

#include <functional>

/// A repeating timer on the window's thread.
class Timer {
public:
    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    virtual ~Timer() = default;

    virtual void OnTick(std::function<void()> tick) = 0;
    virtual void Interval(int milliseconds) = 0;   ///< Above 0; a running timer starts a new period.
    [[nodiscard]] virtual int Interval() const = 0;
    virtual void Enabled(bool on) = 0;
    [[nodiscard]] virtual bool Enabled() const = 0;
};
