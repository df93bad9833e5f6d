#include <QEvent>
#include <QHBoxLayout>
#include <QScrollBar>
#include <algorithm>

#include "core/PortAddress.h"
#include "ports/Connector.h"
#include "ui/controls/Colours.h"
#include "ui/controls/Margins.h"
#include "ui/controls/TextBox.h"
#include "ui/port/ConnectorDiagram.h"
#include "ui/port/LineOptions.h"
#include "ui/port/PortPage.h"

// How the page is put together and scrolls. What it shows and answers is in PortPage.cpp.

namespace {

constexpr int kSpacing = 6;
constexpr QMargins kInside(6, 2, 6, 4);   ///< Of a frame with one row of options.

/// A frame for one of the serial lines, with its options under a name.
LineOptions* MakeFrame(const char* frameName, const char* caption, const char* optionName) {
    auto* frame = new LineOptions(QString::fromLatin1(caption));
    frame->setObjectName(QString::fromLatin1(frameName));
    for (int line = 0; line < kPortLines; ++line) {
        frame->Option(line)->setObjectName(QStringLiteral("%1(%2)").arg(QString::fromLatin1(optionName)).arg(line));
    }
    return frame;
}

}   // namespace

PortPage::PortPage(PageHost& host, Timer& reload, QWidget* parent)
    : QWidget(parent),
      host_(host),
      reload_(reload),
      scroll_(new QScrollArea(this)),
      ports_(new QButtonGroup(this)),
      txtPortAdr_(new TextBox),
      txtAutoReload_(new TextBox),
      fraClockBit_(MakeFrame("fraClockBit", "Clock Bit", "optClockBit")),
      fraDataBit_(MakeFrame("fraDataBit", "Data Bit", "optDataBit")),
      fraLEBit_(MakeFrame("fraLEBit", "LE Bit", "optLEBit")) {
    BuildScrolling();
    Build();
    AddPinFrame()->hide();
    Wire();
}

void PortPage::BuildScrolling() {
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(scroll_);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(true);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->horizontalScrollBar()->setObjectName(QStringLiteral("hscPort"));
    scroll_->horizontalScrollBar()->setAccessibleName(tr("Scroll the port setup sideways"));
    scroll_->verticalScrollBar()->setObjectName(QStringLiteral("vscPort"));
    scroll_->verticalScrollBar()->setAccessibleName(tr("Scroll the port setup"));
    cmdBoxPort_ = new QWidget(scroll_);
    cmdBoxPort_->setObjectName(QStringLiteral("cmdBoxPort"));
    cmdBoxPort_->setAccessibleName(tr("Corner"));
    cmdBoxPort_->hide();
    scroll_->horizontalScrollBar()->installEventFilter(this);
    scroll_->verticalScrollBar()->installEventFilter(this);
}

void PortPage::Build() {
    auto* content = new QWidget;
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
    row->setSpacing(kPageMargin);
    column_ = new QVBoxLayout;
    column_->setSpacing(kSpacing);
    auto* first = new QHBoxLayout;
    first->setSpacing(kSpacing);
    QGroupBox* address = BuildAddress();
    QLayout* period = BuildReload();
    period->setContentsMargins(address->contentsMargins() + kInside);   // Level with the options in the frame.
    first->addWidget(address);
    first->addStretch();
    first->addLayout(period);
    column_->addLayout(first);
    column_->addWidget(fraClockBit_);
    column_->addWidget(fraDataBit_);
    column_->addWidget(fraLEBit_);
    column_->addStretch();
    row->addLayout(column_);
    diagramPlace_ = new QWidget;
    frame1_ = BuildDiagram();
    diagramPlace_->setMinimumSize(frame1_->sizeHint());
    row->addWidget(diagramPlace_);
    row->addStretch(1);
    scroll_->setWidget(content);
    scroll_->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    for (QObject* watched : {static_cast<QObject*>(frame1_), static_cast<QObject*>(diagramPlace_),
                             static_cast<QObject*>(scroll_->viewport())}) {
        watched->installEventFilter(this);
    }
}

QGroupBox* PortPage::BuildAddress() {
    auto* frame = new QGroupBox(QStringLiteral("Port Address"));
    frame->setObjectName(QStringLiteral("fraPortAdr"));
    frame->setAccessibleName(frame->title());
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(kInside);
    row->setSpacing(kSpacing);
    int index = 0;
    for (const char* caption : {"LPT1", "LPT2", "LPT3", "Other"}) {
        auto* option = new QRadioButton(QString::fromLatin1(caption));
        option->setObjectName(QStringLiteral("optPortAdr(%1)").arg(index));
        option->setAccessibleName(tr("Port address: %1").arg(option->text()));
        option->setToolTip(QString::fromStdString(PortAddressText(kPortAddresses[static_cast<std::size_t>(index)])));
        ports_->addButton(option, index++);
        row->addWidget(option);
    }
    txtPortAdr_->setObjectName(QStringLiteral("txtPortAdr"));
    txtPortAdr_->setAccessibleName(tr("Port address, hexadecimal"));
    txtPortAdr_->setToolTip(tr("The address in hexadecimal digits. It counts with Enter, or when you leave the box."));
    txtPortAdr_->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
    txtPortAdr_->setEnabled(false);
    ColourAddress();
    row->addWidget(txtPortAdr_);
    return frame;
}

