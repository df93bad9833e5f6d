#include <QScopedValueRollback>

#include "core/Errors.h"
#include "core/FieldEntry.h"
#include "core/Numbers.h"
#include "ui/bits/BitsPage.h"
#include "ui/bits/FieldHelp.h"

// What the page shows. A field that can't be read leaves its own controls disabled, with the reason as tool tip.

namespace {

QString LineName(int line) {
    constexpr int kFirstControl = 8;
    return line < kFirstControl ? QStringLiteral("D%1").arg(line) : QStringLiteral("C%1").arg(line - kFirstControl + 1);
}

/// What the two states of a switch mean, if its list names them.
std::string StatesOf(const cPrgmBits& field) {
    if (field.Length() != 1 || !field.HasStringList() || field.HasValueList()) {
        return {};
    }
    return "unchecked: " + field.StringList()[0] + ", checked: " + field.StringList()[1];
}

std::string Lines(const std::string& first, const std::string& second) {
    return first + (first.empty() || second.empty() ? "" : "\n") + second;
}

}   // namespace

template <class Show>
void BitsPage::ForEach(Kind kind, Show show) {
    const auto& members = Members(kind);
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (members[i].used) {
            show(static_cast<int>(i));
        }
    }
}

/// All controls of the device are there now, and their fields are described.
void BitsPage::Finish() {
    unfinished_ = false;
    for (const Kind kind : {Kind::Bit, Kind::Counter, Kind::List, Kind::Pin}) {
        ForEach(kind, [&](int index) { Explain(kind, index); });
    }
    OrderTabs();
    board_->Arrange();
}

void BitsPage::ShowBits() {
    if (unfinished_) {
        Finish();
    }
    ForEach(Kind::Bit, [&](int index) { ShowCheckBox(index); });
    ShowPins();
    ForEach(Kind::Counter, [&](int index) { ShowCounter(index); });
    int refused = 0;
    ForEach(Kind::List, [&](int index) { refused += ShowList(index) ? 1 : 0; });
    for (; refused > 0; --refused) {
        host_.Asking().MessageBox("Unable to set ListIndex", "", MessageIcon::None);
    }
}

void BitsPage::Freshen() {
    const QScopedValueRollback<bool> keep(keepEdited_, true);
    host_.Device().UpdateBitDisplay();
}

/// A device without fields refreshes nothing by itself, and pins are moved to other lines on another page.
void BitsPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ShowPins();
    ForEach(Kind::Pin, [&](int index) { Explain(Kind::Pin, index); });
}

/// Reads what a control shows; false, and the control is marked, if the device doesn't allow it.
template <class Read>
bool BitsPage::Try(Kind kind, int index, Read read) {
    std::string failure;
    try {
        read();
    } catch (const UserError& error) {
        failure = error.what();
    }
    if (!failure.empty() || At(kind, index).failed) {
        Mark(kind, index, failure);
    }
    return failure.empty();
}

void BitsPage::Mark(Kind kind, int index, const std::string& failure) {
    At(kind, index).failed = !failure.empty();
    for (QWidget* control : ControlsOf(kind, index)) {
        control->setEnabled(failure.empty());
        control->setToolTip(ToolTipText(Qt8(failure)));
    }
    Explain(kind, index);
}

/// Brings the tool tip up to date. That of a control which can't be used says why, and stays.
void BitsPage::Explain(Kind kind, int index) {
    const Member& member = At(kind, index);
    if (!member.used || member.failed) {
        return;
    }
    const QString text = ToolTipText(Qt8(Hint(kind, member)));
    for (QWidget* control : ControlsOf(kind, index)) {
        control->setToolTip(text);
    }
}

std::string BitsPage::Hint(Kind kind, const Member& member) {
    if (kind == Kind::Pin) {
        const cPrgmPin* pin = host_.Device().PrgmPins().Find(member.name);
        return pin == nullptr ? "" : tr("Output line %1; checked: high").arg(LineName(pin->Position())).toStdString();
    }
    const cPrgmBits* field = host_.Device().PrgmBits().Find(member.name);
    if (field == nullptr) {
        return {};
    }
    const std::string range = kind == Kind::Counter ? FieldLimits(*field) : kind == Kind::Bit ? StatesOf(*field) : "";
    return Lines(field->Description(), range);
}

void BitsPage::ShowCheckBox(int index) {
    bool checked = false;
    Try(Kind::Bit, index, [&] { checked = Field(Kind::Bit, index).Value() != 0; });
    chkPrgmBit_[index]->setChecked(checked);
}

void BitsPage::ShowPin(int index) {
    bool checked = false;
    Try(Kind::Pin, index, [&] { checked = host_.Device().PrgmPins().At(At(Kind::Pin, index).name).Enabled(); });
    chkPrgmPin_[index]->setChecked(checked);
}

void BitsPage::ShowPins() {
    ForEach(Kind::Pin, [&](int index) { ShowPin(index); });
}

void BitsPage::ShowCounter(int index) {
    std::string text = "?";
    Try(Kind::Counter, index, [&] { text = Field(Kind::Counter, index).Text(); });
    TextBox* box = txtCntrVal_[index];
    keepEdited_ ? box->Freshen(Qt8(text)) : box->ShowText(Qt8(text));
}

/// True if the list refuses an index and the user hasn't been told yet: a refresh that nobody sees doesn't count.
bool BitsPage::ShowList(int index) {
    double bits = -1;   // No entry, as with a constant.
    Try(Kind::List, index, [&] { bits = Field(Kind::List, index).BitValue(); });
    Member& member = At(Kind::List, index);
    QComboBox* list = cmbBits_[index];
    const bool fits = bits < list->count();
    list->setPlaceholderText(fits ? QString() : tr("%1 (not in the list)").arg(Qt8(GeneralText(bits))));
    list->setCurrentIndex(fits && bits >= 0 ? static_cast<int>(bits) : -1);
    if (fits) {
        member.refused.reset();
        return false;
    }
    host_.Note(tr("List '%1': the bits hold %2, but its entries are 0 to %3")
                   .arg(Qt8(member.name), Qt8(GeneralText(bits)))
                   .arg(list->count() - 1));
    return host_.Asking().Attended() && std::exchange(member.refused, bits) != bits;
}
