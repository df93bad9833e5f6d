#include "ui/bits/FieldHelp.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QTextDocument>
#include <QWidget>

FieldHelp::FieldHelp(QWidget& control, std::function<void()> help, std::function<void()> toolTip)
    : QObject(&control), help_(std::move(help)), toolTip_(std::move(toolTip)) {
    control.installEventFilter(this);
}

bool FieldHelp::eventFilter(QObject* watched, QEvent* event) {
    const bool rightButton =
        event->type() == QEvent::MouseButtonPress && static_cast<QMouseEvent*>(event)->button() == Qt::RightButton;
    const bool menuKey = event->type() == QEvent::ContextMenu &&
                         static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard;
    if (event->type() == QEvent::ToolTip) {
        toolTip_();
    }
    if (rightButton || menuKey) {
        event->accept();
        help_();
        return true;
    }
    return event->type() == QEvent::ContextMenu || QObject::eventFilter(watched, event);
}

QString ToolTipText(const QString& text) {
    constexpr int kLong = 80;
    if (text.size() <= kLong && !Qt::mightBeRichText(text)) {
        return text;
    }
    return QStringLiteral("<qt>") + text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")) +
           QStringLiteral("</qt>");
}
