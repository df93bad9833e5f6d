#include "ui/pll/PLLDiagramView.h"

#include <QEvent>
#include <QFontInfo>
#include <QFontMetrics>
#include <algorithm>
#include <cmath>

#include "ui/controls/Spinner.h"
#include "ui/window/PageHost.h"

namespace {

// The size of a sign that fills its circle: as given, and in proportion where the font is larger than usual.
constexpr double kSignPoints = 24;
constexpr double kSignRatio = 2.2;
// Spinners by their place in the table.
constexpr std::size_t kNumeratorSpinner = 3;
constexpr std::size_t kDenominatorSpinner = 4;

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

/// Names a control as member `index` of its array.
void Name(QWidget* control, const char* array, std::size_t index, const char* words) {
    control->setObjectName(QStringLiteral("%1(%2)").arg(Text(array)).arg(index));
    control->setAccessibleName(Text(words));
}

std::size_t Member(int index, std::size_t count, std::size_t k) {
    return static_cast<std::size_t>(index) * count + k;
}

int TextFlags(LabelLook look) {
    return look == LabelLook::Title ? Qt::TextWordWrap : 0;
}

}   // namespace

PLLDiagramView::PLLDiagramView(int index, QWidget* parent) : QWidget(parent) {
    AddFigures(index);   // Behind everything else.
    AddLabels(index);
    AddBoxes(index);
    AddSpinners(index);
    AddCheck(index);
    OrderTabs();
    ShowRPrescaler(false);
    ShowNPrescaler(false);
    ShowFraction(false);
}

/// Fitting the grid to the font takes a while, so a page that nobody looks at isn't arranged.
void PLLDiagramView::showEvent(QShowEvent* event) {
    if (!arranged_) {
        Arrange();
    }
    QWidget::showEvent(event);
}

void PLLDiagramView::AddFigures(int index) {
    for (std::size_t k = kShapeRows.size(); k-- > 0;) {   // The device's outline, the last one, lies lowest.
        shapes_[k] = new DiagramShape(kShapeRows[k].figure, this);
        Name(shapes_[k], "shpPLL", Member(index, kShapeRows.size(), k), kShapeRows[k].name);
    }
    for (std::size_t k = 0; k < kLineRows.size(); ++k) {
        lines_[k] = new DiagramLine(this);
        Name(lines_[k], "linPLL", Member(index, kLineRows.size(), k), kLineRows[k].name);
    }
}

