#include "RobotActions.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <array>

#include "core/cPart.h"
#include "ui/controls/TextBox.h"
#include "ui/window/frmPart.h"

RobotActions::RobotActions(frmPart& window, cPart& part, std::vector<std::string> devices, std::string folder,
                           unsigned seed)
    : window_(window),
      part_(part),
      devices_(std::move(devices)),
      folder_(std::move(folder)),
      random_(seed),
      clients_{RobotClient("client", part, devices_, random_), RobotClient("meddler", part, devices_, random_)} {
    Watch();
    // A click leaves the box where the focus was, whose entry then counts, before it does what else it does.
    connect(qApp, &QApplication::focusChanged, this, [this] { midway(); });
}

/// Answers dialogs and ends bursts and menus that go on and on. Set anew first: an answer may open a dialog.
void RobotActions::Watch() {
    constexpr int kPeriod = 3;
    QTimer::singleShot(kPeriod, this, [this] {
        Watch();
        QWidget* dialog = QApplication::activeModalWidget();
        if (!meddling_ && random_.Below(4) != 0 &&
            (dialog != nullptr || QApplication::activePopupWidget() != nullptr || part_.BurstRunning())) {
            Meddle();
        } else if (dialog != nullptr) {
            Answer(*dialog);
        }
        opened_ = QApplication::activePopupWidget() != nullptr ? opened_ + 1 : 0;
        if (opened_ > 3) {   // A button waits for its menu.
            QApplication::activePopupWidget()->close();
        }
        running_ = part_.BurstRunning() ? running_ + 1 : 0;
        if (running_ > 3) {
            part_.StopBurstCommands();
        }
    });
}

void RobotActions::Meddle() {
    meddling_ = true;
    midway();
    meddled_ += ", " + clients_[1].Step();
    midway();
    meddling_ = false;
}

void RobotActions::Answer(QWidget& widget) {
    auto* dialog = qobject_cast<QDialog*>(&widget);
    if (dialog == nullptr) {
        widget.close();
        return;
    }
    const bool accepted = random_.Below(3) != 0;
    if (auto* input = qobject_cast<QInputDialog*>(dialog)) {
        input->setTextValue(QStringLiteral("Mode %1").arg(random_.Below(100)));
    } else if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
        files->setDirectory(QString::fromStdString(folder_));
        files->selectFile(QStringLiteral("set%1.mac").arg(random_.Below(4)));
    }
    accepted ? dialog->accept() : dialog->reject();
}

void RobotActions::Settle() {
    if (QApplication::activeWindow() == nullptr) {
        window_.activateWindow();
    }
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

std::string RobotActions::Step() {
    meddled_.clear();
    const std::string done = Do();
    midway();
    while (QApplication::activeModalWidget() != nullptr) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    Settle();
    for (int popups = 0; QApplication::activePopupWidget() != nullptr && popups < 5; ++popups) {
        QWidget* popup = QApplication::activePopupWidget();
        if (random_.Below(2) == 0) {
            QTest::keyClick(popup, Qt::Key_Down);
            QTest::keyClick(popup, Qt::Key_Return);
        }
        if (QApplication::activePopupWidget() == popup) {
            popup->close();
        }
        Settle();
    }
    CloseOthers();
    return done + meddled_;
}

/// Windows with texts, and the window itself where it was closed.
void RobotActions::CloseOthers() {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* other : windows) {
        if (other != &window_ && other->isVisible() && other->isWindow() && random_.Below(3) == 0) {
            other->close();
        }
    }
    if (!window_.isVisible() || window_.isMinimized()) {
        window_.showNormal();
    }
    Settle();
}

std::string RobotActions::Do() {
    static constexpr std::array kAll{&RobotActions::Click,  &RobotActions::Click,  &RobotActions::Click,
                                     &RobotActions::Press,  &RobotActions::Press,  &RobotActions::Press,
                                     &RobotActions::Enter,  &RobotActions::Enter,  &RobotActions::Pick,
                                     &RobotActions::Pick,   &RobotActions::Client, &RobotActions::Client,
                                     &RobotActions::Client, &RobotActions::Client, &RobotActions::ChangeWindow};
    constexpr int kDeviceEvery = 25;
    if (part_.ID().empty() || random_.Below(kDeviceEvery) == 0) {
        return Device();
    }
    return (this->*random_.Of(kAll))();
}

/// What can be clicked now. The menu bar is left out: its items are picked by themselves.
std::vector<QWidget*> RobotActions::Controls() const {
    std::vector<QWidget*> controls;
    const auto all = window_.findChildren<QWidget*>();
    for (QWidget* control : all) {
        const bool menu = qobject_cast<QMenu*>(control) != nullptr || qobject_cast<QMenuBar*>(control) != nullptr;
        if (!menu && control->isVisible() && control->isEnabled() && control->window() == &window_) {
            controls.push_back(control);
        }
    }
    return controls;
}

