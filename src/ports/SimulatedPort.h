#pragma once

#include <array>
#include <cstddef>

#include "ports/Port.h"

/// A port with nothing behind it: each of the 65536 port addresses holds the byte written last.
class SimulatedPort final : public Port {
public:
    /// Sets all levels to 0. Always true.
    bool OpenTVicPort() override;
    void WritePort(std::uint16_t port, std::uint8_t value) override { levels_[port] = value; }
    void CloseTVicPort() override {}
    [[nodiscard]] PortStatus Status() const override;

    /// The byte that stands on the port address, 0 if none was written since the opening.
    [[nodiscard]] std::uint8_t Level(std::uint16_t port) const noexcept { return levels_[port]; }

private:
    static constexpr std::size_t portCount = 0x10000;   ///< All that a 16-bit address reaches.

    std::array<std::uint8_t, portCount> levels_{};
};
