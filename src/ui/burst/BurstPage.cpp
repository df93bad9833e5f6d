#include "ui/burst/BurstPage.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSyntaxHighlighter>
#include <QVBoxLayout>
#include <utility>

#include "burst/BurstLines.h"
#include "burst/BurstText.h"
#include "burst/SetupFile.h"
#include "burst/cBurst.h"
#include "ui/bits/BitsList.h"
#include "ui/controls/Colours.h"
#include "ui/controls/FixedFace.h"
#include "ui/controls/Margins.h"
#include "ui/controls/TextBox.h"

namespace {

constexpr int kSpacing = 6;

/// The text of a list with one byte for each place of the caret, which is all that finding a line needs.
std::string Places(const QPlainTextEdit& list) {
    return list.toPlainText().toLatin1().toStdString();
}

}   // namespace

/// Draws the waveforms of a command under each other. Each line begins with a name, and only that of the last ends in
/// blanks: the others get the room of one behind their last letter.
class WaveNames : public QSyntaxHighlighter {
public:
    explicit WaveNames(QTextDocument* text) : QSyntaxHighlighter(text) {}

    void Align(bool waveforms) { waveforms_ = waveforms; }

protected:
    void highlightBlock(const QString& line) override {
        constexpr int kLetters = 3;
        if (!waveforms_ || line.size() <= kLetters || !line[kLetters].isDigit() ||
            !(line.startsWith(QLatin1String("clk")) || line.startsWith(QLatin1String("dat")))) {
            return;
        }
        QTextCharFormat wider;
        wider.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        wider.setFontLetterSpacing(QFontMetricsF(document()->defaultFont()).horizontalAdvance(QLatin1Char(' ')));
        setFormat(kLetters - 1, 1, wider);
    }

private:
    bool waveforms_ = false;
};

BurstList::BurstList(QWidget* parent) : QPlainTextEdit(parent), names_(new WaveNames(document())) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setUndoRedoEnabled(false);
    setFont(FixedFace());
    // Room for one line more than the commands: a click below them means the end of the list.
    document()->setDocumentMargin(kSpacing);
}

void BurstList::Show(const QString& text, bool vectors) {
    names_->Align(vectors);
    setPlainText(text);
}

void BurstList::mousePressEvent(QMouseEvent* event) {
    QPlainTextEdit::mousePressEvent(event);
    pressed_ = event->button() == Qt::LeftButton;
}

/// The release of a press that went elsewhere, to a menu or a dialog above the list, is no click.
void BurstList::mouseReleaseEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseReleaseEvent(event);
    if (std::exchange(pressed_, false)) {
        emit Clicked();
    }
}

void BurstList::mouseDoubleClickEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseDoubleClickEvent(event);
    pressed_ = false;
    emit DoubleClicked();
}

/// Space selects the line of the caret, as a click does, and Enter gives it back to its register. The press counts: the
/// release may be that of a key pressed in a menu.
void BurstList::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter && event->key() != Qt::Key_Space) {
        QPlainTextEdit::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        enter ? emit DoubleClicked() : emit Clicked();
    }
}

