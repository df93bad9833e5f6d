#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QToolButton>

#include "core/Problems.h"
#include "platform/Port.h"

/// The status bar: the port and how it stands at the left, the latest message, the number of problems in the part
/// file, and the automation at the right. A click on the port or the problems opens the whole story.
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
    void ShowElided();

    QToolButton* port_;
    QLabel* note_;
    QToolButton* problems_;
    QLabel* automation_;
    PortStatus status_;
    QString noteText_;
    QStringList problemLines_;
    QString device_;
};
