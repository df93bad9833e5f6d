#include "ui/window/frmAboutBox.h"

#include <QFontInfo>
#include <QFrame>
#include <QGridLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>

#include "ui/window/ProgramIcon.h"

namespace {

constexpr int kSpacing = 6;

constexpr auto kHistory =
    "---- Ver 2.2.0 ----\n"
    "Long Filenames, Long Denominator Bug Fix, Upgraded Register Map (32 Bits) & Selection Menu\n"
    "---- Ver 2.1.6 ----\n"
    "Made Screen Resizable\n"
    "Read back Active X Commands\n"
    "---- Ver 2.1.5 ----\n"
    "Fixed Long Fraction entry problem\n"
    "---- Ver 2.1.4 ----\n"
    "Fix bug with fractional N value entry on PLL Screen---- Ver 2.1.3 ----\n"
    "Fixed Zero Denominator Bug\n"
    "4 Digit Fractional Denominator\n"
    "Fixed N Counter Increment Bug\n"
    "Add Xtal ActiveX Command\n"
    "---- Ver 2.1.2 ----\n"
    "Prescaler Check\n"
    "Added Many Active X Commands\n"
    "Added Many Menu Commands\n"
    "---- Previous  ----\n"
    "Added Port Setup Diagram\n"
    "Fix Registers Load Button\n"
    "Fix Select New Part Bug\n"
    "Add Save Part Stup and BurstCommands\n"
    "Add Set Pins to BurstMode\n"
    "Fix Negative Counters\n"
    "Fix Data Entry";

QLabel* MakeLabel(const char* name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* MakePicture(const char* name, int size, qreal ratio) {
    auto* picture = MakeLabel(name, {});
    picture->setPixmap(ProgramIcon().pixmap(QSize(size, size), ratio));
    picture->setAccessibleName(QDialog::tr("The program's icon"));
    return picture;
}

/// Keys that are only held, and those that move the focus.
bool IsWalking(int key) {
    return key == Qt::Key_Tab || key == Qt::Key_Backtab || (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) ||
           key == Qt::Key_AltGr;
}

}   // namespace

frmAboutBox::frmAboutBox(const QString& partFileVersion, QWidget* parent)
    : QDialog(parent),
      lblPrgmVersion_(MakeLabel("lblPrgmVersion", QStringLiteral("Program Version:"))),
      lblPartVersion_(MakeLabel("lblPartVersion", QStringLiteral("Part File Version:"))),
      okayButton_(new QPushButton(QStringLiteral("&OK"))),
      command1_(new QPushButton(QStringLiteral("Version Info"))),
      text1_(new QPlainTextEdit) {
    setObjectName(QStringLiteral("frmAboutBox"));
    setWindowTitle(QStringLiteral("About Tarnwick"));
    setAttribute(Qt::WA_DeleteOnClose);
    SetUpControls();
    BuildLayout();
    Form_Load(partFileVersion);
}

void frmAboutBox::SetUpControls() {
    okayButton_->setObjectName(QStringLiteral("OkayButton"));
    okayButton_->setAccessibleName(tr("Close the about box"));
    okayButton_->setDefault(true);
    okayButton_->installEventFilter(this);
    command1_->setObjectName(QStringLiteral("Command1"));
    command1_->setAccessibleName(tr("What changed in each version"));
    command1_->setMinimumWidth(command1_->fontMetrics().horizontalAdvance(command1_->text()) + 4 * kSpacing);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setAccessibleName(tr("Version history"));
    text1_->setReadOnly(true);
    text1_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text1_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    text1_->setTabChangesFocus(true);
    text1_->hide();
    connect(okayButton_, &QPushButton::clicked, this, &QDialog::close);
    connect(command1_, &QPushButton::clicked, this, &frmAboutBox::Command1_Click);
}

void frmAboutBox::BuildLayout() {
    constexpr int kMargin = 9;
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kSpacing);
    buttons->addWidget(command1_);
    buttons->addStretch();
    buttons->addWidget(okayButton_);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    whole->setSpacing(kSpacing);
    whole->addWidget(BuildPanel());
    whole->addLayout(buttons);
    whole->addWidget(text1_, 1);
    setTabOrder(okayButton_, command1_);
    okayButton_->setFocus();
}

QFrame* frmAboutBox::BuildPanel() {
    constexpr int kMargin = 12;
    constexpr int kBig = 64;
    constexpr int kSmall = 16;
    auto* panel = new QFrame;
    panel->setObjectName(QStringLiteral("SSPanel1"));
    panel->setFrameShape(QFrame::StyledPanel);
    QLabel* title = MakeLabel("LAB_1", QStringLiteral("Tarnwick 2"));
    QFont large = title->font();
    constexpr double kLarger = 1.8;
    large.setPointSizeF(QFontInfo(large).pointSizeF() * kLarger);
    large.setBold(true);
    title->setFont(large);
    auto* maker = new QHBoxLayout;
    maker->setSpacing(kSpacing);
    maker->addWidget(MakePicture("Picture1", kSmall, devicePixelRatioF()));
    maker->addWidget(MakeLabel("Label5", QStringLiteral("Ostrel")), 1);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    grid->setHorizontalSpacing(kMargin);
    grid->addWidget(MakePicture("PIC_Icon", kBig, devicePixelRatioF()), 0, 0, 4, 1, Qt::AlignTop);
    grid->addWidget(title, 0, 1);
    grid->addLayout(maker, 1, 1);
    grid->addWidget(lblPrgmVersion_, 2, 1);
    grid->addWidget(lblPartVersion_, 3, 1);
    grid->setColumnStretch(1, 1);
    return panel;
}

void frmAboutBox::Form_Load(const QString& partFileVersion) {
    lblPrgmVersion_->setText(QStringLiteral("Program Version:   ") + QStringLiteral(TARNWICK_VERSION));
    lblPartVersion_->setText(QStringLiteral("Part File Version: ") + partFileVersion);
    constexpr int kWidth = 400;
    resize(kWidth, sizeHint().height());
}

void frmAboutBox::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        move(screen()->geometry().center() - rect().center());
    }
    QDialog::showEvent(event);
}

void frmAboutBox::Command1_Click() {
    constexpr int kHeight = 300;   // 4500 twips.
    text1_->show();
    text1_->setPlainText(QString::fromLatin1(kHistory));
    resize(width(), kHeight);
}

/// What no control has taken for itself.
void frmAboutBox::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && command1_->hasFocus()) {
        command1_->click();
    } else if (!IsWalking(event->key())) {
        close();
    }
}

bool frmAboutBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && !IsWalking(static_cast<QKeyEvent*>(event)->key())) {
        close();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}
