#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ports/ParPortOpening.h"
#include "ports/Port.h"
#include "ports/PortCalls.h"

/// A parallel port by the kernel's ppdev device, held from the opening to the closing.
///
/// The device is the port: of the address of a write only the two low bits count, 0 is the data register and 2 the
/// control register, of which bits 0 to 3 go out. Writes to other registers are left out and counted.
///
/// While the port isn't there every write fails at once, and Idle() looks for it once a second. It joins in at Idle()
/// only, so that no load begins in its middle.
class ParPort final : public Port {
public:
    explicit ParPort(std::string device, PortCalls& calls = SystemPortCalls());
    ~ParPort() override;

    /// Gives the kernel a moment; false if the port isn't there by then.
    bool OpenTVicPort() override;
    void WritePort(std::uint16_t port, std::uint8_t value) override;
    void CloseTVicPort() override;
    void Idle() override;
    [[nodiscard]] PortStatus Status() const override;

private:
    void Attempt(std::chrono::milliseconds patience);
    void TakeOver(std::chrono::milliseconds patience);
    int Send(unsigned long request, std::uint8_t& byte);
    void Failed(unsigned long request, std::uint8_t byte);
    void Lose(const std::string& reason);
    void LookForDevice();
    [[nodiscard]] bool Ready() const { return port_.descriptor >= 0; }
    [[nodiscard]] std::string State() const;
    [[nodiscard]] std::string WaitingState() const;
    [[nodiscard]] std::string ReadyState() const;
    [[nodiscard]] std::string Story() const;

    std::string device_;
    PortCalls& calls_;
    PortCalls::IoctlFunction direct_;   ///< For the writes; null: they go by calls_.
    bool open_ = false;
    ParPortOpening port_;                       ///< The last attempt that ended.
    std::unique_ptr<ParPortAttempt> attempt_;   ///< The one that runs, if any.
    PortCalls::Time attemptStart_;
    std::string attemptTime_;          ///< By the user's clock,
    std::string triedAt_;              ///< and that of the last attempt that ended.
    std::string goneSince_;            ///< Empty as long as the device was there.
    std::string joinedAt_;             ///< When the port joined in after writes had failed.
    std::string history_;              ///< What happened since the opening, a line each.
    std::string lastFault_;            ///< Of a write that failed on a port that is still there.
    std::uint64_t writes_ = 0;         ///< That the kernel took.
    std::uint64_t failedWrites_ = 0;   ///< That it refused, or that had no port to go to.
    std::uint64_t otherWrites_ = 0;    ///< To registers that have no lines.
    std::uint64_t seenWrites_ = 0;     ///< Those that went out before the device was last seen to be there.
    std::uint64_t joinedWrites_ = 0;   ///< writes_ when the port joined in.
};
