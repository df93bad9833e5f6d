#include "burst/cBurst.h"

#include <algorithm>
#include <utility>

#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/PortWord.h"
#include "core/cPart.h"
#include "platform/Port.h"

namespace {

/// Puts the words of one command together, from the device as it is now. `latch` is the LE line, 0 for none.
class Waveform {
public:
    Waveform(const cPart& part, int latch);

    void PlainLoad(double v);
    void SBILoad(double address, double v);
    void StartSBI(double v);
    void StopSBI();
    void PinChange();
    void Delay();

    [[nodiscard]] std::unique_ptr<std::int16_t[]> TakeWords() noexcept { return std::move(words_); }
    [[nodiscard]] std::uint32_t Count() const noexcept { return count_; }

private:
    void Reserve(int words) {
        words_ = std::make_unique_for_overwrite<std::int16_t[]>(static_cast<std::size_t>(words));
    }
    void Add(int word) { words_[count_++] = static_cast<std::int16_t>(word); }
    void Shift(double v);
    void ExtraClock();

    std::unique_ptr<std::int16_t[]> words_;
    std::uint32_t count_ = 0;
    int pins_;
    int trigger_ = 0;
    int data_;
    int clock_;
    int latch_;
    int length_;
    bool sbi_;
    bool inverted_;
    bool latchHigh_;
};

Waveform::Waveform(const cPart& part, int latch)
    : pins_(part.OutputPinValue()),
      data_(part.DataPosition()),
      clock_(part.ClockPosition()),
      latch_(latch),
      length_(std::max<int>(0, part.RegisterLength())),
      sbi_(part.SBIEnable()),
      inverted_(part.InvertClock()),
      latchHigh_(part.LEModeHigh()) {
    // A trigger pin that is on stays low until it rises with LE.
    if (const cPrgmPin* pin = part.PrgmPins().Find("Trigger"); pin != nullptr && pin->Enabled()) {
        trigger_ = pin->Value();
        pins_ &= ~trigger_;
    }
}

/// The bits of v, most significant first, two words each. Data is set with the first; the clock edge that follows
/// rises on a plain device and falls with an inverted clock and with SBI.
void Waveform::Shift(double v) {
    constexpr int kWordBits = 64;
    const std::uint64_t bits = WholeBits(v);
    for (int weight = length_ - 1; weight >= 0; --weight) {
        const bool one = weight < kWordBits && ((bits >> static_cast<unsigned>(weight)) & 1U) != 0;
        const int set = pins_ | (one ? data_ : 0) | (sbi_ || inverted_ ? clock_ : 0);
        Add(set);
        Add(sbi_ ? set ^ clock_ : inverted_ ? set & (pins_ | data_) : set | clock_);
    }
}

void Waveform::ExtraClock() {
    Add(pins_);
    Add(pins_ | clock_);
    Add(pins_);
}

void Waveform::PlainLoad(double v) {
    Reserve(2 * length_ + 3);
    Shift(v);
    Add(pins_);
    Add(pins_ | latch_ | trigger_);
    Add(latchHigh_ ? pins_ | latch_ : pins_);
}

void Waveform::SBILoad(double address, double v) {
    Reserve(4 * length_ + 6);
    Shift(address);
    ExtraClock();
    Shift(v);
    ExtraClock();
}

void Waveform::StartSBI(double v) {
    Reserve(2 * length_ + 5);
    // A start makes sense on an SBI device alone; its bits have this form on any.
    sbi_ = true;
    Add(pins_ | clock_ | data_);
    Add(pins_ | data_);
    Shift(v);
    ExtraClock();
}

void Waveform::StopSBI() {
    Reserve(2);
    Add(pins_ | clock_ | data_);
    Add(pins_ | clock_ | data_ | latch_ | trigger_);
}

void Waveform::PinChange() {
    Reserve(2);
    // An SBI device rests with all three lines high.
    Add(sbi_ ? pins_ | clock_ | data_ | latch_ : latchHigh_ ? pins_ | latch_ : pins_);
    Add(0);
}

/// One word, which is never played.
void Waveform::Delay() {
    Reserve(1);
    Add(0);
}

/// Counts from 0 to `last`. The counter lives in memory, so that the compiler can't take the loop away.
void BusyLoop(std::int32_t last) {
    volatile std::int64_t pass = 0;
    while (pass <= last) {
        pass = pass + 1;
    }
}

void AppendTrack(std::string& text, const char* caption, std::span<const std::int16_t> words, int line) {
    text += caption;
    for (const std::int16_t word : words) {
        text += line != 0 && (word & line) == line ? '1' : '0';
    }
}

}   // namespace

