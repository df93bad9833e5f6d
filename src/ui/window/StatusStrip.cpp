#include "ui/window/StatusStrip.h"

#include <QResizeEvent>

#include "ui/controls/Texts.h"
#include "ui/window/TextWindow.h"

namespace {

ShortenedButton* MakeButton(QWidget* parent, const QString& name) {
    auto* button = new ShortenedButton(parent);
    button->setObjectName(name);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

}   // namespace

StatusStrip::StatusStrip(QWidget* parent)
    : QStatusBar(parent),
      port_(MakeButton(this, QStringLiteral("staPort"))),
      note_(new ShortenedLabel(this)),
      problems_(MakeButton(this, QStringLiteral("staProblems"))),
      automation_(new ShortenedLabel(this)) {
    setObjectName(QStringLiteral("staBar"));
    setAccessibleName(tr("Status"));
    note_->setObjectName(QStringLiteral("staNote"));
    note_->setAccessibleName(tr("Latest message"));
    note_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    automation_->setObjectName(QStringLiteral("staAutomation"));
    automation_->setAccessibleName(tr("Automation"));
    problems_->hide();
    addWidget(port_);
    addWidget(note_, 1);
    addPermanentWidget(problems_);
    addPermanentWidget(automation_);
    connect(port_, &QToolButton::clicked, this, &StatusStrip::OpenPortStory);
    connect(problems_, &QToolButton::clicked, this, &StatusStrip::OpenProblems);
}

void StatusStrip::ShowPort(const PortStatus& status) {
    status_ = status;
    const QString summary = Qt8(status.summary);
    const QString mark = status.ready ? QString() : QStringLiteral("\u26A0 ");
    const QString lost = status.failedWrites == 0 ? QString() : tr(", %1 writes failed").arg(status.failedWrites);
    port_->setText(mark + summary + lost);
    port_->setAccessibleName(tr("Port: %1").arg(summary + lost));
    port_->setToolTip(tr("%1. Click for the whole story.").arg(summary + lost));
}

void StatusStrip::ShowProblems(const Problems& problems, const QString& device) {
    problemLines_.clear();
    device_ = device;
    for (const Problem& problem : problems.All()) {
        if (problem.severity >= Severity::Warning) {   // Notes would drown what needs to be done.
            problemLines_ << Qt8(problem.Message());
        }
    }
    const auto count = problemLines_.size();
    problems_->setVisible(count > 0);
    problems_->setText(count == 1 ? tr("\u26A0 1 problem in the part file")
                                  : tr("\u26A0 %1 problems in the part file").arg(count));
    problems_->setAccessibleName(problems_->text());
    problems_->setToolTip(tr("Click for the list, with file and line."));
}

void StatusStrip::ShowAutomation(const QString& text) {
    automation_->setText(text);
    automation_->setToolTip(text);
}

void StatusStrip::Note(const QString& text) {
    note_->setText(text);
    note_->setToolTip(text);
}

QString StatusStrip::NoteText() const {
    return note_->text();
}

void StatusStrip::resizeEvent(QResizeEvent* event) {
    constexpr int kPortShare = 4;
    constexpr int kShare = 5;
    port_->setMaximumWidth(width() / kPortShare);
    problems_->setMaximumWidth(width() / kShare);
    automation_->setMaximumWidth(width() / kShare);
    QStatusBar::resizeEvent(event);
}

void StatusStrip::OpenPortStory() {
    OpenTextWindow(window(), QStringLiteral("frmPortStory"), tr("Port"), Qt8(status_.summary), Qt8(status_.story));
}

void StatusStrip::OpenProblems() {
    OpenTextWindow(
        window(), QStringLiteral("frmProblems"), tr("Problems in the part file"),
        tr("What was found wrong when \"%1\" was read. The device works on with what could be used.").arg(device_),
        problemLines_.join(QLatin1Char('\n')));
}
