#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <random>
#include <string>
#include <vector>

class QWidget;
class cPart;
class frmPart;

/// What a user and another program do, chosen by a seed: clicks, keys, entries, menu picks, devices, sizes, pages, and
/// calls of the window's and the device's interfaces.
class RobotActions : public QObject {
public:
    RobotActions(frmPart& window, cPart& part, std::vector<std::string> devices, std::string folder, unsigned seed);

    std::string Step();   ///< Does one thing and tells what.
    void SelectDevice(std::size_t number);
    void Settle();

    std::function<void()> midway = [] {};   ///< Called where a step has made one change and may make another.

private:
    std::string Do();
    std::string Click();
    std::string Press();
    std::string Enter();
    std::string Pick();
    std::string Device();
    std::string ChangeWindow();
    std::string CallWindow();
    std::string CallDevice();
    std::string CallBurst();
    void Watch();
    void Answer(QWidget& dialog);
    void CloseOthers();
    [[nodiscard]] int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    [[nodiscard]] QString Number();
    [[nodiscard]] std::vector<QWidget*> Controls() const;

    frmPart& window_;
    cPart& part_;
    std::vector<std::string> devices_;
    std::string folder_;
    std::mt19937 random_;
    int running_ = 0;   ///< How often a burst was seen running.
};
