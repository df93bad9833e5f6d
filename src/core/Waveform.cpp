#include "core/Waveform.h"

#include <algorithm>
#include <cmath>

#include "core/Numbers.h"
#include "core/PartLimits.h"
#include "core/cPart.h"
#include "ports/Connector.h"
#include "ports/Port.h"

namespace {

/// How many binary digits the whole part of a value has; 0 has one.
int BinaryDigits(double v) {
    return v >= 1 && std::isfinite(v) ? std::ilogb(v) + 1 : 1;
}

}   // namespace

Wiring Wiring::Of(const cPart& part) {
    Wiring wiring;
    wiring.clock = part.ClockPosition();
    wiring.data = part.DataPosition();
    wiring.latch = part.LEPosition();
    wiring.pins = part.OutputPinValue();
    if (const cPrgmPin* pin = part.PrgmPins().Find("Trigger"); pin != nullptr && pin->Enabled()) {
        wiring.trigger = pin->Value();
        wiring.pins &= ~wiring.trigger;
    }
    wiring.length = std::max<int>(0, part.RegisterLength());
    wiring.sbi = part.SBIEnable();
    wiring.inverted = part.InvertClock();
    wiring.latchHigh = part.LEModeHigh();
    return wiring;
}

void Waveform::Reserve(int length, bool sbi) {
    constexpr int kTail = 3;
    const int words = (sbi ? 3 : 2) * std::max(0, length) + kTail;
    words_.reserve(static_cast<std::size_t>(words));
}

void Waveform::Begin(const Wiring& wiring) {
    wiring_ = wiring;
    words_.clear();
}

/// The lowest bits of v, as many as a register has, the most significant first. `form` gives the words of a 0 and of
/// a 1, pins included.
template <std::size_t Count>
void Waveform::Bits(double v, const Form<Count>& form) {
    constexpr int kWordBits = 64;
    const std::uint64_t bits = WholeBits(v);
    const std::size_t before = words_.size();
    words_.resize(before + Count * static_cast<std::size_t>(wiring_.length));
    auto word = words_.begin() + static_cast<std::ptrdiff_t>(before);
    for (int weight = wiring_.length - 1; weight >= 0; --weight) {
        const bool one = weight < kWordBits && ((bits >> static_cast<unsigned>(weight)) & 1U) != 0;
        word = std::copy_n(form[one ? 1 : 0].begin(), Count, word);
    }
}

/// Clock rises in the second word, with Data as it was set in the first; SBI takes it down again in a third.
void Waveform::LoadBits(double v) {
    const Word zero = Merged(0);
    const Word one = Merged(wiring_.data);
    const Word clockedZero = Merged(wiring_.clock);
    const Word clockedOne = Merged(wiring_.data | wiring_.clock);
    if (wiring_.sbi) {
        Bits<3>(v, {{{zero, clockedZero, zero}, {one, clockedOne, one}}});
    } else if (wiring_.inverted) {
        Bits<2>(v, {{{clockedZero, zero}, {clockedOne, one}}});
    } else {
        Bits<2>(v, {{{zero, clockedZero}, {one, clockedOne}}});
    }
}

/// Where a line has two uses, the falling clock takes it along in a frame, and leaves it alone elsewhere.
void Waveform::BurstBits(double v, bool framed) {
    if (!framed && !wiring_.inverted) {
        LoadBits(v);
        return;
    }
    const auto second = [&](Word first) {
        return static_cast<Word>(framed ? first ^ wiring_.clock : first & Merged(wiring_.data));
    };
    const Word zero = Merged(wiring_.clock);
    const Word one = Merged(wiring_.data | wiring_.clock);
    Bits<2>(v, {{{zero, second(zero)}, {one, second(one)}}});
}

void Waveform::ExtraClock(int data) {
    Add(data);
    Add(data | wiring_.clock);
    Add(data);
}

void Waveform::Pulse(int lines, int rest) {
    Add(0);
    Add(lines);
    Add(rest);
}

void Waveform::Register(double v, bool latches) {
    LoadBits(std::floor(std::ldexp(v, std::min(0, wiring_.length - BinaryDigits(v)))));
    LoadTail(latches);
}

void Waveform::Number(double v) {
    LoadBits(v < 0 ? std::trunc(v) + std::ldexp(1.0, kLongestRegister) : v);
    LoadTail(true);
}

void Waveform::LoadTail(bool latches) {
    if (wiring_.sbi) {
        ExtraClock(wiring_.data);
    } else {
        Pulse(latches ? wiring_.latch | wiring_.trigger : 0, 0);
    }
}

void Waveform::StartSBI() {
    Add(wiring_.clock | wiring_.data);
    Add(wiring_.data);
}

/// Where LE shares a line with the others the sum carries.
void Waveform::StopSBI() {
    Add(wiring_.clock | wiring_.data);
    Add(static_cast<Word>((wiring_.clock | wiring_.data) + wiring_.latch));
}

void Waveform::ReadClocks() {
    const std::size_t first = words_.size();
    const Word low = Merged(wiring_.data);
    const Word high = Merged(wiring_.data | wiring_.clock);
    Bits<2>(0, {{{high, low}, {high, low}}});
    ExtraClock(wiring_.data);
    words_[first] = static_cast<Word>(words_[first] | wiring_.trigger);
}

void Waveform::Pins() {
    Add(wiring_.sbi ? wiring_.clock | wiring_.data | wiring_.latch : 0);
}

void Waveform::BurstLoad(double v, bool latches) {
    const int line = latches ? wiring_.latch : 0;
    BurstBits(v, false);
    Pulse(line | wiring_.trigger, wiring_.latchHigh ? line : 0);
}

void Waveform::BurstSBILoad(int address, double v) {
    for (const double word : {static_cast<double>(address), v}) {
        BurstBits(word, true);
        ExtraClock(0);
    }
}

void Waveform::BurstStartSBI(double v) {
    StartSBI();
    BurstBits(v, true);
    ExtraClock(0);
}

void Waveform::BurstStopSBI() {
    Add(wiring_.clock | wiring_.data);
    Add(wiring_.clock | wiring_.data | wiring_.latch | wiring_.trigger);
}

void Waveform::BurstPins() {
    if (wiring_.sbi) {
        Pins();
    } else {
        Add(wiring_.latchHigh ? wiring_.latch : 0);
    }
    words_.push_back(0);
}

void PutWords(Port& port, std::int16_t address, std::span<const std::int16_t> words) {
    const auto data = static_cast<std::uint16_t>(address);
    const auto control = static_cast<std::uint16_t>(data + kControlOffset);
    // Unrolled: the loop's own jumps would take a sixth of the time.
#pragma GCC unroll 4
    for (const std::int16_t word : words) {
        port.WritePort(data, DataByte(word));
        port.WritePort(control, ControlByte(word));
    }
}
