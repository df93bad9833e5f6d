#pragma once

#include <QObject>
#include <QString>
#include <functional>

class QWidget;

/// What a control tells about itself. The right mouse button, or the keyboard's menu key, asks for help and does
/// nothing else; the tool tip is brought up to date when it is about to show.
class FieldHelp : public QObject {
public:
    FieldHelp(QWidget& control, std::function<void()> help, std::function<void()> toolTip);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void()> help_;
    std::function<void()> toolTip_;
};

/// A text as a tool tip: never taken for markup, and broken into lines where it is long.
QString ToolTipText(const QString& text);
