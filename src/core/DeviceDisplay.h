#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class cPLL;
class cPrgmBits;
class cPrgmPin;
class cRegister;

/// The names of the bit fields behind the labels of one PLL's block diagram; empty for none.
struct PLLBlocks {
    std::string polarity;   ///< Phase detector polarity.
    std::string gain;       ///< Charge pump gain.
    std::string state;      ///< Charge pump state.
    std::string nPrescaler;
    std::string rPrescaler;
};

/// All that the model makes happen on a screen. The window implements it; this class itself is the silent
/// display, so that the model never asks whether there is a screen. The Show operations only draw what the model
/// says now. None of them may change the device, but reading a PLL's frequencies repairs an R of 0.
class DeviceDisplay {
public:
    DeviceDisplay() = default;
    DeviceDisplay(const DeviceDisplay&) = delete;
    DeviceDisplay& operator=(const DeviceDisplay&) = delete;
    virtual ~DeviceDisplay() = default;

    virtual void ShowPLLs() {}
    virtual void ShowBits() {}
    virtual void ShowRegisters() {}
    virtual void ShowPort() {}
    virtual void ShowBurst([[maybe_unused]] bool vectors) {}   ///< The burst list, as descriptions or as waveforms.

    /// Back to the empty window; settings and recent list of the device that goes are kept first.
    virtual void ClearForm() {}
    /// Takes away the pages of all PLLs but the first.
    virtual void RemovePLLPages() {}

    virtual void RebuildRulers() {}   ///< The register length changed.
    virtual void AddRegisterRow([[maybe_unused]] const cRegister& added) {}
    virtual void AddPinBox([[maybe_unused]] const cPrgmPin& added) {}
    virtual void AddCheckBox([[maybe_unused]] const cPrgmBits& added, [[maybe_unused]] std::string_view group) {}
    virtual void AddCounterBox([[maybe_unused]] const cPrgmBits& added, [[maybe_unused]] std::string_view group) {}
    virtual void AddListBox([[maybe_unused]] const cPrgmBits& field, [[maybe_unused]] std::string_view group) {}

    /// The PLL with that index, counted from 0, takes its page: index 0 the one that is always there, each
    /// further one a new page of its name. The page becomes current.
    virtual void AddPLLPage([[maybe_unused]] int index, [[maybe_unused]] const std::string& name) {}
    /// A page with a PLL's diagram that belongs to no PLL, behind those that do. It goes with them, and becomes
    /// current.
    virtual void AddFreePLLPage([[maybe_unused]] const std::string& name) {}
    virtual void BindPLLBlocks([[maybe_unused]] int index, [[maybe_unused]] const PLLBlocks& blocks) {}
    /// Shows the fraction bound to these fields, or takes it away if the numerator's name is empty.
    virtual void BindFraction([[maybe_unused]] int index, [[maybe_unused]] const std::string& numerator,
                              [[maybe_unused]] const std::string& denominator) {}

    /// A burst run has begun or ended.
    virtual void ShowBurstRunning([[maybe_unused]] bool running) {}
    /// After each pass: how many passes and port writes this run has made.
    virtual void ShowBurstProgress([[maybe_unused]] std::uint64_t passes, [[maybe_unused]] std::uint64_t writes) {}
    /// Whether the user wants a run to go round until it is stopped.
    [[nodiscard]] virtual bool BurstLoops() const { return false; }

    // What reading a part file makes visible besides the device's own items.
    virtual void ShowDeviceName([[maybe_unused]] const std::string& name) {}
    virtual void ShowVersion([[maybe_unused]] const std::string& version,
                             [[maybe_unused]] const std::string& description) {}
    virtual void ShowSBIButtons() {}
    virtual void ShowBurstControls() {}
    virtual void AddMode([[maybe_unused]] int index, [[maybe_unused]] const std::string& caption) {}
};
