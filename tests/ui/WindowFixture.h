#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/cPart.h"
#include "support/FakePort.h"
#include "support/PartText.h"
#include "support/TempFolder.h"
#include "ui/window/frmPart.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

/// The real window on a folder of part files and a port that records. The window opens with the first use of
/// Window(), so that a test can write tarnwick.ini and part files before.
class WindowFixture : public testing::Test {
protected:
    void TearDown() override {
        Settle();
        window_.reset();
        EXPECT_TRUE(answers_.empty()) << answers_.size() << " expected dialogs never came";
    }

    static constexpr int kPatience =
        60'000;   ///< For an event that comes at once, but on a machine that has others to do.

    // The device.

    /// Writes the part file of a device of that name, a line end for each "|", and gives its path.
    std::string WritePart(const std::string& name, const std::string& text) {
        return folder.File(name + ".ini", Lines(text));
    }

    /// Selects a device as a click in a device menu does: with a family the burst controls show as well.
    void SelectDevice(const std::string& name, const std::optional<std::string>& family = {}) {
        std::string chosen = name;
        Window().SetupPartForm(chosen, family);
        Settle();
    }

    /// Writes a part file and selects its device. The device before goes first: it keeps its settings in its file.
    void OpenPart(const std::string& name, const std::string& text) {
        part.ClearPLL();
        WritePart(name, text);
        SelectDevice(name);
    }

    cRegister& Register(const std::string& name) { return part.Registers().At(name); }
    cRegister& Register(int position) { return part.Registers().At(position); }

    // The window.

    frmPart& Window() {
        if (window_ == nullptr) {
            window_ = std::make_unique<frmPart>(part, port, folder.Path(""));
            window_->Form_Load();
            constexpr QSize kUsual(900, 620);
            window_->resize(kUsual);
            window_->show();
            window_->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get(), kPatience));
        }
        return *window_;
    }

    /// The control of that object name; fails the test if there is none.
    template <class Control = QWidget>
    Control* Child(const QString& name) {
        if (auto* found = Window().findChild<Control*>(name)) {
            return found;
        }
        throw std::runtime_error("no such control: " + name.toStdString());
    }

    /// The name of a member of a control array.
    static QString Member(const QString& array, int index) { return QStringLiteral("%1(%2)").arg(array).arg(index); }

    [[nodiscard]] bool Has(const QString& name) { return Window().findChild<QWidget*>(name) != nullptr; }

    /// Whether the user sees the control when its page is current.
    [[nodiscard]] bool Shown(const QString& name) { return !Child(name)->isHidden(); }

    [[nodiscard]] QString Text(const QString& name) { return Child(name)->property("text").toString(); }
    [[nodiscard]] bool Checked(const QString& name) { return Child<QObject>(name)->property("checked").toBool(); }
    /// What the status bar says.
    [[nodiscard]] QString Note() { return Window().Status().NoteText(); }

    void Page(int index) {
        Window().SelectPage(index);
        Settle();
    }

    void Resize(int width, int height) {
        Window().resize(width, height);
        Settle();
    }

    /// A menu item's action, chosen as with the mouse.
    void Choose(const QString& action) {
        Child<QAction>(action)->trigger();
        Settle();
    }

    /// Lets the window handle all that waits: layouts, repaints, deletions, dialogs. Without a desktop nobody gives the
    /// focus back to the window after a dialog.
    void Settle() {
        while (QWidget* dialog = QApplication::activeModalWidget()) {
            AnswerNext(*dialog);
        }
        if (QApplication::activeWindow() == nullptr && window_ != nullptr) {
            window_->activateWindow();
        }
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    // The user.

    void Click(const QString& name, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {},
               QPoint at = {}) {
        QTest::mouseClick(Child(name), button, keys, at);
        Settle();
    }

    void KeyClick(const QString& name, Qt::Key key, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(Child(name), key, keys);
        Settle();
    }

    /// Types into a control, a key a character.
    void KeyClicks(const QString& name, const QString& text) {
        QTest::keyClicks(Child(name), text);
        Settle();
    }

    /// Types over what a box holds.
    void TypeInto(const QString& box, const QString& text) {
        Child<QLineEdit>(box)->clear();
        KeyClicks(box, text);
    }

    void EnterInto(const QString& box, const QString& text) {
        TypeInto(box, text);
        KeyClick(box, Qt::Key_Return);
    }

    /// A key where the focus is.
    void KeyClick(Qt::Key key, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : &Window(), key, keys);
        Settle();
    }

    /// Puts the focus on a control as the Tab key does.
    void Focus(const QString& name) {
        Child(name)->setFocus(Qt::TabFocusReason);
        Settle();
    }

    /// Where the focus stops at the next presses of the Tab key.
    QStringList TabStops(int count) {
        QStringList stops;
        for (int i = 0; i < count; ++i) {
            KeyClick(Qt::Key_Tab);
            stops << (FocusName().isEmpty() ? QApplication::focusWidget()->accessibleName() : FocusName());
        }
        return stops;
    }

    [[nodiscard]] static QString FocusName() {
        return QApplication::focusWidget() == nullptr ? QString() : QApplication::focusWidget()->objectName();
    }

    // Dialogs. Settling answers what is open, so the answer is given beforehand. Answers are used up in order. A dialog
    // that no answer waits for fails the test and is closed.

    /// How the next dialog is answered: the callback works its controls and closes it.
    template <class Dialog>
    void Answer(std::function<void(Dialog& dialog)> answer) {
        answers_.push_back([answer = std::move(answer)](QWidget& widget) {
            auto* dialog = qobject_cast<Dialog*>(&widget);
            if (dialog == nullptr) {
                ADD_FAILURE() << "another dialog came: " << DialogText(widget);
                Dismiss(widget);
                return;
            }
            answer(*dialog);
        });
    }

    /// Expects a message box of that text and clicks OK.
    void AnswerMessageBox(const QString& expectedText) {
        Answer<QMessageBox>([expectedText](QMessageBox& box) {
            EXPECT_EQ(box.text(), expectedText);
            QAbstractButton* ok = box.button(QMessageBox::Ok);
            EXPECT_NE(ok, nullptr) << "no OK button";
            ok != nullptr ? ok->click() : box.reject();
        });
    }

    /// The dialogs that were foreseen and haven't come.
    [[nodiscard]] std::size_t AnswersLeft() const { return answers_.size(); }

    TempFolder folder;
    FakePort port;
    cPart part;

private:
    static std::string DialogText(const QWidget& dialog) {
        const auto* box = qobject_cast<const QMessageBox*>(&dialog);
        const QString text = box != nullptr ? box->text() : dialog.windowTitle();
        return std::string(dialog.metaObject()->className()) + " \"" + text.toStdString() + '"';
    }

    static void Dismiss(QWidget& dialog) {
        if (auto* asking = qobject_cast<QDialog*>(&dialog)) {
            asking->reject();
        } else {
            dialog.close();
        }
    }

    void AnswerNext(QWidget& dialog) {
        if (answers_.empty()) {
            ADD_FAILURE() << "an unexpected dialog came: " << DialogText(dialog);
            Dismiss(dialog);
            return;
        }
        const auto answer = std::move(answers_.front());
        answers_.pop_front();
        answer(dialog);
    }

    std::deque<std::function<void(QWidget&)>> answers_;
    std::unique_ptr<frmPart> window_;
};