void cBurst::SetTexts(std::string_view description, std::string_view registerName) {
    auto texts = std::make_unique_for_overwrite<char[]>(description.size() + registerName.size());
    registerName.copy(texts.get() + description.copy(texts.get(), description.size()), registerName.size());
    texts_ = std::move(texts);
    descriptionLength_ = static_cast<std::uint32_t>(description.size());
    nameLength_ = static_cast<std::uint32_t>(registerName.size());
}

void cBurst::Description(std::string_view text) {
    SetTexts(text, RegisterName());
}

void cBurst::RegisterName(std::string_view name) {
    SetTexts(Description(), name);
}

void cBurst::Register(double v) {
    register_ = v;
    outputPinValue_ = part_->OutputPinValue();
    if (command_ == BurstKind::Delay) {
        IgnoringFailures([&] { delay_ = RoundToLong(v); });
    }
    // Of the loads only those of a whole register or of a pair's low part latch; all else that moves LE does.
    const bool latches = command_ != BurstKind::Load || lowByte_;
    Waveform form(*part_, latches ? part_->LEPosition() : 0);
    if (command_ == BurstKind::Delay) {
        form.Delay();
    } else if (command_ == BurstKind::StartSBI) {
        form.StartSBI(v);
    } else if (command_ == BurstKind::StopSBI) {
        form.StopSBI();
    } else if (command_ != BurstKind::Load) {
        form.PinChange();
    } else if (part_->SBIEnable()) {
        form.SBILoad(part_->Registers().PositionOf(RegisterName()), v);
    } else {
        form.PlainLoad(v);
    }
    words_ = form.TakeWords();
    wordCount_ = form.Count();
}

bool cBurst::Shifts() const noexcept {
    return command_ == BurstKind::Load || command_ == BurstKind::StartSBI || command_ == BurstKind::StopSBI;
}

std::size_t cBurst::PlayedWords() const noexcept {
    return Shifts() ? wordCount_ : command_ == BurstKind::Pins ? std::min(wordCount_, 1U) : 0;
}

void cBurst::Execute() const {
    Port& port = part_->OutputPort();
    const auto address = static_cast<std::uint16_t>(part_->PortAddress());
    const auto control = static_cast<std::uint16_t>(address + kControlOffset);
    const std::int16_t* word = words_.get();
    // Unrolled: the loop's own jumps would take a sixth of the time.
#pragma GCC unroll 4
    for (const std::int16_t* const end = word + PlayedWords(); word != end; ++word) {
        port.WritePort(address, DataByte(*word));
        port.WritePort(control, ControlByte(*word));
    }
    if (command_ == BurstKind::Delay) {
        BusyLoop(delay_);
    }
}

std::string cBurst::Pattern() const {
    if (!Shifts()) {
        return std::string(Description());
    }
    std::string text;
    constexpr std::size_t kCaptions = 16;   // With two line ends.
    text.reserve(3 * BurstPattern().size() + kCaptions);
    AppendTrack(text, "clk", BurstPattern(), part_->ClockPosition());
    AppendTrack(text, "\r\ndat", BurstPattern(), part_->DataPosition());
    AppendTrack(text, "\r\nle  ", BurstPattern(), part_->LEPosition());
    return text;
}