void PLLDiagramView::AddLabels(int index) {
    for (std::size_t k = 0; k < kLabelRows.size(); ++k) {
        const DiagramLabelRow& row = kLabelRows[k];
        auto* label = new QLabel(Text(row.text), this);
        Name(label, "lblPLL", Member(index, kLabelRows.size(), k), row.text);
        label->setAlignment(row.look == LabelLook::Beside ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
        label->setWordWrap(row.look == LabelLook::Title);
        label->setToolTip(Text(row.tip));
        label->setAttribute(Qt::WA_TransparentForMouseEvents, row.look == LabelLook::Sign);
        labels_[k] = label;
    }
    labels_[DiagramMembers::kLabelDo]->hide();
    for (std::size_t k = 0; k < kBlockRows.size(); ++k) {
        const DiagramControlRow& row = kBlockRows[k];
        blocks_[k] = new BlockLabel(this);
        blocks_[k]->setText(Text(row.text));
        Name(blocks_[k], row.name, static_cast<std::size_t>(index), row.words);
    }
    for (const DiagramBlock block : {DiagramBlock::PDPol, DiagramBlock::CPGain, DiagramBlock::CPState}) {
        Block(block).setEnabled(false);
    }
}

void PLLDiagramView::AddBoxes(int index) {
    for (std::size_t k = 0; k < kBoxRows.size(); ++k) {
        const DiagramControlRow& row = kBoxRows[k];
        boxes_[k] = new TextBox(this);
        boxes_[k]->setAlignment(Qt::AlignRight);
        boxes_[k]->ShowText(Text(row.text));
        Name(boxes_[k], row.name, static_cast<std::size_t>(index), row.words);
    }
}

void PLLDiagramView::AddSpinners(int index) {
    for (std::size_t k = 0; k < kSpinnerRows.size(); ++k) {
        const DiagramControlRow& row = kSpinnerRows[k];
        auto* spinner = new Spinner(this);
        Name(spinner, row.name, static_cast<std::size_t>(index), row.words);
        spinner->Name(Text(row.words));
        spinner->setToolTip(Text(row.text));
        const int which = static_cast<int>(k);
        connect(spinner, &Spinner::Up, this, [this, which] { emit Stepped(which, true); });
        connect(spinner, &Spinner::Down, this, [this, which] { emit Stepped(which, false); });
        spinners_[k] = spinner;
    }
}

void PLLDiagramView::AddCheck(int index) {
    checkFrame_ = new DiagramShape(kCheckFrameRow.figure, this);
    Name(checkFrame_, "shpPreChk", static_cast<std::size_t>(index), kCheckFrameRow.name);
    for (std::size_t k = 0; k < kCheckValues; ++k) {
        checkLabels_[k] = new QLabel(Text(kCheckLabelRows[k].text), this);
        Name(checkLabels_[k], kCheckLabelRows[k].name, static_cast<std::size_t>(index), kCheckLabelRows[k].text);
        checkBoxes_[k] = new CheckValueBox(this);
        Name(checkBoxes_[k], kCheckBoxRows[k].name, static_cast<std::size_t>(index), kCheckBoxRows[k].words);
    }
}

/// Along the signal: the R path, the phase detector frequency, the N path, out to the loop filter, the VCO.
void PLLDiagramView::OrderTabs() {
    const auto [osc, vco, fpd, r, n, numerator, denominator] = boxes_;
    const auto [rPrescaler, nPrescaler, polarity, gain, state] = blocks_;
    const std::array<QWidget*, 20> order{osc,
                                         rPrescaler,
                                         r,
                                         spinners_[0],
                                         fpd,
                                         spinners_[1],
                                         nPrescaler,
                                         n,
                                         spinners_[2],
                                         numerator,
                                         spinners_[3],
                                         denominator,
                                         spinners_[4],
                                         polarity,
                                         gain,
                                         state,
                                         vco,
                                         checkBoxes_[2],
                                         checkBoxes_[1],
                                         checkBoxes_[0]};
    for (std::size_t i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
}

void PLLDiagramView::ShowRPrescaler(bool shown) {
    rPrescaler_ = shown;
    labels_[DiagramMembers::kLabelRPrescaler]->setVisible(shown);
    shapes_[DiagramMembers::kShapeRPrescaler]->setVisible(shown);
    Block(DiagramBlock::RPrescale).setVisible(shown);
    RunLine(DiagramMembers::kLineToR);
}

void PLLDiagramView::ShowNPrescaler(bool shown) {
    nPrescaler_ = shown;
    labels_[DiagramMembers::kLabelNPrescaler]->setVisible(shown);
    shapes_[DiagramMembers::kShapeNPrescaler]->setVisible(shown);
    Block(DiagramBlock::NPrescale).setVisible(shown);
    RunLine(DiagramMembers::kLineToN);
}

void PLLDiagramView::ShowFraction(bool shown) {
    labels_[DiagramMembers::kLabelFraction]->setVisible(shown);
    lines_[DiagramMembers::kFractionBar]->setVisible(shown);
    Box(EntryBox::FractNum).setVisible(shown);
    Box(EntryBox::FractDen).setVisible(shown);
    spinners_[kNumeratorSpinner]->setVisible(shown);
    spinners_[kDenominatorSpinner]->setVisible(shown);
}

void PLLDiagramView::ShowCheck(const PrescalerResult& result) {
    using View = PrescalerResult::View;
    checkFrame_->setVisible(result.view != View::Hidden);
    if (result.view == View::Frame) {
        for (CheckValueBox* box : checkBoxes_) {
            box->Broken(false);
        }
        return;
    }
    ShowValue(0, result.a, result.aBroken);
    ShowValue(1, result.b, result.bBroken);
    ShowValue(2, result.c, false);
    if (checkHasC_ != result.c.has_value()) {
        checkHasC_ = result.c.has_value();
        PlaceCheck();
    }
}

/// Without C the others move up to the left, and the frame ends behind A all the same.
void PLLDiagramView::PlaceCheck() {
    const int moved = checkHasC_ ? 0 : kCheckBoxRows[1].at.x - kCheckBoxRows[2].at.x;
    const auto shifted = [moved](DiagramPlace at) {
        at.x -= moved;
        return at;
    };
    for (std::size_t k = 0; k < kCheckValues; ++k) {
        checkBoxes_[k]->setGeometry(At(shifted(kCheckBoxRows[k].at)));
        checkLabels_[k]->setGeometry(At(shifted(kCheckLabelRows[k].at)));
    }
    DiagramPlace frame = kCheckFrameRow.at;
    frame.w -= moved;
    checkFrame_->Place(At(frame), unit_);
}

void PLLDiagramView::ShowValue(std::size_t value, const std::optional<std::string>& text, bool broken) {
    CheckValueBox& box = *checkBoxes_[value];
    box.setVisible(text.has_value());
    checkLabels_[value]->setVisible(text.has_value());
    if (text && box.text() != Qt8(*text)) {
        box.setText(Qt8(*text));
    }
    if (box.Broken() != broken) {
        box.Broken(broken);
        const QString tip = broken ? tr("Too large: the prescaler can't reach this N") : QString();
        box.setToolTip(tip);
        box.setAccessibleDescription(tip);
    }
}

void PLLDiagramView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (arranged_ && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)) {
        Arrange();
    }
}

