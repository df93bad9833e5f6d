#pragma once

#include <QTimer>
#include <QWidget>

#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/Timer.h"

/// The questions to the user as Qt's own dialogs, over the window that asks.
class QtDialogs final : public Dialogs {
public:
    explicit QtDialogs(QWidget& window) : window_(window) {}
    void MessageBox(const std::string& text, const std::string& title, MessageIcon icon) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& defaultText) override;
    std::optional<std::string> FileDialog(const FileRequest& request) override;
    void OpenWebPage(const std::string& address) override;

private:
    QWidget& window_;
};

class QtEventPump final : public EventPump {
public:
    void DoEvents() override;
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
