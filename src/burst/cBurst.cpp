#include "burst/cBurst.h"

#include <algorithm>

#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/Waveform.h"
#include "core/cPart.h"

namespace {

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

cBurst::cBurst(cPart& part, std::int16_t kind, std::string_view description, double v, std::string_view registerName,
               bool lowByte)
    : part_(&part), command_(kind), lowByte_(lowByte) {
    SetTexts(description, registerName);
    Register(v);
}

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
    Waveform form;
    form.Begin(Wiring::Of(*part_));
    AddWords(form);
    wordCount_ = static_cast<std::uint32_t>(form.Words().size());
    words_ = std::make_unique_for_overwrite<std::int16_t[]>(wordCount_);
    std::copy(form.Words().begin(), form.Words().end(), words_.get());
}

void cBurst::AddWords(Waveform& form) const {
    switch (command_) {
        case BurstKind::Load:
            if (part_->SBIEnable()) {
                form.BurstSBILoad(part_->Registers().PositionOf(RegisterName()), register_);
            } else {
                form.BurstLoad(register_, lowByte_);
            }
            break;
        case BurstKind::Delay:
            form.BurstDelay();
            break;
        case BurstKind::StartSBI:
            form.BurstStartSBI(register_);
            break;
        case BurstKind::StopSBI:
            form.BurstStopSBI();
            break;
        default:
            form.BurstPins();
    }
}

bool cBurst::Shifts() const noexcept {
    return command_ == BurstKind::Load || command_ == BurstKind::StartSBI || command_ == BurstKind::StopSBI;
}

std::size_t cBurst::PlayedWords() const noexcept {
    return Shifts() ? wordCount_ : command_ == BurstKind::Pins ? std::min(wordCount_, 1U) : 0;
}

void cBurst::Execute() const {
    PutWords(part_->OutputPort(), part_->PortAddress(), BurstPattern().first(PlayedWords()));
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
