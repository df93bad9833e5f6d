#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

class cPart;
class Port;

/// The lines and the framing of a device at one moment. A line is its port word, 0 for none.
struct Wiring {
    int clock = 0;
    int data = 0;
    int latch = 0;
    int pins = 0;       ///< What every word carries besides; without the trigger.
    int trigger = 0;    ///< The pin "Trigger" if it is on: it stays low through the shifting and rises with LE alone.
    int length = 0;     ///< Bits of a register.
    bool sbi = false;   ///< Framed by start and stop sequences, without an LE pulse.
    bool inverted = false;    ///< Clock is high in the word that sets Data, and falls in the next.
    bool latchHigh = false;   ///< LE rests high between the loads of a burst.

    static Wiring Of(const cPart& part);
};

/// Makes port words out of values: the one place that knows what the lines do for a register. Every operation adds
/// the words of one sequence behind those that stand there.
///
/// Burst commands have SBI forms of their own: Clock is high in the word that sets Data, and the extra clock has Data
/// low.
class Waveform {
public:
    /// Takes room for the words of one register, so that a load allocates nothing.
    void Reserve(int length, bool sbi);
    /// Begins anew, on this wiring.
    void Begin(const Wiring& wiring);
    [[nodiscard]] std::span<const std::int16_t> Words() const noexcept { return words_; }

    /// A register: of a value that is wider than a register its highest bits. Without `latches`, as the high part of a
    /// pair, it ends without LE.
    void Register(double v, bool latches);
    /// A number: its lowest bits, of a negative one those of its pattern.
    void Number(double v);
    void StartSBI();
    void StopSBI();
    /// The clocks of a read cycle: one for each bit that the device would drive, the trigger in the first, and one
    /// more.
    void ReadClocks();
    /// The pins alone; the lines of an SBI device rest high.
    void Pins();

    // The forms of burst commands. Each value goes out with its lowest bits.
    void BurstLoad(double v, bool latches);
    void BurstSBILoad(int address, double v);
    void BurstStartSBI(double v);
    void BurstStopSBI();
    void BurstPins();
    void BurstDelay() { words_.push_back(0); }   ///< One word, which is never played.

private:
    using Word = std::int16_t;
    template <std::size_t Count>
    using Form = std::array<std::array<Word, Count>, 2>;

    [[nodiscard]] Word Merged(int lines) const noexcept { return static_cast<Word>(lines | wiring_.pins); }
    void Add(int lines) { words_.push_back(Merged(lines)); }
    template <std::size_t Count>
    void Bits(double v, const Form<Count>& form);
    void LoadBits(double v);
    void BurstBits(double v, bool framed);
    void ExtraClock(int data);
    void Pulse(int lines, int rest);
    void LoadTail(bool latches);

    Wiring wiring_;
    std::vector<Word> words_;
};

/// Writes the words to the port, each as its data byte and then its control byte, with no pause.
void PutWords(Port& port, std::int16_t address, std::span<const std::int16_t> words);