BurstPage::BurstPage(PageHost& host, std::int16_t& selectedLine, QWidget* parent)
    : QWidget(parent), host_(host), selectedLine_(selectedLine) {
    auto* top = new QHBoxLayout;
    top->setSpacing(kPageMargin);
    top->addWidget(BuildCommandColumn());
    txtBurstCmds_ = new BurstList;
    txtBurstCmds_->setObjectName(QStringLiteral("txtBurstCmds"));
    txtBurstCmds_->setAccessibleName(tr("Burst commands"));
    txtBurstCmds_->setToolTip(
        tr("Click a line to insert before it, overwrite or delete it.\n"
           "Double-click a load to give its value back to the register."));
    top->addWidget(txtBurstCmds_, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
    layout->setSpacing(kSpacing);
    layout->addLayout(top, 1);
    layout->addWidget(BuildListButtons());
    for (QWidget* control : std::initializer_list<QWidget*>{
             txtBurstCmds_, label1_, cmbLdBurst_, cmdDelay_, txtDelay_, cmdSetPins_, cmdDeleteAll_, cmdDelete_,
             cmdInsert_, cmdLoop_, cmdLoad_, cmdSave_, cmdLEMode_, command1_, cmdStrtSBI_, cmdStopSBI_}) {
        control->hide();
    }
    Wire();
}

QPushButton* BurstPage::MakeButton(const char* name, const char* caption, const char* hint) {
    auto* button = new QPushButton(QString::fromLatin1(caption));
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(QString::fromLatin1(hint));
    button->setAccessibleDescription(button->toolTip());
    return button;
}

/// The controls that add a command, one above the other at the left.
QWidget* BurstPage::BuildCommandColumn() {
    label1_ = new QLabel(QStringLiteral("Load"));
    label1_->setObjectName(QStringLiteral("Label1"));
    cmbLdBurst_ = new BitsList(this);   // A wheel that runs over it must not add commands.
    cmbLdBurst_->setObjectName(QStringLiteral("cmbLdBurst"));
    cmbLdBurst_->setAccessibleName(tr("Add the load of a register"));
    cmbLdBurst_->setToolTip(tr("Adds the load of a register with its present value."));
    cmbLdBurst_->setPlaceholderText(tr("Register"));
    ColourPrompt();
    cmbLdBurst_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    constexpr int kShownLetters = 14;
    cmbLdBurst_->setMinimumContentsLength(kShownLetters);
    cmdDelay_ = MakeButton("cmdDelay", "Delay", "Adds a delay of as many passes of a counting loop.");
    txtDelay_ = new TextBox;
    txtDelay_->setObjectName(QStringLiteral("txtDelay"));
    txtDelay_->setText(QStringLiteral("1000000"));
    txtDelay_->setAccessibleName(tr("Delay, loop passes"));
    txtDelay_->setToolTip(tr("Passes of a counting loop. How long one takes depends on the processor."));
    cmdSetPins_ = MakeButton("cmdSetPins", "Set Pins", "Adds a change of the pins to their present state.");
    cmdStrtSBI_ = MakeButton("cmdStrtSBI", "Start SBI", "Adds the start of an SBI load.");
    cmdStopSBI_ = MakeButton("cmdStopSBI", "Stop SBI", "Adds the stop of an SBI load.");

    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kSpacing);
    for (QWidget* control : std::initializer_list<QWidget*>{label1_, cmbLdBurst_, cmdDelay_, txtDelay_, cmdSetPins_,
                                                            cmdStrtSBI_, cmdStopSBI_}) {
        layout->addWidget(control);
    }
    layout->addStretch(1);
    column->setFixedWidth(cmbLdBurst_->sizeHint().width());
    return column;
}

/// The styles' own colour for a prompt would make the list look switched off.
void BurstPage::ColourPrompt() {
    constexpr double kPaleness = 0.3;   // Buttons are shaded, so less than elsewhere.
    const QPalette& page = palette();
    QPalette colours;
    colours.setColor(QPalette::PlaceholderText,
                     Between(page.color(QPalette::ButtonText), page.color(QPalette::Button), kPaleness));
    cmbLdBurst_->setPalette(colours);
}

void BurstPage::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        ColourPrompt();
    }
    QWidget::changeEvent(event);
}