std::string RobotActions::Click() {
    static constexpr std::array kButtons{Qt::LeftButton, Qt::LeftButton,  Qt::LeftButton,  Qt::LeftButton,
                                         Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
    static constexpr std::array<Qt::KeyboardModifier, 5> kKeys{Qt::NoModifier, Qt::NoModifier, Qt::NoModifier,
                                                               Qt::ShiftModifier, Qt::ControlModifier};
    const auto controls = Controls();
    QWidget* control = random_.Of(controls);
    const std::string name = control->objectName().toStdString();
    const QPoint at(random_.Below(std::max(1, control->width())), random_.Below(std::max(1, control->height())));
    const Qt::MouseButton button = random_.Of(kButtons);
    const Qt::KeyboardModifier keys = random_.Of(kKeys);
    if (random_.Below(12) == 0) {
        QTest::mouseDClick(control, button, keys, at);   // Leaves the button down.
        QTest::mouseRelease(control, button, keys, at);
        return "double click on " + name;
    }
    QTest::mouseClick(control, button, keys, at);
    return "click " + std::to_string(button) + " on " + name + " at " + std::to_string(at.x()) + "," +
           std::to_string(at.y()) + " keys " + std::to_string(keys);
}

std::string RobotActions::Press() {
    static constexpr std::array kKeys{Qt::Key_0,        Qt::Key_1,      Qt::Key_7,         Qt::Key_Return,
                                      Qt::Key_Tab,      Qt::Key_Left,   Qt::Key_Right,     Qt::Key_Up,
                                      Qt::Key_Down,     Qt::Key_Space,  Qt::Key_Minus,     Qt::Key_Period,
                                      Qt::Key_E,        Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Home,
                                      Qt::Key_PageDown, Qt::Key_Escape, Qt::Key_F1,        Qt::Key_Backtab};
    const Qt::Key key = random_.Of(kKeys);
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr && focus->window() == &window_ ? focus : &window_, key,
                    random_.Below(8) == 0 ? Qt::ShiftModifier : Qt::NoModifier);
    return "key " + std::to_string(key) + " in " + (focus == nullptr ? "" : focus->objectName().toStdString());
}

std::string RobotActions::Enter() {
    std::vector<TextBox*> boxes;
    for (QWidget* control : Controls()) {
        if (auto* box = qobject_cast<TextBox*>(control)) {
            boxes.push_back(box);
        }
    }
    if (boxes.empty()) {
        return Press();
    }
    TextBox* box = random_.Of(boxes);
    const std::string name = box->objectName().toStdString();
    const QString text = random_.Number();
    QTest::mouseClick(box, Qt::LeftButton);
    box->selectAll();
    QTest::keyClicks(box, text);
    QTest::keyClick(box, random_.Below(2) == 0 ? Qt::Key_Return : Qt::Key_Tab);
    return "entry of '" + text.toStdString() + "' in " + name;
}

std::string RobotActions::Pick() {
    std::vector<QAction*> items;
    const auto all = window_.menuBar()->findChildren<QAction*>();
    for (QAction* item : all) {
        const bool leaves = item->objectName() == QLatin1String("mnuOstrelWireless");   // Opens a browser.
        if (item->menu() == nullptr && item->isVisible() && item->isEnabled() && !item->isSeparator() && !leaves) {
            items.push_back(item);
        }
    }
    QAction* item = random_.Of(items);
    const std::string name = item->objectName().toStdString() + " \"" + item->text().toStdString() + "\"";
    item->trigger();
    return "menu item " + name;
}

void RobotActions::SelectDevice(std::size_t number) {
    std::string name = devices_[number % devices_.size()];
    window_.SetupPartForm(name, number % 2 == 0 ? std::optional<std::string>("VCO") : std::nullopt);
}

std::string RobotActions::Device() {
    const int number = random_.Below(static_cast<int>(devices_.size()) * 2);
    SelectDevice(static_cast<std::size_t>(number));
    return "device " + part_.ID();
}

std::string RobotActions::ChangeWindow() {
    if (random_.Below(2) == 0) {
        const QSize size(641 + random_.Below(1000), 427 + random_.Below(600));
        window_.resize(size);
        return "size " + std::to_string(size.width()) + " x " + std::to_string(size.height());
    }
    const int page = random_.Below(window_.Pages().count());
    if (random_.Below(2) == 0) {
        window_.SelectPage(page);
    } else {
        QTest::mouseClick(window_.Pages().tabBar(), Qt::LeftButton, {},
                          window_.Pages().tabBar()->tabRect(page).center());
    }
    return "page " + std::to_string(page);
}
