#include "core/cPart.h"

#include "core/BinaryString.h"
#include "core/DeviceDisplay.h"
#include "machine/EventPump.h"
#include "ports/Port.h"

namespace {

class NoPort final : public Port {
public:
    bool OpenTVicPort() override { return false; }
    void WritePort(std::uint16_t /*port*/, std::uint8_t /*value*/) override {}
    void CloseTVicPort() override {}
    [[nodiscard]] PortStatus Status() const override { return {false, "no port", "No port was opened.", 0}; }
};

class NoEvents final : public EventPump {
public:
    void DoEvents() override {}
};

NoPort noPort;
NoEvents noEvents;
DeviceDisplay noDisplay;

}   // namespace

cPart::cPart() : port_(&noPort), display_(&noDisplay), pump_(&noEvents) {}

cPart::~cPart() = default;

void cPart::RegisterLength(std::int16_t bits) {
    registerLength_ = bits;
    display_->RebuildRulers();
    waveform_.Reserve(registerLength_, sbiEnable_);
}

void cPart::SBIEnable(bool on) {
    sbiEnable_ = on;
    waveform_.Reserve(registerLength_, sbiEnable_);
}

void cPart::AddRegister(const std::string& name, std::int32_t mask, double v, bool lowByte,
                        const std::string& highLowRegister) {
    auto made = std::make_unique<cRegister>(*this);
    made->ID(name);
    made->Mask(mask);
    made->Value(v);
    made->LowByte(lowByte);
    made->HighLowRegister(highLowRegister);
    display_->AddRegisterRow(registers_.Add(name, std::move(made)));
}

void cPart::AddProgramPin(const std::string& name, std::int16_t line) {
    auto made = std::make_unique<cPrgmPin>(*this);
    made->ID(name);
    made->Position(line);
    display_->AddPinBox(prgmPins_.Add(name, std::move(made)));
}

std::unique_ptr<cPrgmBits> cPart::MakeField(const std::string& name, const std::string& registerName,
                                            std::int16_t start, std::int16_t length, bool display) {
    auto made = std::make_unique<cPrgmBits>(*this);
    made->ID(name);
    made->Register(registerName);
    made->Position(start);
    made->Length(length);
    made->Display(display);
    return made;
}

void cPart::AddProgramBit(const std::string& name, const std::string& registerName, std::int16_t start,
                          std::int16_t length, bool display, std::string_view group) {
    const auto& added = prgmBits_.Add(name, MakeField(name, registerName, start, length, display));
    if (display) {
        display_->AddCheckBox(added, group);
    }
}

void cPart::AddCounter(const std::string& name, const std::string& registerName, std::int16_t start,
                       std::int16_t length, bool display, std::string_view group) {
    const auto& added = prgmBits_.Add(name, MakeField(name, registerName, start, length, display));
    if (display) {
        display_->AddCounterBox(added, group);
    }
}

void cPart::AddList(const std::string& prgmBitName, std::string_view group) {
    display_->AddListBox(prgmBits_.At(prgmBitName), group);
}

void cPart::NoteFieldWrite(cRegister& written) {
    if (fieldVisits_ != 0) {
        fieldWrites_.emplace_back(&written, written.Held());
    }
}

void cPart::EndFieldVisits(bool failed) noexcept {
    for (auto write = fieldWrites_.rbegin(); failed && write != fieldWrites_.rend(); ++write) {
        write->first->Restore(write->second);
    }
    fieldWrites_.clear();
    fieldVisits_ = 0;
}

/// Marks what happens on the screen as the program's own; the mark goes whatever a display runs into.
template <class Show>
void cPart::Redraw(Show show) {
    struct Mark {
        bool& updating;
        ~Mark() { updating = false; }
    };
    updating_ = true;
    const Mark mark{updating_};
    show();
}

void cPart::UpdatePLLDisplay() {
    if (plls_.Count() == 0) {
        return;
    }
    const auto values = [this] {
        std::vector<double> all;
        all.reserve(static_cast<std::size_t>(registers_.Count()));
        for (const cRegister& each : registers_) {
            all.push_back(each.Value());
        }
        return all;
    };
    const auto before = values();
    Redraw([&] { display_->ShowPLLs(); });
    if (values() != before) {   // Reading the frequencies has repaired an R of 0.
        Redraw([&] { display_->ShowRegisters(); });
        UpdateBitDisplay();
    }
}

void cPart::UpdateRegisterDisplay() {
    if (registers_.Count() == 0) {
        return;
    }
    Redraw([&] { display_->ShowRegisters(); });
}

void cPart::UpdateBitDisplay() {
    if (prgmBits_.Count() == 0) {
        return;
    }
    Redraw([&] { display_->ShowBits(); });
}

void cPart::UpdatePortDisplay() {
    if (id_.empty()) {
        return;
    }
    clockPosition_ = clockPosition_ == 0 ? std::int16_t{1} : clockPosition_;
    dataPosition_ = dataPosition_ == 0 ? std::int16_t{2} : dataPosition_;
    lePosition_ = lePosition_ == 0 ? std::int16_t{4} : lePosition_;
    Redraw([&] { display_->ShowPort(); });
}

void cPart::ShowBurst(bool vectors) {
    Redraw([&] { display_->ShowBurst(vectors); });
}

void cPart::UpdateBurstDisplay() {
    ShowBurst(false);
}

void cPart::DisplayBurstVector() {
    ShowBurst(true);
}

void cPart::UpdateDisplays() {
    UpdatePLLDisplay();
    UpdateBitDisplay();
    UpdateRegisterDisplay();
    UpdatePortDisplay();
    UpdateBurstDisplay();
}

void cPart::ClearPLL() {
    ++deviceNumber_;
    display_->ClearForm();
    display_->RemovePLLPages();
    lines_ = 0;
    prgmBits_.Clear();
    prgmPins_.Clear();
    registers_.Clear();
    plls_.Clear();
    burstCmds_.Clear();
    macroCmds_.Clear();
    problems_.Clear();
    items_ = {};
    id_.clear();
    UpdateDisplays();
}

std::string cPart::ConvertBase10(double d, std::string_view newBaseDigits) const {
    return ToBase(d, newBaseDigits);
}

std::string cPart::ConvertBinaryToHex(std::string& binaryValue) const {
    return BinaryToHex(binaryValue);
}

double cPart::BinaryToDecimal(std::string_view binaryValue) const {
    return BinaryValue(binaryValue);
}

std::string cPart::BinaryStringAnd(std::string_view one, std::string_view two) const {
    return BinaryAnd(one, two);
}

std::string cPart::BinaryStringOr(std::string_view one, std::string_view two) const {
    return BinaryOr(one, two);
}

std::string cPart::BinaryStringNot(std::string_view one, std::optional<int> loopLen) const {
    return BinaryNot(one, loopLen);
}
