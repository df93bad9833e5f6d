#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Collection.h"
#include "core/FileItems.h"
#include "core/Problems.h"
#include "core/Waveform.h"
#include "core/cPrgmBits.h"
#include "core/cPrgmPin.h"
#include "core/cRegister.h"

class cBurst;
class cPLL;
class DeviceDisplay;
class EventPump;
class Port;

/// The selected device and all that is known about it: its registers, bit fields, pins and PLLs, the burst list and
/// the wiring. It turns registers into levels on the port lines. The registers are the only store of the device's
/// state; pins share the word OutputPinValue.
///
/// A port word has one bit for each of the twelve output lines of the connector: bits 0 to 7 the data lines, 8 to 11
/// the control lines "C1" to "C4", a 1 being a high level. Bits 12 to 15 never reach the port.
///
/// The operations on PLLs are defined in pll, those on the burst list in burst.
class cPart {
public:
    cPart();
    cPart(const cPart&) = delete;
    cPart& operator=(const cPart&) = delete;
    ~cPart();

    /// What the device acts on; each must live as long as this object, or until another takes its place. Without
    /// them port writes go nowhere, nothing is displayed and no events are handled.
    void UsePort(Port& port) noexcept { port_ = &port; }
    void UseDisplay(DeviceDisplay& display) noexcept { display_ = &display; }
    void UseEventPump(EventPump& pump) noexcept { pump_ = &pump; }
    [[nodiscard]] Port& OutputPort() const noexcept { return *port_; }
    [[nodiscard]] DeviceDisplay& Display() const noexcept { return *display_; }

    Collection<cRegister>& Registers() noexcept { return registers_; }
    Collection<cPLL>& PLLs() noexcept { return plls_; }
    Collection<cPrgmBits>& PrgmBits() noexcept { return prgmBits_; }
    Collection<cPrgmPin>& PrgmPins() noexcept { return prgmPins_; }
    Collection<cBurst>& BurstCmds() noexcept { return burstCmds_; }
    Collection<cBurst>& MacroCmds() noexcept { return macroCmds_; }   ///< Stays empty.
    [[nodiscard]] const Collection<cRegister>& Registers() const noexcept { return registers_; }
    [[nodiscard]] const Collection<cPrgmBits>& PrgmBits() const noexcept { return prgmBits_; }
    [[nodiscard]] const Collection<cPrgmPin>& PrgmPins() const noexcept { return prgmPins_; }

    /// What was found wrong with the part file of the selected device.
    Problems& FileProblems() noexcept { return problems_; }

    /// Where in the part file its objects came from.
    FileItems& Items() noexcept { return items_; }

    /// Device name as selected; empty when no device is loaded.
    [[nodiscard]] const std::string& ID() const noexcept { return id_; }
    void ID(std::string name) {
        id_ = std::move(name);
        ++deviceNumber_;   // Its part file is another one.
    }
    [[nodiscard]] const std::string& InitFile() const noexcept { return initFile_; }   ///< Stored only.
    void InitFile(std::string file) { initFile_ = std::move(file); }

    /// Another number means another device. Who comes back behind something that lets events happen looks at it.
    [[nodiscard]] std::uint64_t DeviceNumber() const noexcept { return deviceNumber_; }

    // Wiring and framing of the serial load.
    [[nodiscard]] std::int16_t PortAddress() const noexcept { return portAddress_; }   ///< Base I/O address.
    void PortAddress(std::int16_t address) noexcept { portAddress_ = address; }
    [[nodiscard]] std::int16_t ClockPosition() const noexcept { return clockPosition_; }   ///< Port word of the line.
    void ClockPosition(std::int16_t word) noexcept { clockPosition_ = word; }
    [[nodiscard]] std::int16_t DataPosition() const noexcept { return dataPosition_; }
    void DataPosition(std::int16_t word) noexcept { dataPosition_ = word; }
    [[nodiscard]] std::int16_t LEPosition() const noexcept { return lePosition_; }
    void LEPosition(std::int16_t word) noexcept { lePosition_ = word; }
    [[nodiscard]] std::int16_t RegisterLength() const noexcept { return registerLength_; }   ///< Bits per register.
    void RegisterLength(std::int16_t bits);   ///< Rebuilds the rulers and the work buffer.
    [[nodiscard]] std::int16_t ControlLength() const noexcept { return controlLength_; }   ///< Lowest bits: address.
    void ControlLength(std::int16_t bits) noexcept { controlLength_ = bits; }
    [[nodiscard]] bool SBIEnable() const noexcept { return sbiEnable_; }   ///< Framed by start and stop sequences.
    void SBIEnable(bool on);
    [[nodiscard]] bool InvertClock() const noexcept { return invertClock_; }   ///< Data is taken at the falling edge.
    void InvertClock(bool on) noexcept { invertClock_ = on; }
    [[nodiscard]] bool HighByte() const noexcept { return highByte_; }   ///< Registers go out in pairs.
    void HighByte(bool on) noexcept { highByte_ = on; }
    [[nodiscard]] bool LEModeHigh() const noexcept { return leModeHigh_; }   ///< LE between loads, in bursts only.
    void LEModeHigh(bool on) noexcept { leModeHigh_ = on; }

