#pragma once

#include <QObject>
#include <array>
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
    /// The other programs: one takes its turn, the other one acts while dialogs and menus are open and bursts run.
    [[nodiscard]] std::array<RobotClient, 2>& Others() { return clients_; }

    std::function<void()> midway = [] {};   ///< Called where a step has made one change and may make another.

private:
    std::string Do();
    std::string Click();
    std::string Press();
    std::string Enter();
    std::string Pick();
    std::string Device();
    std::string ChangeWindow();
    std::string Client() { return clients_[0].Step(); }
    void Watch();
    void Meddle();
    void Answer(QWidget& dialog);
    void CloseOthers();
    [[nodiscard]] std::vector<QWidget*> Controls() const;

    frmPart& window_;
    cPart& part_;
    std::vector<std::string> devices_;
    std::string folder_;
    RobotRandom random_;
    std::array<RobotClient, 2> clients_;
    std::string meddled_;   ///< What the second one did in this step.
    bool meddling_ = false;
    int running_ = 0;   ///< How often a burst was seen running,
    int opened_ = 0;    ///< and a menu open.
};
