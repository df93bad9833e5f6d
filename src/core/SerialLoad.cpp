#include <algorithm>
#include <cmath>

#include "core/Numbers.h"
#include "core/PartLimits.h"
#include "core/PortWord.h"
#include "core/cPart.h"
#include "platform/Port.h"

// What the lines do for one register. All words of a register are built before its first port write, so that the
// output loop only merges the pins and writes; there is no pause between writes.

/// The pin word that a load carries with it. A trigger pin that is on stays low through the shifting and rises
/// with LE alone.
struct cPart::PinWords {
    int pins = 0;
    int trigger = 0;
};

cPart::PinWords cPart::TakePins() const {
    PinWords words{outputPinValue_, 0};
    if (const cPrgmPin* pin = prgmPins_.Find("Trigger"); pin != nullptr && pin->Enabled()) {
        words.trigger = pin->Value();
        words.pins &= ~words.trigger;
    }
    return words;
}

void cPart::WritePortWord(int word, int pins) {
    const auto address = static_cast<std::uint16_t>(portAddress_);
    port_->WritePort(address, DataByte(word | pins));
    port_->WritePort(static_cast<std::uint16_t>(address + kControlOffset), ControlByte(word | pins));
}

void cPart::ResizePattern() {
    const int length = std::max<int>(0, registerLength_);
    portPattern_.assign(static_cast<std::size_t>(sbiEnable_ ? 3 * length + 3 : 2 * length + 3), 0);
}

namespace {

/// How many binary digits a register's value has; 0 has one.
int BinaryDigits(double v) {
    return v >= 1 && std::isfinite(v) ? std::ilogb(v) + 1 : 1;
}

/// The bit of that weight, 2^exponent, of a whole number of any size.
bool BitOf(double v, int exponent) {
    constexpr int kWordBits = 64;
    return exponent < kWordBits ? ((WholeBits(v) >> static_cast<unsigned>(exponent)) & 1U) != 0
                                : std::fmod(std::floor(std::ldexp(v, -exponent)), 2) != 0;
}

}   // namespace

/// The words of RegisterLength bits of v, most significant first, without the lowest `droppedBits`. Returns the
/// index of the word behind them.
std::size_t cPart::BuildWords(double v, int droppedBits) {
    const int length = registerLength_;
    if (portPattern_.size() < static_cast<std::size_t>(std::max(0, length)) * (sbiEnable_ ? 3 : 2) + 3) {
        ResizePattern();
    }
    // Clock is high in the word that sets Data only with an inverted clock; SBI takes it down again in a third.
    const std::int16_t first = !sbiEnable_ && invertClock_ ? clockPosition_ : std::int16_t{0};
    const std::int16_t second = !sbiEnable_ && invertClock_ ? std::int16_t{0} : clockPosition_;
    constexpr int kWordBits = 64;
    const bool fits = length + droppedBits <= kWordBits && droppedBits < kWordBits;
    const std::uint64_t bits = fits ? WholeBits(v) >> static_cast<unsigned>(droppedBits) : 0;
    auto word = portPattern_.begin();
    for (int weight = length - 1; weight >= 0; --weight) {
        const bool one = fits ? ((bits >> static_cast<unsigned>(weight)) & 1U) != 0 : BitOf(v, weight + droppedBits);
        const std::int16_t data = one ? dataPosition_ : std::int16_t{0};
        *word++ = static_cast<std::int16_t>(data | first);
        *word++ = static_cast<std::int16_t>(data | second);
        if (sbiEnable_) {
            *word++ = data;
        }
    }
    return static_cast<std::size_t>(word - portPattern_.begin());
}

/// The three words behind the bits: one more clock with Data high on an SBI device, else the LE pulse if the
/// register latches. Returns the number of words in all.
std::size_t cPart::BuildTail(std::size_t next, bool withLatch, int trigger) {
    const auto clocked = static_cast<std::int16_t>(dataPosition_ | clockPosition_);
    const auto latch = static_cast<std::int16_t>(lePosition_ | trigger);
    portPattern_[next] = sbiEnable_ ? dataPosition_ : std::int16_t{0};
    portPattern_[next + 1] = sbiEnable_ ? clocked : withLatch ? latch : std::int16_t{0};
    portPattern_[next + 2] = portPattern_[next];
    return next + 3;
}

