#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "RobotClient.h"
#include "RobotRandom.h"

class QWidget;
class cPart;
class frmPart;

/// What a user and another program do, chosen by a seed: clicks, keys, entries, menu picks, devices, sizes, pages, and
/// calls over the bus.
class RobotActions : public QObject {
public:
    RobotActions(frmPart& window, cPart& part, std::vector<std::string> devices, std::string folder, unsigned seed);

    std::string Step();   ///< Does one thing and tells what.
    void SelectDevice(std::size_t number);
    void Settle();
    [[nodiscard]] RobotClient& Other() { return client_; }   ///< The other program.

    std::function<void()> midway = [] {};   ///< Called where a step has made one change and may make another.

private:
    std::string Do();
    std::string Click();
    std::string Press();
    std::string Enter();
    std::string Pick();
    std::string Device();
    std::string ChangeWindow();
    std::string Client() { return client_.Step(); }
    void Watch();
    void Answer(QWidget& dialog);
    void CloseOthers();
    [[nodiscard]] std::vector<QWidget*> Controls() const;

    frmPart& window_;
    cPart& part_;
    std::vector<std::string> devices_;
    std::string folder_;
    RobotRandom random_;
    RobotClient client_;
    int running_ = 0;   ///< How often a burst was seen running,
    int opened_ = 0;    ///< and a menu open.
};
