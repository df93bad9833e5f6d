#pragma once

#include <string>

#include "core/DeviceDisplay.h"
#include "support/FakePort.h"

/// Notes what is drawn, and "load" where the port was written in between.
class OrderDisplay final : public DeviceDisplay {
public:
    explicit OrderDisplay(const FakePort& port) : port_(port) {}
    void ShowPLLs() override { Note("plls"); }
    void ShowBits() override { Note("bits"); }
    void ShowRegisters() override { Note("registers"); }
    void ShowPort() override { Note("port"); }
    void ShowBurst(bool /*vectors*/) override { Note("burst"); }

    [[nodiscard]] std::string Order() {
        NoteLoad();
        return order_;
    }

private:
    void Note(const std::string& what) {
        NoteLoad();
        order_ += what + ' ';
    }
    void NoteLoad() {
        if (port_.Writes().size() != seen_) {
            seen_ = port_.Writes().size();
            order_ += "load ";
        }
    }

    const FakePort& port_;
    std::size_t seen_ = 0;
    std::string order_;
};