/// The frame of the buttons for the list as a whole.
QWidget* BurstPage::BuildListButtons() {
    auto* frame = new QFrame;
    frame->setObjectName(QStringLiteral("fraCommands"));
    frame->setAccessibleName(tr("The list as a whole"));
    frame->setFrameShape(QFrame::StyledPanel);
    cmdRun_ = MakeButton("cmdRun", "Run", "Plays the list; during a run: stops it at the end of the pass.");
    cmdLoop_ = MakeButton("cmdLoop", "Loop", "Loop: a run goes round until it is stopped. Single: it plays once.");
    cmdInsert_ = MakeButton("cmdInsert", "Insert",
                            "Insert: a new command goes in before the selected line. Overwrite: it replaces it.");
    cmdDelete_ = MakeButton("cmdDelete", "Delete", "Deletes the selected line.");
    cmdDeleteAll_ = MakeButton("cmdDeleteAll", "Delete All", "Deletes all lines.");
    cmdLEMode_ = MakeButton("cmdLEMode", "LE Low", "How LE rests behind a load, in commands built from now on.");
    command1_ = MakeButton("Command1", "Pattern", "Shows the commands as waveforms, until the list changes.");
    cmdSave_ = MakeButton("cmdSave", "Save", "Saves the list and the whole set-up in a file.");
    cmdLoad_ = MakeButton("cmdLoad", "Load", "Adds the commands of a file and takes over its set-up.");

    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    grid->setSpacing(kSpacing);
    constexpr int kAcross = 5;
    constexpr int kLetters = 18;
    const int widest = kLetters * fontMetrics().averageCharWidth();   // Of a button in a wide window.
    int place = 0;
    for (QPushButton* button :
         {cmdRun_, cmdLoop_, cmdInsert_, cmdDelete_, cmdDeleteAll_, cmdLEMode_, command1_, cmdSave_, cmdLoad_}) {
        button->setMaximumWidth(widest);
        grid->addWidget(button, place / kAcross, place % kAcross);
        ++place;
    }
    for (int column = 0; column < kAcross; ++column) {
        grid->setColumnStretch(column, kAcross);
    }
    grid->setColumnStretch(kAcross, 1);
    return frame;
}

void BurstPage::Wire() {
    const auto onClick = [this](QPushButton* button, auto answer) {
        connect(button, &QPushButton::clicked, this, [this, answer] { host_.Event(answer); });
    };
    connect(txtBurstCmds_, &BurstList::Clicked, this, [this] { host_.Event([this] { txtBurstCmds_Click(); }); });
    connect(txtBurstCmds_, &BurstList::DoubleClicked, this,
            [this] { host_.Event([this] { txtBurstCmds_DblClick(); }); });
    connect(cmbLdBurst_, &QComboBox::activated, this,
            [this](int entry) { host_.Event([this, entry] { cmbLdBurst_Click(entry); }); });
    onClick(cmdDelay_, [this] { cmdDelay_Click(); });
    onClick(cmdSetPins_, [this] { AddCommand(BurstKind::Pins, ""); });
    onClick(cmdStrtSBI_, [this] { AddCommand(BurstKind::StartSBI, "ADR"); });
    onClick(cmdStopSBI_, [this] { AddCommand(BurstKind::StopSBI, "ADR"); });
    onClick(cmdRun_, [this] { cmdRun_Click(); });
    onClick(cmdLoop_, [this] { cmdLoop_Click(); });
    onClick(cmdInsert_, [this] { cmdInsert_Click(); });
    onClick(cmdDelete_, [this] { cmdDelete_Click(); });
    onClick(cmdDeleteAll_, [this] { cmdDeleteAll_Click(); });
    onClick(cmdLEMode_, [this] { cmdLEMode_Click(); });
    onClick(command1_, [this] { host_.Device().DisplayBurstVector(); });
    onClick(cmdSave_, [this] { SaveWithDialog(host_.Device(), host_.Asking(), "Save BurstCommands"); });
    onClick(cmdLoad_, [this] { LoadWithDialog(host_.Device(), host_.Asking(), "Load BurstCommands"); });
}

void BurstPage::AddRegister(const cRegister& added) {
    cmbLdBurst_->addItem(Qt8(added.ID()));
    cmbLdBurst_->setCurrentIndex(-1);
}

void BurstPage::ShowSBIButtons() {
    cmdStrtSBI_->show();
    cmdStopSBI_->show();
}

void BurstPage::ShowBurstControls() {
    for (QWidget* control : std::initializer_list<QWidget*>{txtBurstCmds_, cmdDelay_, txtDelay_, cmdSetPins_, label1_,
                                                            cmbLdBurst_, cmdDeleteAll_, cmdDelete_, cmdInsert_,
                                                            cmdLoop_, cmdLoad_, cmdSave_, cmdLEMode_, command1_}) {
        control->show();
    }
}

