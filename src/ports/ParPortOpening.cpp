#include "ports/ParPortOpening.h"

#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <utility>
#include <vector>

#include "ports/ParPortTrouble.h"

namespace {

// While a program sleeps in PPCLAIM the kernel stops the ioctls of all others, those of the holder too.
constexpr std::chrono::milliseconds kClaimPatience{100};

class Opener {
public:
    Opener(PortCalls& calls, const std::string& device) : calls_(calls), device_(device) {}

    ParPortOpening Open() {
        if (!(OpenDevice() && Claim() && SetToOutput())) {
            CloseDevice();
        }
        return std::move(result_);
    }

private:
    bool OpenDevice();
    bool FindNumber();
    bool Claim();
    bool ClaimAlone();
    bool ClaimTogether();
    bool ClaimFailed();
    bool SetToOutput();
    void CloseDevice();
    [[nodiscard]] std::vector<std::string> Drivers() const;
    [[nodiscard]] std::string Holder() const;
    bool Did(const std::string& what, int result);
    bool Fails(const std::string& trouble);

    PortCalls& calls_;
    const std::string& device_;
    unsigned number_ = 0;
    int error_ = 0;   ///< Of the last step; 0 if it was done.
    ParPortOpening result_;
};

bool Opener::Did(const std::string& what, int result) {
    error_ = result < 0 ? errno : 0;
    result_.tried += "  " + what + ": " + (error_ == 0 ? "done" : SystemReason(error_)) + "\n";
    return error_ == 0;
}

bool Opener::Fails(const std::string& trouble) {
    result_.trouble = trouble;
    return false;
}

bool Opener::OpenDevice() {
    const int descriptor = calls_.Open(device_.c_str());
    if (Did("open " + device_, descriptor)) {
        result_.descriptor = descriptor;
        return FindNumber();
    }
    switch (error_) {
        case ENOENT:
        case ENODEV:
        case ENXIO:
            return Fails(NoParPort(calls_, device_));
        case EACCES:
        case EPERM:
            return Fails(NoParPortRights(calls_, device_));
        default:
            return Fails("it can't be opened: " + SystemReason(error_));
    }
}

bool Opener::FindNumber() {
    // Nothing but ppdev may be sent these ioctls: to another driver their numbers could mean anything.
    const auto number = calls_.ParPortNumber(result_.descriptor);
    if (!number) {
        return Fails("that is no device of the kernel's module ppdev: correct DEVICE in tarnwick.ini");
    }
    number_ = *number;
    return true;
}

bool Opener::Claim() {
    if (const std::string holder = Holder(); !holder.empty()) {
        result_.tried += "  claim it: not tried, " + holder + " holds it\n";
        return Fails(ParPortHeld(calls_, device_, holder));
    }
    return ClaimAlone() || ClaimTogether() || ClaimFailed();
}

// Once a device is marked for exclusive use that can't be taken back: without it, it must be opened anew.
bool Opener::ClaimAlone() {
    if (!Drivers().empty() || !Did("ask for it alone", calls_.Ioctl(result_.descriptor, PPEXCL, nullptr))) {
        return false;
    }
    if (Did("claim it alone", calls_.IoctlWithin(result_.descriptor, PPCLAIM, kClaimPatience))) {
        return true;
    }
    CloseDevice();
    return false;
}

bool Opener::ClaimTogether() {
    if (result_.descriptor < 0 && !OpenDevice()) {
        return false;
    }
    if (!Did("claim it", calls_.IoctlWithin(result_.descriptor, PPCLAIM, kClaimPatience))) {
        return false;
    }
    for (const std::string& name : Drivers()) {
        if (!name.starts_with("ppdev")) {
            result_.shared += (result_.shared.empty() ? "" : ", ") + name;
        }
    }
    if (result_.shared.empty()) {
        result_.shared = "others";
    }
    return true;
}

bool Opener::ClaimFailed() {
    if (!result_.trouble.empty()) {
        return false;
    }
    const std::vector<std::string> drivers = Drivers();
    if (const std::string holder = Holder(); !holder.empty()) {
        return Fails(ParPortHeld(calls_, device_, holder));
    }
    if (error_ == ENXIO && !drivers.empty()) {
        return Fails(ParPortHeld(calls_, device_, drivers.front()));
    }
    if (error_ == ENXIO || error_ == ENODEV) {
        return Fails(NoParPort(calls_, device_));
    }
    if (error_ == EINTR) {
        return Fails(ParPortHeld(calls_, device_, "ppdev"));
    }
    return Fails("it can't be claimed: " + SystemReason(error_));
}

bool Opener::SetToOutput() {
    int input = 0;
    return Did("set it to output", calls_.Ioctl(result_.descriptor, PPDATADIR, &input)) ||
           Fails("it can't be set to output: " + SystemReason(error_));
}

void Opener::CloseDevice() {
    if (result_.descriptor >= 0) {
        calls_.Close(std::exchange(result_.descriptor, -1));
    }
}

/// The drivers that are registered for the port, whether they hold it or not.
std::vector<std::string> Opener::Drivers() const {
    std::vector<std::string> names = calls_.Names(ParPortDrivers(number_));
    std::erase(names, "active");
    return names;
}

std::string Opener::Holder() const {
    const std::string active = calls_.FirstLine(ParPortDrivers(number_) + "/active").value_or("none");
    return active == "none" ? std::string() : active;
}

}   // namespace

ParPortOpening OpenParPort(PortCalls& calls, const std::string& device) {
    return Opener(calls, device).Open();
}

struct ParPortAttempt::Shared {
    std::mutex mutex;
    std::condition_variable ready;
    bool abandoned = false;
    std::optional<ParPortOpening> result;
};

// The program's signals are for its first thread.
static void BlockSignals() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

ParPortAttempt::ParPortAttempt(PortCalls& calls, const std::string& device)
    : calls_(calls), shared_(std::make_shared<Shared>()) {
    thread_ = std::thread([&calls, device, shared = shared_] {
        BlockSignals();
        ParPortOpening result = OpenParPort(calls, device);
        const std::lock_guard lock(shared->mutex);
        if (shared->abandoned && result.descriptor >= 0) {
            calls.Close(result.descriptor);
        }
        shared->result = std::move(result);
        shared->ready.notify_all();
    });
}

ParPortAttempt::~ParPortAttempt() {
    constexpr std::chrono::milliseconds kLastPatience{500};
    if (taken_) {
        thread_.join();
    } else if (const auto untaken = Take(kLastPatience)) {
        if (untaken->descriptor >= 0) {
            calls_.Close(untaken->descriptor);
        }
        thread_.join();
    } else {
        Abandon();
    }
}

std::optional<ParPortOpening> ParPortAttempt::Take(std::chrono::milliseconds patience) {
    std::unique_lock lock(shared_->mutex);
    if (taken_ || !calls_.Wait(shared_->ready, lock, patience, [this] { return shared_->result.has_value(); })) {
        return {};
    }
    taken_ = true;
    return std::move(shared_->result);
}

void ParPortAttempt::Abandon() {
    const std::lock_guard lock(shared_->mutex);
    shared_->abandoned = true;
    if (shared_->result && shared_->result->descriptor >= 0) {
        calls_.Close(shared_->result->descriptor);
    }
    thread_.detach();
}
