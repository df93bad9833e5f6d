#pragma once

#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <utility>

#include "machine/Dialogs.h"
#include "machine/EventPump.h"
#include "machine/Timer.h"

class PageHost;
class QDialog;
class QFileDialog;
class QMessageBox;

/// The questions to the user as Qt's own dialogs, over the window that asks. All are opened and left. They delete
/// themselves when the user closes them, but for the one file dialog: it runs event loops of its own, to ask whether a
/// file is to be replaced, and must still be there behind them. Messages that come together are shown one after the
/// other.
class QtDialogs final : public Dialogs {
public:
    /// `host` is the same window as its pages see it.
    QtDialogs(QWidget& window, PageHost& host) : window_(window), host_(host) {}
    [[nodiscard]] bool Attended() const override { return calls_ == 0; }
    void MessageBox(const std::string& text, const std::string& title, MessageIcon icon) override;
    void InputBox(const std::string& prompt, const std::string& title, const std::string& defaultText,
                  Answered entered) override;
    void FileDialog(const FileRequest& request, Answered chosen) override;
    void OpenWebPage(const std::string& address) override;

    /// Asks whether to close after what went wrong.
    void AskToClose(const std::string& error, std::function<void()> close);
    /// Closes what is open over the window, as cancelled.
    void CloseAll();

    /// A call of another program begins or ends. Calls can nest: while one plays a burst others are served.
    void Unattended(bool begins) { calls_ += begins ? 1 : -1; }
    /// Sets how many are running, and gives how many were.
    int Calls(int running) { return std::exchange(calls_, running); }

private:
    void Ask(QDialog* box, int agreed, std::function<void()> answered);
    void NextMessage();

    QWidget& window_;
    PageHost& host_;
    QFileDialog* files_ = nullptr;        ///< Made when it is first asked for.
    std::deque<QMessageBox*> messages_;   ///< The first one is open.
    int calls_ = 0;                       ///< Of other programs, that are running.
};

/// What the user does meanwhile is his own, whoever's call the long operation runs in.
class QtEventPump final : public EventPump {
public:
    explicit QtEventPump(QtDialogs& dialogs) : dialogs_(dialogs) {}
    void DoEvents() override;

private:
    QtDialogs& dialogs_;
};

class QtTimer final : public Timer {
public:
    explicit QtTimer(QObject& owner, const QString& name);
    void OnTick(std::function<void()> tick) override;
    void Interval(int milliseconds) override;
    [[nodiscard]] int Interval() const override;
    void Enabled(bool on) override;
    [[nodiscard]] bool Enabled() const override;

private:
    QTimer* timer_;
};