void cPart::SendPattern(std::size_t words, int pins) {
    for (std::size_t i = 0; i < words; ++i) {
        WritePortWord(portPattern_[i], pins);
    }
}

void cPart::LoadRegister(std::string& name) {
    ShiftOut(&registers_.At(name), name);
}

/// The other part of the register's pair; null if the device has no pairs or none of that name fits. SBI framing
/// knows no pairs.
cRegister* cPart::PartnerOf(const cRegister& one) const {
    cRegister* other = highByte_ && !sbiEnable_ ? registers_.Find(one.HighLowRegister()) : nullptr;
    return other != nullptr && other->LowByte() != one.LowByte() ? other : nullptr;
}

/// Shifts the register out, and of a pair the high part before the low one; `name` follows along. A part without a
/// partner that leads on to a low part goes out alone, with LE.
void cPart::ShiftOut(cRegister* shifted, std::string& name) {
    cRegister* high = PartnerOf(*shifted);
    if (high != nullptr && shifted->LowByte() && PartnerOf(*high) != nullptr) {
        name = high->ID();
        shifted = high;
        static_cast<void>(high->Change());   // Goes out with the low part: the mark is spent.
    }
    const PinWords taken = TakePins();
    while (true) {
        cRegister* low = shifted->LowByte() ? nullptr : PartnerOf(*shifted);
        const int dropped = std::max(0, BinaryDigits(shifted->Value()) - std::max<int>(0, registerLength_));
        const std::size_t next = BuildWords(shifted->Value(), dropped);
        SendPattern(BuildTail(next, low == nullptr, taken.trigger), taken.pins);
        if (low == nullptr) {
            return;
        }
        name = low->ID();
        shifted = low;
        static_cast<void>(low->Change());
    }
}

void cPart::LoadValue(double v) {
    const PinWords taken = TakePins();
    if (v < 0) {
        v = std::trunc(v) + std::ldexp(1.0, kLongestRegister);   // Goes out as its bit pattern.
    }
    SendPattern(BuildTail(BuildWords(v, 0), true, taken.trigger), taken.pins);
}

void cPart::StartSBILoad() {
    WritePortWord(clockPosition_ | dataPosition_, outputPinValue_);
    WritePortWord(dataPosition_, outputPinValue_);
}

void cPart::StopSBILoad() {
    const int resting = clockPosition_ | dataPosition_;
    WritePortWord(resting, outputPinValue_);
    WritePortWord(resting | lePosition_, outputPinValue_);
}

std::int32_t cPart::ReadRegister(std::int16_t number) {
    if (!sbiEnable_) {
        return -1;
    }
    const PinWords taken = TakePins();
    StartSBILoad();
    SendAddressWord();
    constexpr int kReadFlag = 0x80;
    LoadValue(number | kReadFlag);
    // One clock for each bit that the device would drive, high in its first word, and one more.
    const auto clocked = static_cast<std::int16_t>(dataPosition_ | clockPosition_);
    std::size_t next = 0;
    for (int i = 0; i < registerLength_; ++i) {
        portPattern_[next++] = clocked;
        portPattern_[next++] = dataPosition_;
    }
    portPattern_[0] = static_cast<std::int16_t>(portPattern_[0] | taken.trigger);
    portPattern_[next] = dataPosition_;
    portPattern_[next + 1] = clocked;
    portPattern_[next + 2] = dataPosition_;
    SendPattern(next + 3, taken.pins);
    StopSBILoad();
    return 0;
}

void cPart::UpdateOutputPins() {
    const int resting = sbiEnable_ ? dataPosition_ | clockPosition_ | lePosition_ : 0;   // Of an SBI device.
    WritePortWord(outputPinValue_ | resting, 0);
}