/// The address is there to be read for the three ports too, where it can't be changed.
void PortPage::ColourAddress() {
    QPalette colours;
    colours.setColor(QPalette::Disabled, QPalette::Text, PaleText(palette()));
    txtPortAdr_->setPalette(colours);
}

QLayout* PortPage::BuildReload() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    auto* label = new QLabel(QStringLiteral("Reload Every"));
    label->setObjectName(QStringLiteral("lblAutoReload"));
    auto* units = new QLabel(QStringLiteral("sec"));
    units->setObjectName(QStringLiteral("lblAutoRelaodUnits"));
    txtAutoReload_->setObjectName(QStringLiteral("txtAutoReload"));
    txtAutoReload_->setAccessibleName(tr("Period of the automatic reload, seconds"));
    txtAutoReload_->setToolTip(
        tr("1 to 65 seconds; Enter applies it. \"AutoReload on Interval\" in the menu Options "
           "switches the reload on."));
    txtAutoReload_->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("000000")));
    txtAutoReload_->ShowText(QStringLiteral("10"));
    for (QWidget* part :
         {static_cast<QWidget*>(label), static_cast<QWidget*>(txtAutoReload_), static_cast<QWidget*>(units)}) {
        row->addWidget(part);
    }
    return row;
}

QGroupBox* PortPage::BuildDiagram() {
    auto* frame = new QGroupBox(QStringLiteral("Port Setup Diagram"), diagramPlace_);
    frame->setObjectName(QStringLiteral("Frame1"));
    diagram_ = new ConnectorDiagram;
    auto* inside = new QVBoxLayout(frame);
    inside->setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    inside->addWidget(diagram_);
    inside->setSizeConstraint(QLayout::SetFixedSize);
    return frame;
}

/// One more frame for a pin, with the next twelve options.
LineOptions* PortPage::AddPinFrame() {
    const int index = fraExternalPin_.Count();
    auto* frame = fraExternalPin_.Add(index, new LineOptions(QString::fromLatin1(kUnusedCaption)));
    for (int line = 0; line < kPortLines; ++line) {
        optPrgmBit_.Add(kPortLines * index + line, frame->Option(line));
    }
    constexpr int kStretch = 1;
    column_->insertWidget(column_->count() - kStretch, frame);
    setTabOrder(frame->Option(kPortLines - 1), diagram_);   // The diagram comes after the last frame.
    connect(frame, &LineOptions::Selected, this,
            [this, index](int line) { host_.Event([&] { optPrgmBit_Click(kPortLines * index + line); }); });
    return frame;
}

void PortPage::Wire() {
    const auto lines = [this](LineOptions* frame, void (PortPage::*answer)(int)) {
        connect(frame, &LineOptions::Selected, this, [this, answer](int line) {
            if (!quiet_) {
                host_.Event([&] { (this->*answer)(line); });
            }
        });
    };
    lines(fraClockBit_, &PortPage::optClockBit_Click);
    lines(fraDataBit_, &PortPage::optDataBit_Click);
    lines(fraLEBit_, &PortPage::optLEBit_Click);
    TabToSelected(*ports_);
    connect(ports_, &QButtonGroup::idToggled, this, [this](int index, bool on) {
        if (on && !quiet_) {
            host_.Event([&] { optPortAdr_Click(index); });
        }
    });
    const auto entered = [this] { host_.Event([&] { txtPortAdr_Entered(); }); };
    connect(txtPortAdr_, &TextBox::EnterPressed, this, entered);
    connect(txtPortAdr_, &TextBox::LeftByUser, this, entered);
    connect(txtAutoReload_, &TextBox::EnterPressed, this, [this] { host_.Event([&] { txtAutoReload_Enter(); }); });
    connect(scroll_->verticalScrollBar(), &QScrollBar::valueChanged, this, &PortPage::HoldDiagram);
}

/// The frames scroll past the diagram: it moves up only as far as it takes to see its lower end.
void PortPage::HoldDiagram() {
    const int hidden = std::max(0, frame1_->height() + 2 * kPageMargin - scroll_->viewport()->height());
    const int lowest = std::max(0, diagramPlace_->height() - frame1_->height());
    frame1_->move(0, std::clamp(scroll_->verticalScrollBar()->value() - hidden, 0, lowest));
}

/// The square between the two bars, when both are there.
void PortPage::PlaceCorner() {
    const QScrollBar* across = scroll_->horizontalScrollBar();
    const QScrollBar* down = scroll_->verticalScrollBar();
    const QPoint from(down->mapTo(scroll_, QPoint()).x(), across->mapTo(scroll_, QPoint()).y());
    cmdBoxPort_->setGeometry(QRect(from, QSize(down->width(), across->height())));
    cmdBoxPort_->setVisible(across->isVisibleTo(scroll_) && down->isVisibleTo(scroll_));
}

void PortPage::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        ColourAddress();
    }
    QWidget::changeEvent(event);
}

bool PortPage::eventFilter(QObject* watched, QEvent* event) {
    const auto what = event->type();
    if (qobject_cast<QScrollBar*>(watched) != nullptr) {
        if (what == QEvent::Show || what == QEvent::Hide || what == QEvent::Resize) {
            PlaceCorner();
        }
    } else if (what == QEvent::Resize) {
        diagramPlace_->setMinimumSize(frame1_->size());
        HoldDiagram();
    }
    return QWidget::eventFilter(watched, event);
}
