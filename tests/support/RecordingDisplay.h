#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/DeviceDisplay.h"
#include "core/cPart.h"

/// A display that keeps what it was told, a line for each call; "*" in front where the device was updating.
class RecordingDisplay final : public DeviceDisplay {
public:
    explicit RecordingDisplay(const cPart& part) : part_(part) {}

    std::vector<std::string> Take() { return std::exchange(calls_, {}); }

    void ShowPLLs() override { Note("ShowPLLs"); }
    void ShowBits() override { Note("ShowBits"); }
    void ShowRegisters() override { Note("ShowRegisters"); }
    void ShowPort() override { Note("ShowPort"); }
    void ShowBurst(bool vectors) override { Note(vectors ? "ShowBurst vectors" : "ShowBurst"); }
    void ClearForm() override { Note("ClearForm " + part_.ID()); }
    void RemovePLLPages() override { Note("RemovePLLPages"); }
    void RebuildRulers() override { Note("RebuildRulers " + std::to_string(part_.RegisterLength())); }
    void AddRegisterRow(const cRegister& added) override { Note("row " + added.ID()); }
    void AddPinBox(const cPrgmPin& added) override { Note("pin " + added.ID()); }
    void AddCheckBox(const cPrgmBits& added, std::string_view group) override { Note("check " + Placed(added, group)); }
    void AddCounterBox(const cPrgmBits& added, std::string_view group) override {
        Note("count " + Placed(added, group));
    }
    void AddListBox(const cPrgmBits& field, std::string_view group) override { Note("list " + Placed(field, group)); }
    void AddPLLPage(int index, const std::string& name) override { Note("page " + std::to_string(index) + ' ' + name); }
    void AddFreePLLPage(const std::string& name) override { Note("free page " + name); }
    void BindPLLBlocks(int index, const PLLBlocks& b) override {
        Note("blocks " + std::to_string(index) + ' ' + b.polarity + ',' + b.gain + ',' + b.state + ',' + b.nPrescaler +
             ',' + b.rPrescaler);
    }
    void BindFraction(int index, const std::string& numerator, const std::string& denominator) override {
        Note("fraction " + std::to_string(index) + ' ' + numerator + ',' + denominator);
    }
    void ShowBurstRunning(bool running) override { Note(running ? "running" : "stopped"); }
    void ShowVersion(const std::string& version, const std::string& description) override {
        Note("version " + version + '|' + description);
    }

private:
    void Note(const std::string& call) { calls_.push_back((part_.Updating() ? "*" : "") + call); }
    static std::string Placed(const cPrgmBits& field, std::string_view group) {
        return field.ID() + '/' + std::to_string(field.ArrayCount()) + " in " + std::string(group);
    }

    const cPart& part_;
    std::vector<std::string> calls_;
};
