#pragma once

#include "ports/PortRecord.h"

/// A VCD waveform of the connector's twelve output lines, D0 to D7 and C1 to C4, at one microsecond a tick.
/// High is high at the connector: the inversion of C1, C2 and C4 by the port's hardware is undone. A line is
/// unknown ("x") until its register is written.
///
/// Parallel ports stand at multiples of four: a write to such an address is one to the data register, two
/// above it to the control register. Writes elsewhere show nothing.
///
/// Each write takes at least one microsecond, so that the picture shows every word of a load however fast
/// the writes were; after a fast burst of writes trace time runs ahead of the clock until the clock overtakes.
class PortTrace final : public PortRecord {
public:
    void Start(std::string& text) override;
    void Write(std::uint64_t microseconds, std::uint16_t port, std::uint8_t value, std::string& text) override;
    void Complete(std::string& text) override;   ///< A time stamp after the last change; none if one stands there.

private:
    void Change(unsigned lines, unsigned levels, std::string& text);

    std::uint64_t time_ = 0;   ///< Of the last write or stamp.
    unsigned levels_ = 0;      ///< Port word: bits 0 to 7 are D0 to D7, bits 8 to 11 are C1 to C4.
    unsigned known_ = 0;       ///< Port word: the lines whose level is known.
    bool open_ = false;        ///< The last change has no time stamp after it yet.
};
