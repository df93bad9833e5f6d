#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ports/Port.h"
#include "ports/PortCalls.h"

/// Wraps any port and lets things go wrong as with a loose cable or a failing device: for rehearsals and tests. Which
/// write meets which fault follows from the seed and the number of writes before it, and from nothing else.
class FaultPort final : public Port {
public:
    /// Any text is a seed.
    FaultPort(std::unique_ptr<Port> inner, std::string seed, PortCalls& calls = SystemPortCalls());

    bool OpenTVicPort() override;   ///< Begins the faults of the seed anew.
    void WritePort(std::uint16_t port, std::uint8_t value) override;
    void CloseTVicPort() override { inner_->CloseTVicPort(); }
    void Idle() override { inner_->Idle(); }
    [[nodiscard]] PortStatus Status() const override;   ///< That of the wrapped port, and the faults so far.

private:
    /// A line that doesn't follow: a bit of the data or the control register that keeps its level.
    struct StuckLine {
        std::uint64_t end = 0;      ///< Number of the first write that it doesn't meet.
        std::uint16_t offset = 0;   ///< Of its register from the port's address.
        std::uint8_t mask = 0;
        bool one = false;   ///< The level in the register; the connector inverts some.
    };
    struct Counts {
        std::uint64_t lost = 0;
        std::uint64_t failing = 0;
        std::uint64_t slow = 0;
        std::uint64_t stuck = 0;     ///< Times that a line got stuck,
        std::uint64_t altered = 0;   ///< and writes that came out otherwise for it.
        std::uint64_t gone = 0;      ///< Times that the device went away,
        std::uint64_t missed = 0;    ///< and writes that failed for it.
    };

    bool MeetsFault();
    void GetStuck(std::uint64_t dice);
    [[nodiscard]] std::uint8_t Altered(std::uint16_t port, std::uint8_t value);
    [[nodiscard]] bool IsStuck() const { return writes_ < stuck_.end; }
    [[nodiscard]] bool IsGone() const { return writes_ < goneEnd_; }
    [[nodiscard]] std::string Summary() const;
    [[nodiscard]] std::string Story() const;

    std::unique_ptr<Port> inner_;
    std::string seed_;
    PortCalls& calls_;
    std::uint64_t start_;         ///< What the seed's text comes to.
    std::uint64_t writes_ = 0;    ///< Number of the write that comes next.
    std::uint64_t goneEnd_ = 0;   ///< Number of the first write for which the device is back.
    StuckLine stuck_;
    Counts counts_;
};