    /// Member counts of one PLL's diagram; Lines 0 means that no PLL exists yet.
    [[nodiscard]] std::int16_t Lines() const noexcept { return lines_; }
    void Lines(std::int16_t count) noexcept { lines_ = count; }
    [[nodiscard]] std::int16_t Shapes() const noexcept { return shapes_; }
    [[nodiscard]] std::int16_t Labels() const noexcept { return labels_; }

    /// True while the program itself changes controls: handlers that see it take the event for no user's action.
    [[nodiscard]] bool Updating() const noexcept { return updating_; }
    void Updating(bool on) noexcept { updating_ = on; }

    // Making the device's items while the part file is read. LookupError for a name that exists already; nothing
    // is made then.
    void AddRegister(const std::string& name, std::int32_t mask, double v, bool lowByte,
                     const std::string& highLowRegister);
    void AddProgramPin(const std::string& name, std::int16_t line);
    void AddProgramBit(const std::string& name, const std::string& registerName, std::int16_t start,
                       std::int16_t length, bool display, std::string_view group = {});
    void AddCounter(const std::string& name, const std::string& registerName, std::int16_t start, std::int16_t length,
                    bool display, std::string_view group = {});
    void AddList(const std::string& prgmBitName, std::string_view group);

    // PLLs (defined in pll). SetupPLL and SetupFraction act on the PLL added last.
    void AddPLL(const std::string& name, const std::string& nBits, const std::string& rBits);
    void SetupPLL(const std::string& polarity, const std::string& gain, const std::string& state,
                  const std::string& nPrescaler, const std::string& rPrescaler);
    void SetupPLLFraction(const std::string& name, const std::string& numerator, const std::string& denominator);
    void SetupFraction(const std::string& numerator, const std::string& denominator);
    /// A page that is bound to no PLL, until ClearPLL. The counts are those of every diagram.
    void AddPLLTab(const std::string& name, std::int16_t lines, std::int16_t shapes, std::int16_t labels);

    // Redrawing. Each does nothing where there is nothing to show.
    void UpdatePLLDisplay();
    void UpdateRegisterDisplay();
    void UpdateBitDisplay();
    void UpdatePortDisplay();   ///< Also gives a line of 0 its usual place: Clock 1, Data 2, LE 4.
    void UpdateBurstDisplay();
    void DisplayBurstVector();   ///< The burst list as waveforms.
    void UpdateDisplays();       ///< PLLs, bits, registers, port, burst.

    /// Takes the whole device away.
    void ClearPLL();

    // Pins. The word changes; only UpdateOutputPins goes to the port.
    [[nodiscard]] std::int16_t OutputPinValue() const noexcept { return outputPinValue_; }
    void OutputPinValue(std::int16_t word);   ///< Each pin takes its bit from the word; other bits stay.
    void SetOutPins(std::int16_t word) noexcept;
    void ClearOutPins(std::int16_t word) noexcept;
    void ToggleOutPins(std::int16_t word) noexcept;
    void ResetOutputPins() noexcept { outputPinValue_ = 0; }
    void UpdateOutputPins();

    // What goes to the port when. Registers go in the order of the part file.
    void LoadChanges();   ///< Every register that is marked changed.
    /// The names of the registers that the last LoadChanges sent, in their order; of a pair both.
    [[nodiscard]] const std::vector<std::string>& SentChanges() const noexcept { return sentChanges_; }
    void LoadRegisterNumber(std::int16_t number);   ///< One, counted from 1; nothing beyond the registers.
    void LoadAll();
    /// How many registers have been shifted out so far, whatever for.
    [[nodiscard]] std::uint64_t ShiftCount() const noexcept { return shiftCount_; }

