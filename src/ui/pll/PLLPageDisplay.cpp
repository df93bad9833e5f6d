#include <QScopedValueRollback>
#include <array>
#include <utility>

#include "core/Errors.h"
#include "core/Numbers.h"
#include "pll/DeviceState.h"
#include "pll/EntryTexts.h"
#include "pll/PrescalerCheck.h"
#include "pll/cPLL.h"
#include "ui/pll/PLLPage.h"

// What the page is bound to, and how it shows that. What the user does with it is in PLLPage.cpp.

namespace {

constexpr std::array kBoxes{EntryBox::Osc,      EntryBox::VCO,      EntryBox::Fpd,     EntryBox::RCounter,
                            EntryBox::NCounter, EntryBox::FractNum, EntryBox::FractDen};

std::size_t Place(EntryBox box) {
    return static_cast<std::size_t>(box);
}

void ShowTip(QWidget& control, const QString& tip) {
    if (control.toolTip() != tip) {
        control.setToolTip(tip);
    }
}

}   // namespace

void PLLPage::Bind(const QString& pll) {
    pll_ = pll.toStdString();
    miss_.reset();
    hintsStale_ = true;
}

void PLLPage::BindBlocks(const PLLBlocks& blocks) {
    BindBlock(DiagramBlock::PDPol, blocks.polarity, "+");
    BindBlock(DiagramBlock::CPGain, blocks.gain, "Icp");
    BindBlock(DiagramBlock::CPState, blocks.state, "Active");
    diagram_->Block(DiagramBlock::RPrescale).Tag(blocks.rPrescaler);
    diagram_->Block(DiagramBlock::NPrescale).Tag(blocks.nPrescaler);
    diagram_->ShowRPrescaler(!blocks.rPrescaler.empty());
    diagram_->ShowNPrescaler(!blocks.nPrescaler.empty());
}

/// A block without a field shows a fixed text and can't be switched.
void PLLPage::BindBlock(DiagramBlock block, const std::string& field, const char* withoutField) {
    BlockLabel& label = diagram_->Block(block);
    label.Tag(field);
    label.setEnabled(!field.empty());
    if (field.empty()) {
        label.setText(QString::fromLatin1(withoutField));
        ShowTip(label, tr("%1: can't be set on this device").arg(label.accessibleName()));
    }
}

void PLLPage::BindFraction(const std::string& numerator, const std::string& denominator) {
    diagram_->ShowFraction(!numerator.empty());
    if (numerator.empty()) {
        return;
    }
    numerator_ = numerator;
    denominator_ = denominator;
    if (denominator.empty()) {
        diagram_->Box(EntryBox::FractDen).ShowText({});
    }
}

void PLLPage::Unbind() {
    for (const DiagramBlock block : kDiagramBlocks) {
        diagram_->Block(block).Tag({});
    }
    pll_.clear();
    numerator_.clear();
    denominator_.clear();
    miss_.reset();
    faults_.fill({});
}

std::string PLLPage::OscText() const {
    return diagram_->Box(EntryBox::Osc).text().toStdString();
}

void PLLPage::ShowPLL() {
    if (pll_.empty()) {
        return;
    }
    const auto pll = [this]() -> cPLL& { return host_.Device().PLLs().At(pll_); };
    const auto field = [this](const std::string& name) { return host_.Device().PrgmBits().At(name).Value(); };
    ShowBlock(DiagramBlock::RPrescale);
    ShowBlock(DiagramBlock::NPrescale);
    ShowNumber(EntryBox::RCounter, [&] { return pll().RValue(); });
    ShowNumber(EntryBox::NCounter, [&] { return pll().NValue(); });
    ShowBlock(DiagramBlock::PDPol);
    ShowBlock(DiagramBlock::CPGain);
    ShowBlock(DiagramBlock::CPState);
    if (!numerator_.empty()) {
        ShowNumber(EntryBox::FractNum, [&] { return field(numerator_); });
    }
    if (!denominator_.empty()) {
        ShowNumber(EntryBox::FractDen, [&] { return field(denominator_); });
    }
    ShowNumber(EntryBox::Osc, [&] { return pll().XtalFrequency(); });
    ShowNumber(EntryBox::Fpd, [&] { return pll().PDFrequency(); });
    ShowNumber(EntryBox::VCO, [&] { return pll().VCOFrequency(); });
    ShowCheck();
    if (miss_ && miss_->state != DeviceState(host_.Device())) {
        miss_.reset();
        hintsStale_ = true;
    }
    if (std::exchange(hintsStale_, false)) {
        ShowHints();
    }
}

void PLLPage::Freshen() {
    const QScopedValueRollback<bool> keep(keepEdited_, true);
    ShowPLL();
}

/// A number that can't be read leaves its box empty, with the reason in its tool tip.
template <class Read>
void PLLPage::ShowNumber(EntryBox box, Read&& read) {
    QString text;
    QString fault;
    try {
        text = Qt8(GeneralText(read()));
    } catch (const UserError& error) {
        fault = Qt8(error.what());
    }
    TextBox& shown = diagram_->Box(box);
    hintsStale_ = hintsStale_ || fault != faults_[Place(box)] || text != shown.text();
    keepEdited_ ? shown.Freshen(text) : shown.ShowText(text);
    faults_[Place(box)] = fault;
}

void PLLPage::ShowBlock(DiagramBlock block) {
    BlockLabel& label = diagram_->Block(block);
    if (label.Tag().empty()) {
        return;
    }
    QString text;
    QString tip;
    try {
        text = Qt8(host_.Device().PrgmBits().At(label.Tag()).Text());
        tip = tr("%1: %2. A click, Space or Enter switches on to the next setting.").arg(label.accessibleName(), text);
    } catch (const UserError& error) {
        tip = Qt8(error.what());
    }
    if (label.text() != text) {
        label.setText(text);
    }
    ShowTip(label, tip);
}

/// The check reads what the page shows.
void PLLPage::ShowCheck() {
    const BlockLabel& prescaler = diagram_->Block(DiagramBlock::NPrescale);
    const PrescalerMode mode = prescaler.isHidden() ? PrescalerMode::None : host_.PrescalerCheck();
    diagram_->ShowCheck(
        CheckPrescaler(mode, diagram_->Box(EntryBox::NCounter).text().toStdString(), prescaler.text().toStdString()));
}

/// What each box takes, at the settings of the moment, and what became of the last entry.
void PLLPage::ShowHints() {
    for (const EntryBox box : kBoxes) {
        if (diagram_->Box(box).isHidden()) {
            continue;
        }
        QString tip = faults_[Place(box)];
        if (tip.isEmpty()) {
            tip = Qt8(EntryHint(host_.Device(), index_, box));
        }
        if (miss_ && miss_->box == box) {
            tip += QLatin1Char('\n') + miss_->text;
        }
        ShowTip(diagram_->Box(box), tip);
    }
}
