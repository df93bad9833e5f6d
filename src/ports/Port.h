#pragma once

#include <cstdint>
#include <string>

/// How a port stands, in words for the status bar and for the story behind it.
struct PortStatus {
    bool ready = false;               ///< Writes reach what the driver drives.
    std::string summary;              ///< One line: driver and state, cause and cure when it isn't ready.
    std::string story;                ///< Several lines: what was tried, in order, and with what result.
    std::uint64_t failedWrites = 0;   ///< Writes that the system refused since the port was opened.
};

/// Output to the registers of a PC parallel port. The port is opened once at the start of the program and
/// stays open to its end. Nothing is ever read back, and no call throws: a failing write is counted, shown
/// in Status(), and stops nothing.
class Port {
public:
    Port() = default;
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    virtual ~Port() = default;

    /// Opens the port; writes made before are lost. False if they will be lost from now on too.
    virtual bool OpenTVicPort() = 0;

    /// Puts the byte on the I/O port. It stands there when the call returns, and calls take effect in order.
    virtual void WritePort(std::uint16_t port, std::uint8_t value) = 0;

    /// Gives the port back. Its lines stay as they are: a board goes on with what it was told.
    virtual void CloseTVicPort() = 0;

    /// Called when the program has nothing left to do: what a driver holds back for later (a log, a trace)
    /// goes out now.
    virtual void Idle() {}

    [[nodiscard]] virtual PortStatus Status() const = 0;
};
