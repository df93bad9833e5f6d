#pragma once

#include <QStatusBar>

#include "core/Problems.h"
#include "ports/Port.h"
#include "ui/controls/ShortenedText.h"

/// The status bar: the port and how it stands at the left, the latest message, the number of problems in the part
/// file, and the automation at the right. The message has most of the room; what doesn't fit of the others is in their
/// tool tips. A click on the port or the problems opens the whole story.
class StatusStrip : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusStrip(QWidget* parent = nullptr);

    void ShowPort(const PortStatus& status);
    void ShowProblems(const Problems& problems, const QString& device);
    void ShowAutomation(const QString& text);
    void Note(const QString& text);
    [[nodiscard]] QString NoteText() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void OpenPortStory();
    void OpenProblems();

    ShortenedButton* port_;
    ShortenedLabel* note_;
    ShortenedButton* problems_;
    ShortenedLabel* automation_;
    PortStatus status_;
    QStringList problemLines_;
    QString device_;
};