void BurstPage::ClearRegisters() {
    cmbLdBurst_->clear();
    cmdStrtSBI_->hide();
    cmdStopSBI_->hide();
}

void BurstPage::ShowBurst(bool vectors) {
    if (host_.Device().BurstCmds().Count() == 0 && txtBurstCmds_->document()->isEmpty()) {
        return;
    }
    shown_ = BurstText(host_.Device(), vectors);
    vectors_ = vectors;
    txtBurstCmds_->Show(Qt8(shown_), vectors);
}

void BurstPage::Freshen() {
    if (BurstText(host_.Device(), vectors_) != shown_) {
        ShowBurst(false);
    }
}

void BurstPage::ShowRunning(bool running) {
    cmdRun_->setText(running ? QStringLiteral("Stop") : QStringLiteral("Run"));
}

bool BurstPage::Loops() const {
    return cmdLoop_->text() != QLatin1String("Single");
}

/// What a user types wrong here is told in a message box; the list stays.
void BurstPage::AddCommand(std::int16_t kind, const std::string& name) {
    const bool insert = cmdInsert_->text() == QLatin1String("Insert");
    const auto selected = static_cast<std::size_t>(txtBurstCmds_->textCursor().selectedText().size());
    const BurstEdit edit = BurstEditFor(selected, selectedLine_, host_.Device().BurstCmds().Count(), insert);
    try {
        EditBurstList(host_.Device(), edit, selectedLine_, name, kind);
    } catch (const UserError& error) {
        host_.Asking().MessageBox(error.what(), "", MessageIcon::Exclamation);
    }
}

/// Selects the line under the caret. False behind the last command and in an empty list.
bool BurstPage::SelectClickedLine() {
    QTextCursor caret = txtBurstCmds_->textCursor();
    const auto line = BurstLineAt(Places(*txtBurstCmds_), static_cast<std::size_t>(caret.position()));
    if (!line) {
        return false;
    }
    selectedLine_ = line->number;
    if (!line->selection) {
        return false;
    }
    caret.setPosition(static_cast<int>(line->selection->start));
    caret.setPosition(static_cast<int>(line->selection->start + line->selection->length), QTextCursor::KeepAnchor);
    txtBurstCmds_->setTextCursor(caret);
    return true;
}

void BurstPage::txtBurstCmds_Click() {
    SelectClickedLine();
}

void BurstPage::txtBurstCmds_DblClick() {
    if (SelectClickedLine()) {
        host_.Device().RestoreBurstCommand(selectedLine_);
    }
}

void BurstPage::cmbLdBurst_Click(int entry) {
    if (entry >= 0) {
        AddCommand(BurstKind::Load, cmbLdBurst_->itemText(entry).toStdString());
    }
}

void BurstPage::cmdDelay_Click() {
    AddCommand(BurstKind::Delay, txtDelay_->text().trimmed().toStdString());
}

void BurstPage::cmdDelete_Click() {
    if (!host_.Device().BurstRunning()) {
        host_.Device().DeleteBurstCommand(selectedLine_);
    }
}

void BurstPage::cmdDeleteAll_Click() {
    if (!host_.Device().BurstRunning()) {
        host_.Device().DeleteBurstCommands();
    }
}

void BurstPage::cmdRun_Click() {
    if (cmdRun_->text() == QLatin1String("Run")) {
        host_.Device().RunBurstCommands();
    } else {
        host_.Device().StopBurstCommands();
    }
}

void BurstPage::cmdLoop_Click() {
    cmdLoop_->setText(Loops() ? QStringLiteral("Single") : QStringLiteral("Loop"));
}

void BurstPage::cmdInsert_Click() {
    const bool insert = cmdInsert_->text() == QLatin1String("Insert");
    cmdInsert_->setText(insert ? QStringLiteral("Overwrite") : QStringLiteral("Insert"));
}

void BurstPage::cmdLEMode_Click() {
    const bool high = cmdLEMode_->text() == QLatin1String("LE Low");
    host_.Device().LEModeHigh(high);
    cmdLEMode_->setText(high ? QStringLiteral("LE High") : QStringLiteral("LE Low"));
}
