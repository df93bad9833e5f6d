#include "ports/ParPort.h"

#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <utility>

using namespace std::chrono_literals;

// How long the start of the program waits for the port, and how often it is looked for later.
static constexpr auto kMoment = 300ms;
static constexpr auto kGlance = 20ms;
static constexpr auto kAttemptPeriod = 1s;

static constexpr std::uint8_t kControlLines = 0x0F;

/// The kernel has no port behind the device any more, or doesn't know our claim.
static bool MeansGone(int error) {
    return error == ENODEV || error == ENXIO || error == EIO || error == EINVAL || error == EBADF;
}

ParPort::ParPort(std::string device, PortCalls& calls)
    : device_(std::move(device)), calls_(calls), direct_(calls.DirectIoctl()) {}

ParPort::~ParPort() {
    ParPort::CloseTVicPort();
}

bool ParPort::OpenTVicPort() {
    CloseTVicPort();
    open_ = true;
    port_ = {};
    goneSince_ = joinedAt_ = history_ = lastFault_ = {};
    writes_ = failedWrites_ = otherWrites_ = seenWrites_ = 0;
    Attempt(kMoment);
    return Ready();
}

void ParPort::Attempt(std::chrono::milliseconds patience) {
    attemptStart_ = calls_.Now();
    attemptTime_ = calls_.TimeOfDay();
    attempt_ = std::make_unique<ParPortAttempt>(calls_, device_);
    TakeOver(patience);
}

void ParPort::TakeOver(std::chrono::milliseconds patience) {
    auto result = attempt_->Take(patience);
    if (!result) {
        return;
    }
    attempt_.reset();
    triedAt_ = attemptTime_;
    port_ = *std::move(result);
    seenWrites_ = joinedWrites_ = writes_;
    if (Ready() && (failedWrites_ > 0 || !goneSince_.empty())) {
        joinedAt_ = calls_.TimeOfDay();
        history_ += joinedAt_ + " the port is there\n";
        goneSince_.clear();
    }
}

void ParPort::WritePort(std::uint16_t port, std::uint8_t value) {
    const unsigned offset = port % 4;
    if (!Ready() || offset % 2 != 0) [[unlikely]] {
        ++(offset % 2 != 0 ? otherWrites_ : failedWrites_);
        return;
    }
    const unsigned long request = offset == 0 ? PPWDATA : PPWCONTROL;
    // Bit 5 would turn the data lines into inputs.
    std::uint8_t byte = offset == 0 ? value : value & kControlLines;
    if (Send(request, byte) == 0) [[likely]] {
        ++writes_;
    } else {
        Failed(request, byte);
    }
}

inline int ParPort::Send(unsigned long request, std::uint8_t& byte) {
    return direct_ != nullptr ? direct_(port_.descriptor, request, &byte)
                              : calls_.Ioctl(port_.descriptor, request, &byte);
}

void ParPort::Failed(unsigned long request, std::uint8_t byte) {
    while (errno == EINTR) {
        if (Send(request, byte) == 0) {
            ++writes_;
            return;
        }
    }
    const int error = errno;
    ++failedWrites_;
    if (MeansGone(error)) {
        Lose(SystemReason(error));
    } else {
        lastFault_ = "a write failed at " + calls_.TimeOfDay() + ": " + SystemReason(error);
    }
}

void ParPort::Lose(const std::string& reason) {
    goneSince_ = calls_.TimeOfDay();
    history_ += goneSince_ + " the port is gone: " + reason + "\n";
    if (writes_ > seenWrites_) {
        history_ += "  it may have been gone for the last " + std::to_string(writes_ - seenWrites_) + " writes\n";
    }
    attemptStart_ = calls_.Now();
    calls_.Close(std::exchange(port_.descriptor, -1));
}

void ParPort::Idle() {
    if (Ready()) {
        LookForDevice();
    } else if (attempt_) {
        TakeOver(0ms);
    } else if (open_ && calls_.Now() - attemptStart_ >= kAttemptPeriod) {
        Attempt(kGlance);
    }
}

// To a port that was taken out the kernel's driver goes on writing without a complaint; only its device file goes.
void ParPort::LookForDevice() {
    if (!calls_.LeadsTo(device_.c_str(), port_.descriptor)) {
        Lose("its device file was removed");
    }
    seenWrites_ = writes_;
}

void ParPort::CloseTVicPort() {
    attempt_.reset();
    if (Ready()) {
        history_ += calls_.TimeOfDay() + " closed, the lines left as they are\n";
        calls_.Ioctl(port_.descriptor, PPRELEASE, nullptr);
        calls_.Close(std::exchange(port_.descriptor, -1));
    }
    open_ = false;
}

PortStatus ParPort::Status() const {
    return {.ready = Ready(),
            .summary = "Parallel port " + device_ + State(),
            .story = Story(),
            .failedWrites = failedWrites_};
}

std::string ParPort::State() const {
    if (Ready()) {
        return ReadyState();
    }
    if (!open_) {
        return ": closed";
    }
    if (!goneSince_.empty()) {
        return ": gone since " + goneSince_ + ", " + (port_.trouble.empty() ? "plug it in again" : port_.trouble);
    }
    return attempt_ && port_.trouble.empty() ? WaitingState() : ": " + port_.trouble;
}

std::string ParPort::WaitingState() const {
    const auto waited = std::chrono::duration_cast<std::chrono::seconds>(calls_.Now() - attemptStart_);
    return waited < 1s ? ": being opened"
                       : ": the kernel doesn't answer since " + attemptTime_ +
                             ": another program waits for a port, find it with sudo fuser -v /dev/parport* and end it";
}

std::string ParPort::ReadyState() const {
    std::string state = port_.shared.empty() ? "" : ", shared with " + port_.shared;
    if (!joinedAt_.empty() && writes_ == joinedWrites_) {
        state += ", there since " + joinedAt_ + ": load the device again";
    }
    return lastFault_.empty() ? state : state + "; " + lastFault_;
}

std::string ParPort::Story() const {
    std::string story = "The driver \"parport\" moves the lines through the kernel's device " + device_ +
                        ". A write's address chooses the register, not the port.\n";
    if (!port_.tried.empty()) {
        story += "What was tried at " + triedAt_ + ":\n" + port_.tried;
    }
    if (attempt_) {
        story += "An attempt that began at " + attemptTime_ + " hasn't ended.\n";
    }
    if (!port_.trouble.empty()) {
        story += "Result: " + port_.trouble + "\n";
    }
    if (!port_.shared.empty()) {
        story += "Not held exclusively: " + port_.shared +
                 " may use the port too. A driver like lp goes with "
                 "sudo modprobe -r lp.\n";
    }
    story += history_;
    return story + std::to_string(writes_) + " writes went out, " + std::to_string(failedWrites_) + " failed, " +
           std::to_string(otherWrites_) + " were for registers without lines and left out." +
           (lastFault_.empty() ? "" : "\n" + lastFault_);
}