void PLLDiagramView::Arrange() {
    arranged_ = true;
    unit_ = FindUnit();
    for (std::size_t k = 0; k < lines_.size(); ++k) {
        RunLine(k);
    }
    for (std::size_t k = 0; k < shapes_.size(); ++k) {
        shapes_[k]->Place(At(kShapeRows[k].at), unit_);
    }
    for (std::size_t k = 0; k < labels_.size(); ++k) {
        if (kLabelRows[k].look == LabelLook::Sign || kLabelRows[k].look == LabelLook::Device) {
            labels_[k]->setFont(LabelFont(kLabelRows[k].look));
        }
        labels_[k]->setGeometry(At(kLabelRows[k].at));
    }
    const auto place = [this](const auto& controls, const auto& rows) {
        for (std::size_t k = 0; k < rows.size(); ++k) {
            controls[k]->setGeometry(At(rows[k].at));
        }
    };
    place(boxes_, kBoxRows);
    place(spinners_, kSpinnerRows);
    place(blocks_, kBlockRows);
    PlaceCheck();
    setFixedSize(At(kDiagramArea).size());
}

/// Without its prescaler a path runs on to the prescaler's far side, where the line to the counter begins.
void PLLDiagramView::RunLine(std::size_t line) {
    const DiagramLineRow& row = kLineRows[line];
    const DiagramPlace& rPrescaler = kShapeRows[DiagramMembers::kShapeRPrescaler].at;
    const DiagramPlace& nPrescaler = kShapeRows[DiagramMembers::kShapeNPrescaler].at;
    QPoint start = At(row.x1, row.y1);
    QPoint end = At(row.x2, row.y2);
    auto arrow = row.arrow;
    if (line == DiagramMembers::kLineToR && !rPrescaler_) {
        end.setX(At(rPrescaler.x + rPrescaler.w, 0).x());
        arrow = DiagramLine::Arrow::None;
    }
    if (line == DiagramMembers::kLineToN && !nPrescaler_) {
        start.setX(At(nPrescaler.x + nPrescaler.w, 0).x());
        arrow = DiagramLine::Arrow::None;
    }
    const bool isBar = line == DiagramMembers::kFractionBar;
    lines_[line]->Run(start, end, arrow, isBar ? unit_ / 2 : unit_);   // No signal: thinner.
}

/// The least grid at which a line of text, a text box and a number of 15 digits have room, and every label its text.
double PLLDiagramView::FindUnit() const {
    constexpr double kGrowth = 1.01;
    constexpr int kXsInHint = 17;   // QLineEdit's own hint is so many "x" wide.
    const QFontMetrics metrics(font());
    const TextBox& box = *boxes_[0];
    const int aroundText = box.sizeHint().width() - kXsInHint * metrics.horizontalAdvance(QLatin1Char('x'));
    const int number = metrics.horizontalAdvance(QStringLiteral("000000000000000.")) + std::max(aroundText, 0) + 2;
    const DiagramPlace& place = kBoxRows[0].at;
    double unit = std::max({metrics.height() / 4.0, box.sizeHint().height() / static_cast<double>(place.h),
                            number / static_cast<double>(place.w)});
    while (!TextsFit(unit)) {
        unit *= kGrowth;
    }
    return unit;
}

bool PLLDiagramView::TextsFit(double unit) const {
    return std::all_of(kLabelRows.begin(), kLabelRows.end(), [&](const DiagramLabelRow& row) {
        const QSize room(static_cast<int>(row.at.w * unit) - 1, static_cast<int>(row.at.h * unit));
        const QRect taken = QFontMetrics(LabelFont(row.look))
                                .boundingRect(QRect(QPoint(), QSize(room.width(), room.height() * 4)),
                                              TextFlags(row.look), Text(row.text));
        return taken.width() <= room.width() && taken.height() <= room.height();
    });
}

QFont PLLDiagramView::LabelFont(LabelLook look) const {
    QFont made = font();
    made.setBold(look == LabelLook::Device);
    if (look == LabelLook::Sign) {
        made.setPointSizeF(std::max(kSignPoints, kSignRatio * QFontInfo(font()).pointSizeF()));
    }
    return made;
}

QPoint PLLDiagramView::At(int x, int y) const {
    return {static_cast<int>(std::lround(x * unit_)), static_cast<int>(std::lround(y * unit_))};
}

QRect PLLDiagramView::At(const DiagramPlace& place) const {
    const QPoint corner = At(place.x, place.y);
    const QPoint far = At(place.x + place.w, place.y + place.h);
    return {corner, QSize(far.x() - corner.x(), far.y() - corner.y())};
}
