#pragma once

#include <QString>

class QWidget;

/// Keeps a window's size, its place and whether it was maximised from one start to the next, in a file of the user's.
/// A file that is missing, damaged or can't be written costs nothing but that, and a place that is on no screen now is
/// moved onto one. The window must live longer.
class WindowPlace {
public:
    WindowPlace(QWidget& window, QString file);   ///< Before the window shows.
    WindowPlace(const WindowPlace&) = delete;
    WindowPlace& operator=(const WindowPlace&) = delete;
    ~WindowPlace();   ///< Writes the file.

private:
    QWidget& window_;
    QString file_;
};
