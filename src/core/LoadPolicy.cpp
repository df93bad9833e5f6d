#include "core/cPart.h"

// Which registers go out, and in which order. On an SBI device a frame opens with the address word, which is the
// first register, and each register follows its number.

void cPart::SendAddressWord() {
    if (cRegister* address = registers_.Find(1)) {
        std::string name = address->ID();
        ShiftOut(address, name);
    }
}

void cPart::LoadChanges() {
    bool started = false;
    sentChanges_.clear();
    for (int i = 1; i <= registers_.Count(); ++i) {
        cRegister& changed = registers_.At(i);
        if (!changed.Change()) {
            continue;
        }
        if (sbiEnable_) {
            if (!started) {
                StartSBILoad();
                SendAddressWord();
                started = true;
            }
            LoadValue(i);
        }
        std::string name = changed.ID();
        if (const cRegister& first = ShiftOut(&changed, name); first.ID() != name) {
            sentChanges_.push_back(first.ID());
        }
        sentChanges_.push_back(name);
    }
    if (started) {
        StopSBILoad();
    }
}

void cPart::LoadRegisterNumber(std::int16_t number) {
    cRegister* loaded = registers_.Find(number);
    if (loaded == nullptr) {
        return;
    }
    if (sbiEnable_) {
        StartSBILoad();
    }
    std::string name = loaded->ID();
    ShiftOut(loaded, name);
    if (sbiEnable_) {
        StopSBILoad();
    }
}

void cPart::LoadAll() {
    if (registers_.Count() == 0) {
        return;
    }
    if (sbiEnable_) {
        StartSBILoad();
        SendAddressWord();
    }
    for (int i = 1; i <= registers_.Count(); ++i) {
        if (sbiEnable_) {
            LoadValue(i);
        }
        cRegister& loaded = registers_.At(i);
        std::string name = loaded.ID();
        ShiftOut(&loaded, name);
    }
    if (sbiEnable_) {
        StopSBILoad();
    }
}
