#include <algorithm>
#include <utility>

#include "burst/cBurst.h"
#include "core/DeviceDisplay.h"
#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "machine/EventPump.h"

namespace {

std::string PinList(const cPart& part) {
    std::string text;
    for (const cPrgmPin& pin : part.PrgmPins()) {
        text += "; ";
        text += pin.ID();
        text += "= ";
        text += BooleanText(pin.Enabled());
    }
    return text;
}

std::int32_t DelayCount(const std::string& text) {
    try {
        const auto number = ParseNumber(text);
        if (!number || RoundHalfEven(*number) == *number) {
            return FileLong(text);   // Hexadecimal counts are welcome too.
        }
    } catch (const ConversionError&) {
        // Told below, with what a delay may be.
    }
    constexpr std::size_t kShown = 60;
    throw ConversionError("\"" + text.substr(0, kShown) + (text.size() > kShown ? "..." : "") +
                          "\" is no delay: a whole number from 0 to 2147483647 is expected, the passes of a busy loop");
}

/// A command of its own, so that one that can't be built changes nothing.
cBurst Build(cPart& part, const std::string& name, std::int16_t kind) {
    switch (kind) {
        case BurstKind::Load: {
            const cRegister& loaded = part.Registers().At(name);
            const std::string line = "Load " + name + " = " + loaded.RegisterString() + PinList(part);
            return {part, kind, line, loaded.Value(), loaded.ID(), loaded.LowByte()};
        }
        case BurstKind::Pins:
            return {part, kind, "Change Pin State" + PinList(part), 0};
        case BurstKind::Delay:
            return {part, kind, "Delay of " + name, static_cast<double>(DelayCount(name))};
        case BurstKind::StartSBI:
            return {part, kind, "Start SBI Load Sequence", part.Registers().At(1).Value(), name};
        case BurstKind::StopSBI:
            return {part, kind, "Stop SBI Load Sequence", 0};
        default:
            throw RefusedError("no burst command has the kind " + std::to_string(kind) +
                               ": 0 is a register load, 1 a pin change, 2 a delay, 4 and 5 start and stop an SBI load");
    }
}

/// Plays the list once and returns the number of port writes. No event is handled meanwhile.
std::uint64_t PlayOnce(const Collection<cBurst>& commands) {
    std::uint64_t writes = 0;
    for (const cBurst& command : commands) {
        command.Execute();
        writes += command.PortWrites();
    }
    return writes;
}

}   // namespace

void cPart::AddBurstCommand(const std::string& name, std::int16_t kind, std::optional<std::int16_t> position) {
    if (burstCmds_.Count() >= kMostBurstCommands) {
        throw RefusedError("the burst list is full: it holds at most " + std::to_string(kMostBurstCommands) +
                           " commands. Delete some before you add more");
    }
    if (position) {
        static_cast<void>(burstCmds_.At(*position));   // Fails unless a command stands there.
    }
    auto built = std::make_unique<cBurst>(Build(*this, name, kind));
    burstCmds_.Insert(position ? *position : burstCmds_.Count() + 1, std::move(built));
}

void cPart::ChangeBurstCommand(std::int16_t position, const std::string& name, std::int16_t kind) {
    cBurst& changed = burstCmds_.At(position);
    changed = Build(*this, name, kind);
}

void cPart::DeleteBurstCommand(std::int16_t position) {
    if (burstCmds_.Count() == 0) {
        return;
    }
    burstCmds_.Remove(std::clamp<int>(position, 1, burstCmds_.Count()));
    UpdateBurstDisplay();
}

void cPart::DeleteBurstCommands() {
    burstCmds_.Clear();
    UpdateBurstDisplay();
}

void cPart::RestoreBurstCommand(std::int16_t position) {
    IgnoringFailures([&] {
        const cBurst& command = burstCmds_.At(position);
        if (command.Command() == BurstKind::Load) {
            registers_.At(command.RegisterName()).Value(command.Register());
        }
    });
    UpdateDisplays();
}

/// The time of one run. However it ends, the next one can begin.
class cPart::BurstRun {
public:
    explicit BurstRun(cPart& part) noexcept : part_(part) { part.burstRunning_ = true; }
    BurstRun(const BurstRun&) = delete;
    BurstRun& operator=(const BurstRun&) = delete;
    ~BurstRun() {
        part_.burstRunning_ = false;
        part_.stopRequested_ = false;
        part_.display_->ShowBurstRunning(false);
    }

private:
    cPart& part_;
};

void cPart::RunBurstCommands() {
    if (burstRunning_ || burstCmds_.Count() == 0) {
        return;
    }
    const BurstRun run(*this);
    display_->ShowBurstRunning(true);
    std::uint64_t writes = 0;
    for (std::uint64_t passes = 1; !stopRequested_; ++passes) {
        writes += PlayOnce(burstCmds_);
        stopRequested_ = stopRequested_ || !display_->BurstLoops();
        display_->ShowBurstProgress(passes, writes);
        pump_->DoEvents();   // Anything may happen here, to the end of the device: what is left is an empty list.
    }
}

void cPart::StopBurstCommands() noexcept {
    stopRequested_ = burstRunning_;
}
