#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "ports/Port.h"
#include "ports/PortCalls.h"

/// The I/O ports of a PC themselves. The kernel is asked for each port at the first write to it, and for no other; a
/// port that it refuses isn't asked for again.
class RawIoPort final : public Port {
public:
    explicit RawIoPort(PortCalls& calls = SystemPortCalls()) : calls_(calls) {}
    ~RawIoPort() override;

    /// False if the kernel is sure to refuse every port.
    bool OpenTVicPort() override;
    void WritePort(std::uint16_t port, std::uint8_t value) override;
    void CloseTVicPort() override;
    [[nodiscard]] PortStatus Status() const override;

private:
    enum class Right : unsigned char { Unknown, Granted, Refused };

    Right Ask(std::uint16_t port);
    [[nodiscard]] std::string Outlook() const;
    [[nodiscard]] std::string Trouble(int error) const;
    [[nodiscard]] std::string Lockdown() const;

    static constexpr std::size_t kPortCount = 0x10000;   ///< All that a 16-bit address reaches.

    PortCalls& calls_;
    bool open_ = false;
    std::array<Right, kPortCount> rights_{};
    std::vector<std::uint16_t> granted_;
    std::string trouble_;   ///< Cause and cure in one line; empty if all is well.
    std::string tried_;     ///< A line for each port that was asked for.
    std::uint64_t writes_ = 0;
    std::uint64_t failedWrites_ = 0;
};
