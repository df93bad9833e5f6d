#include "ports/RawIoPort.h"

#include <cerrno>
#include <utility>

static std::string Hex(std::uint16_t value) {
    std::string text;
    for (int shift = 12; shift >= 0; shift -= 4) {
        text += "0123456789ABCDEF"[value >> shift & 0xF];
    }
    return text;
}

RawIoPort::~RawIoPort() {
    RawIoPort::CloseTVicPort();
}

bool RawIoPort::OpenTVicPort() {
    CloseTVicPort();
    open_ = true;
    writes_ = failedWrites_ = 0;
    tried_.clear();
    trouble_ = Outlook();
    return trouble_.empty();
}

void RawIoPort::WritePort(std::uint16_t port, std::uint8_t value) {
    Right right = rights_[port];
    if (right == Right::Unknown) {
        right = Ask(port);
    }
    if (right == Right::Granted) {
        calls_.Outb(value, port);
        ++writes_;
    } else {
        ++failedWrites_;
    }
}

RawIoPort::Right RawIoPort::Ask(std::uint16_t port) {
    if (!open_) {
        return Right::Refused;
    }
    const bool granted = calls_.Ioperm(port, true) == 0;
    const int error = errno;
    tried_ += "  ask for port " + Hex(port) + ": " + (granted ? "granted" : SystemReason(error)) + "\n";
    if (granted) {
        granted_.push_back(port);
    } else {
        trouble_ = Trouble(error);
    }
    return rights_[port] = granted ? Right::Granted : Right::Refused;
}

void RawIoPort::CloseTVicPort() {
    for (const std::uint16_t port : granted_) {
        calls_.Ioperm(port, false);
    }
    granted_.clear();
    rights_.fill(Right::Unknown);
    open_ = false;
}

// What the kernel will say is known before a port is asked for: the user should see it before his first load.
std::string RawIoPort::Outlook() const {
    const int error = Lockdown().empty() ? calls_.IopermOutlook() : EPERM;
    return error == 0 ? std::string() : Trouble(error);
}

std::string RawIoPort::Trouble(int error) const {
    if (error == ENOSYS) {
        return "this processor or this kernel has no I/O ports for programs: write DRIVER=parport in tarnwick.ini";
    }
    if (error != EPERM) {
        return SystemReason(error);
    }
    if (const std::string lockdown = Lockdown(); !lockdown.empty()) {
        return "the kernel is locked down (" + lockdown +
               "), as it is with Secure Boot: write DRIVER=parport in tarnwick.ini, or switch Secure Boot off";
    }
    return "the program lacks the right CAP_SYS_RAWIO: sudo setcap cap_sys_rawio+ep on its file, or write "
           "DRIVER=parport in tarnwick.ini";
}

/// The kernel's lockdown level; empty if it isn't locked down. Of the levels in the file the one in brackets is in
/// force.
std::string RawIoPort::Lockdown() const {
    const std::string levels = calls_.FirstLine("/sys/kernel/security/lockdown").value_or("");
    const std::size_t begin = levels.find('[');
    const std::size_t end = levels.find(']');
    if (begin == std::string::npos || end == std::string::npos || end < begin) {
        return {};
    }
    const std::string level = levels.substr(begin + 1, end - begin - 1);
    return level == "none" ? std::string() : level;
}

PortStatus RawIoPort::Status() const {
    std::string ports;
    for (const std::uint16_t port : granted_) {
        ports += (ports.empty() ? " to " : ", ") + Hex(port);
    }
    std::string story =
        "The driver \"rawio\" writes to the computer's I/O ports, at the addresses of the writes. The kernel is "
        "asked for each port at the first write to it.\n" +
        tried_;
    if (!trouble_.empty()) {
        story += "Result: " + trouble_ + "\n";
    }
    story += std::to_string(writes_) + " writes went out, " + std::to_string(failedWrites_) + " failed.";
    return {.ready = open_ && trouble_.empty(),
            .summary = "Direct port access" + ports + (trouble_.empty() ? "" : ": ") + trouble_,
            .story = std::move(story),
            .failedWrites = failedWrites_};
}
