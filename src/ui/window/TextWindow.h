#pragma once

#include <QString>

class QWidget;

/// Opens a window of its own with a text that can be read, searched by eye, selected and copied. The window that
/// opens it stays usable; a second call with the same name replaces the first window.
void OpenTextWindow(QWidget* over, const QString& name, const QString& title, const QString& heading,
                    const QString& text);