    // The serial load.
    /// Shifts a register out; of a pair both parts, the high one first, and `name` then names the low one.
    void LoadRegister(std::string& name);
    /// Shifts a number out like a register: its lowest RegisterLength bits, of a negative one those of its pattern.
    void LoadValue(double v);
    void StartSBILoad();
    void StopSBILoad();
    /// The read cycle of an SBI device for the register with that number: 0, for nothing is sampled; -1 without SBI.
    std::int32_t ReadRegister(std::int16_t number);

    // Binary strings; see BinaryString.h.
    [[nodiscard]] std::string ConvertBase10(double d, std::string_view newBaseDigits) const;
    [[nodiscard]] std::string ConvertBinaryToHex(std::string& binaryValue) const;
    [[nodiscard]] double BinaryToDecimal(std::string_view binaryValue) const;
    [[nodiscard]] std::string BinaryStringAnd(std::string_view one, std::string_view two) const;
    [[nodiscard]] std::string BinaryStringOr(std::string_view one, std::string_view two) const;
    [[nodiscard]] std::string BinaryStringNot(std::string_view one, std::optional<int> loopLen = {}) const;

    // The burst list (defined in burst). Positions count from 1.
    void AddBurstCommand(const std::string& name, std::int16_t kind, std::optional<std::int16_t> position = {});
    void ChangeBurstCommand(std::int16_t position, const std::string& name, std::int16_t kind);
    void DeleteBurstCommand(std::int16_t position);
    void DeleteBurstCommands();
    void RestoreBurstCommand(std::int16_t position);
    void RunBurstCommands();
    void StopBurstCommands() noexcept;
    [[nodiscard]] bool BurstRunning() const noexcept { return burstRunning_; }

    /// The field visits of the operation that is running on a bit field; see FieldVisit.h.
    [[nodiscard]] int& FieldVisits() noexcept { return fieldVisits_; }
    /// Keeps what the register holds before such an operation writes it.
    void NoteFieldWrite(cRegister& written);
    /// Ends the operation. If it failed, the registers are put back.
    void EndFieldVisits(bool failed) noexcept;

private:
    class BurstRun;

    template <class Make>
    void Send(Wiring wiring, Make make);
    [[nodiscard]] cRegister* PartnerOf(const cRegister& one) const;
    const cRegister& ShiftOut(cRegister* shifted, std::string& name);
    void ShowBurst(bool vectors);
    template <class Show>
    void Redraw(Show show);
    void SendAddressWord();
    std::unique_ptr<cPrgmBits> MakeField(const std::string& name, const std::string& registerName, std::int16_t start,
                                         std::int16_t length, bool display);

    Port* port_;
    DeviceDisplay* display_;
    EventPump* pump_;
    Collection<cRegister> registers_{"register"};
    Collection<cPLL> plls_{"PLL"};
    Collection<cPrgmBits> prgmBits_{"bit field"};
    Collection<cPrgmPin> prgmPins_{"pin"};
    Collection<cBurst> burstCmds_{"burst command"};
    Collection<cBurst> macroCmds_{"macro command"};
    Problems problems_;
    FileItems items_;
    std::uint64_t deviceNumber_ = 0;
    std::string id_;
    std::string initFile_;
    Waveform waveform_;
    std::vector<std::string> sentChanges_;
    std::uint64_t shiftCount_ = 0;
    std::vector<std::pair<cRegister*, cRegister::State>> fieldWrites_;   ///< Of the operation, in its order.
    int fieldVisits_ = 0;
    std::int16_t portAddress_ = 0;
    std::int16_t clockPosition_ = 0;
    std::int16_t dataPosition_ = 0;
    std::int16_t lePosition_ = 0;
    std::int16_t outputPinValue_ = 0;
    std::int16_t registerLength_ = 20;
    std::int16_t controlLength_ = 2;
    std::int16_t lines_ = 0;
    std::int16_t shapes_ = 0;
    std::int16_t labels_ = 0;
    bool sbiEnable_ = false;
    bool invertClock_ = false;
    bool highByte_ = false;
    bool leModeHigh_ = false;
    bool updating_ = false;
    bool burstRunning_ = false;
    bool stopRequested_ = false;
};
