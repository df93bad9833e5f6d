#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "ports/PortCalls.h"

/// What an attempt to open a parallel port came to.
struct ParPortOpening {
    int descriptor = -1;   ///< Claimed and set to output; -1 if that failed.
    std::string shared;    ///< The other drivers that may claim the port too; empty if nobody can.
    std::string trouble;   ///< Cause and cure in one line; empty if all went well.
    std::string tried;     ///< A line for each step with its result.
};

/// Opens and claims a ppdev device, for the program alone if that can be had. Takes a moment at most where nothing is
/// wrong with the kernel's driver; a port that another driver holds is not waited for.
ParPortOpening OpenParPort(PortCalls& calls, const std::string& device);

/// The same on a thread of its own: the kernel makes every ioctl of every parallel port wait while some program waits
/// for a port, and such a wait can't be broken off.
class ParPortAttempt {
public:
    ParPortAttempt(PortCalls& calls, const std::string& device);
    ParPortAttempt(const ParPortAttempt&) = delete;
    ParPortAttempt& operator=(const ParPortAttempt&) = delete;
    /// What is opened after all, with nobody there to take it, is closed again.
    ~ParPortAttempt();

    /// The result, once: nothing if there is none within that time.
    std::optional<ParPortOpening> Take(std::chrono::milliseconds patience);

private:
    struct Shared;

    void Abandon();

    PortCalls& calls_;
    std::shared_ptr<Shared> shared_;
    std::thread thread_;
    bool taken_ = false;
};
