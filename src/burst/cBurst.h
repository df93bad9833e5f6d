#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

class Waveform;
class cPart;

/// The kinds of burst commands, by their numbers in files. 3 is free.
struct BurstKind {
    static constexpr std::int16_t Load = 0;
    static constexpr std::int16_t Pins = 1;
    static constexpr std::int16_t Delay = 2;
    static constexpr std::int16_t StartSBI = 4;
    static constexpr std::int16_t StopSBI = 5;
};

inline constexpr int kMostBurstCommands = 32767;   ///< Positions in the list are 16-bit numbers.

/// One command of the burst list. Its port words are worked out when it is made, from the wiring, the pins and the
/// framing of that moment, and stay as they are whatever changes later; playing only copies them to the port.
class cBurst {
public:
    /// A command with all that its words depend on: `v` is the value to load, of a delay its passes; `lowByte` as
    /// below.
    cBurst(cPart& part, std::int16_t kind, std::string_view description, double v, std::string_view registerName = {},
           bool lowByte = false);

    [[nodiscard]] std::int16_t Command() const noexcept { return command_; }   ///< One of BurstKind.
    void Command(std::int16_t kind) noexcept { command_ = kind; }

    /// Passes of the busy loop of a delay, less one. The time that they take depends on the processor.
    [[nodiscard]] std::int32_t Delay() const noexcept { return delay_; }
    void Delay(std::int32_t passes) noexcept { delay_ = passes; }

    /// The line of the burst list. Valid until a text of the command is set.
    [[nodiscard]] std::string_view Description() const noexcept { return {texts_.get(), descriptionLength_}; }
    void Description(std::string_view text);

    /// The register of a load; its place among the registers is the address of an SBI load, 0 without one. Valid
    /// until a text of the command is set.
    [[nodiscard]] std::string_view RegisterName() const noexcept {
        return {texts_.get() + descriptionLength_, nameLength_};
    }
    void RegisterName(std::string_view name);

    /// Whether a load latches: false for the high part of a register pair.
    void LowByte(bool low) noexcept { lowByte_ = low; }

    /// The value that a load shifts out. A new one makes the port words anew, of a delay the Delay.
    [[nodiscard]] double Register() const noexcept { return register_; }
    void Register(double v);

    /// The pins when the command was built.
    [[nodiscard]] std::int16_t OutputPinValue() const noexcept { return outputPinValue_; }
    void OutputPinValue(std::int16_t word) noexcept { outputPinValue_ = word; }

    /// The port words. Valid until Register is set.
    [[nodiscard]] std::span<const std::int16_t> BurstPattern() const noexcept { return {words_.get(), wordCount_}; }

    /// Plays the command, at the port address of this moment.
    void Execute() const;

    /// How many writes to the port playing makes.
    [[nodiscard]] std::size_t PortWrites() const noexcept { return 2 * PlayedWords(); }

    /// Clock, Data and LE as a timing diagram: three lines with a digit for each word, on the lines' places of this
    /// moment. The Description for kinds that shift nothing.
    [[nodiscard]] std::string Pattern() const;

    [[nodiscard]] cPart& Part() const noexcept { return *part_; }

private:
    [[nodiscard]] bool Shifts() const noexcept;
    [[nodiscard]] std::size_t PlayedWords() const noexcept;
    void AddWords(Waveform& form) const;
    void SetTexts(std::string_view description, std::string_view registerName);

    // Lists are long: words and texts are held without room for more, and the texts in one piece.
    cPart* part_;
    std::unique_ptr<std::int16_t[]> words_;
    std::unique_ptr<char[]> texts_;   ///< The description, and the register name behind it.
    double register_ = 0;
    std::uint32_t wordCount_ = 0;
    std::uint32_t descriptionLength_ = 0;
    std::uint32_t nameLength_ = 0;
    std::int32_t delay_ = 0;
    std::int16_t command_ = BurstKind::Load;
    std::int16_t outputPinValue_ = 0;
    bool lowByte_ = false;
};
