#include "core/cPart.h"

// What goes out for one register. All words of a register are made before its first port write.

/// Makes a sequence on the wiring of this moment and writes it to the port. A trigger pin that is on is held back for
/// LE, or carried along like any other.
template <class Make>
void cPart::Send(Wiring wiring, Make make) {
    waveform_.Begin(wiring);
    make(waveform_);
    PutWords(*port_, portAddress_, waveform_.Words());
}

namespace {

Wiring WithTriggerAsPin(const cPart& part) {
    Wiring wiring = Wiring::Of(part);
    wiring.pins = part.OutputPinValue();
    wiring.trigger = 0;
    return wiring;
}

}   // namespace

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
/// partner that leads on to a low part goes out alone, with LE. Gives the register that went out first.
const cRegister& cPart::ShiftOut(cRegister* shifted, std::string& name) {
    cRegister* high = PartnerOf(*shifted);
    if (high != nullptr && shifted->LowByte() && PartnerOf(*high) != nullptr) {
        name = high->ID();
        shifted = high;
        static_cast<void>(high->Change());   // Goes out with the low part: the mark is spent.
    }
    const cRegister& first = *shifted;
    const Wiring wiring = Wiring::Of(*this);
    while (true) {
        ++shiftCount_;
        cRegister* low = shifted->LowByte() ? nullptr : PartnerOf(*shifted);
        Send(wiring, [&](Waveform& form) { form.Register(shifted->Value(), low == nullptr); });
        if (low == nullptr) {
            return first;
        }
        name = low->ID();
        shifted = low;
        static_cast<void>(low->Change());
    }
}

void cPart::LoadValue(double v) {
    Send(Wiring::Of(*this), [&](Waveform& form) { form.Number(v); });
}

void cPart::StartSBILoad() {
    Send(WithTriggerAsPin(*this), [](Waveform& form) { form.StartSBI(); });
}

void cPart::StopSBILoad() {
    Send(WithTriggerAsPin(*this), [](Waveform& form) { form.StopSBI(); });
}

std::int32_t cPart::ReadRegister(std::int16_t number) {
    if (!sbiEnable_) {
        return -1;
    }
    StartSBILoad();
    SendAddressWord();
    constexpr int kReadFlag = 0x80;
    LoadValue(number | kReadFlag);
    Send(Wiring::Of(*this), [](Waveform& form) { form.ReadClocks(); });
    StopSBILoad();
    return 0;
}

void cPart::UpdateOutputPins() {
    Send(WithTriggerAsPin(*this), [](Waveform& form) { form.Pins(); });
}
