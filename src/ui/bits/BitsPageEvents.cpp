#include "core/Errors.h"
#include "core/FieldEntry.h"
#include "ui/bits/BitsPage.h"

// What the page's controls do. After a change the displays are refreshed, and then the device is loaded if the user
// wants that.

cPrgmBits& BitsPage::Field(Kind kind, int index) {
    return host_.Device().PrgmBits().At(At(kind, index).name);
}

/// A change that fails half-way, say at a mirror field that doesn't exist, is told; what it did is shown and loaded.
template <class Operation>
void BitsPage::Change(Operation operation) {
    try {
        operation();
    } catch (const UserError& error) {
        host_.Note(Qt8(error.what()));
    }
}

void BitsPage::RefreshBitsFirst() {
    host_.Device().UpdateBitDisplay();
    host_.Device().UpdateRegisterDisplay();
    host_.Device().UpdatePLLDisplay();
}

void BitsPage::LoadChanges() {
    if (host_.AutoReloadChange()) {
        host_.Device().LoadChanges();
    }
}

void BitsPage::chkPrgmBit_Click(int index) {
    if (host_.Device().Updating()) {
        ShowCheckBox(index);   // The click has changed the mark already.
        return;
    }
    Change([&] { Field(Kind::Bit, index).ToggleBit(); });
    host_.Device().UpdateRegisterDisplay();
    host_.Device().UpdateBitDisplay();
    host_.Device().UpdatePLLDisplay();
    LoadChanges();
}

void BitsPage::cmbBits_Click(int index) {
    if (host_.Device().Updating()) {
        ShowList(index);
        return;
    }
    Change([&] { Field(Kind::List, index).BitValue(cmbBits_[index]->currentIndex()); });
    RefreshBitsFirst();
    LoadChanges();
}

void BitsPage::spnCntr_UpClick(int index) {
    Change([&] { Field(Kind::Counter, index).Increment(); });
    RefreshBitsFirst();
    LoadChanges();
}

void BitsPage::spnCntr_DownClick(int index) {
    Change([&] { Field(Kind::Counter, index).Decrement(); });
    RefreshBitsFirst();
    LoadChanges();
}

void BitsPage::txtCntrVal_KeyPress(int index) {
    const cPrgmBits& field = Field(Kind::Counter, index);
    if (!txtCntrVal_[index]->Edited()) {
        ShowCounter(index);   // What somebody else has set meanwhile isn't taken back.
    }
    const QString text = txtCntrVal_[index]->text();
    if (const auto number = ParseFieldEntry(field, text.toStdString())) {
        EnterValue(index, *number);
        return;
    }
    ShowCounter(index);
    host_.Note(
        tr("'%1' is no number: '%2' stays at %3").arg(text.trimmed(), Qt8(field.ID()), txtCntrVal_[index]->text()));
}

/// What was asked and what is stored is told before the load, which leaves the status bar alone.
void BitsPage::EnterValue(int index, double asked) {
    std::string note;
    host_.Note({});
    Change([&] {
        cPrgmBits& field = Field(Kind::Counter, index);
        field.Value(asked);
        note = FieldEntryNote(field, asked);
    });
    RefreshBitsFirst();
    if (!note.empty()) {
        host_.Note(Qt8(note));
    }
    LoadChanges();
}

void BitsPage::chkPrgmPin_Click(int index) {
    if (host_.Device().Updating()) {
        ShowPin(index);
        return;
    }
    Change([&] { host_.Device().PrgmPins().At(At(Kind::Pin, index).name).Toggle(); });
    host_.Device().UpdateBitDisplay();
    ShowPins();   // Also where the device has no fields, and so nothing was refreshed.
    if (host_.AutoReloadChange()) {
        host_.Device().UpdateOutputPins();
    }
}

void BitsPage::ShowHelp(Kind kind, int index) {
    const std::string& text = Field(kind, index).Description();
    host_.Asking().MessageBox(text.empty() ? "No Description Available" : text, "Help", MessageIcon::None);
}
