#include <QAccessible>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <map>
#include <set>

#include "ui/WindowFixture.h"
#include "ui/controls/Colours.h"
#include "ui/controls/Spinner.h"

// The whole window from the keyboard and for a screen reader, with the largest devices that ship.

namespace {

/// What the user can work: by its kind, not by how it takes the focus, which is what is in question.
bool TakesInput(const QWidget* control) {
    if (qobject_cast<const QScrollBar*>(control) != nullptr) {
        return false;   // What it scrolls follows the focus.
    }
    return (control->focusPolicy() & Qt::TabFocus) != 0 || qobject_cast<const QAbstractButton*>(control) != nullptr ||
           qobject_cast<const QLineEdit*>(control) != nullptr || qobject_cast<const QComboBox*>(control) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(control) != nullptr;
}

/// What a screen reader says for it. The name of a list is the entry that is chosen; what it is for is its description.
QString Words(QWidget* control) {
    const bool list = qobject_cast<QComboBox*>(control) != nullptr;
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(control);
    return access == nullptr ? QString() : access->text(list ? QAccessible::Description : QAccessible::Name).trimmed();
}

std::string Called(const QWidget* control) {
    return (control->objectName() + QLatin1String(" of ") + control->parentWidget()->objectName()).toStdString();
}

class Accessibility : public WindowFixture, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        std::filesystem::copy(PARTS_DIR, folder.Path(""), std::filesystem::copy_options::recursive);
        SelectDevice(GetParam(), "Transceiver");
        Choose("mnuDualCheck");
    }

    /// The controls on the screen that can be worked now.
    std::vector<QWidget*> Inputs() {
        std::vector<QWidget*> inputs;
        for (auto* control : Window().findChildren<QWidget*>()) {
            if (control->isVisible() && control->isEnabled() && TakesInput(control)) {
                inputs.push_back(control);
            }
        }
        return inputs;
    }

    /// Where the focus stops on its way round by the Tab key, backward with Shift.
    std::set<const QWidget*> WalkRound(Qt::Key key) {
        std::set<const QWidget*> stops;
        Window().setFocus();
        for (KeyClick(key); stops.insert(QApplication::focusWidget()).second; KeyClick(key)) {
        }
        return stops;
    }

    /// How far the colour of a control's text stands off from what is behind it.
    double TextContrast(const QString& name) {
        QWidget* control = Child(name);
        const QPixmap around = Window().grab(QRect(control->mapTo(&Window(), QPoint()), control->size()));
        const QImage image = around.toImage().copy(3, 3, around.width() * 2 / 3, around.height() - 6);   // No frame.
        const QColor behind = image.pixelColor(0, image.height() - 1);
        double most = 1;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                most = std::max(most, Contrast(image.pixelColor(x, y), behind));
            }
        }
        return most;
    }

    void ForEachPage(const std::function<void()>& look) {
        for (int page = 0; page < Window().Pages().count(); ++page) {
            SCOPED_TRACE(Window().Pages().tabText(page).toStdString());
            Page(page);
            look();
        }
    }
};

/// One stop serves a group of options, whose others the arrow keys reach, and the two halves of a spinner.
bool Reached(const std::set<const QWidget*>& stops, const QWidget* control) {
    const auto sameGroup = [&](const QWidget* stop) {
        return qobject_cast<const QRadioButton*>(stop) != nullptr && stop->parentWidget() == control->parentWidget();
    };
    if (qobject_cast<const QRadioButton*>(control) != nullptr) {
        return std::any_of(stops.begin(), stops.end(), sameGroup);
    }
    const bool half = qobject_cast<const Spinner*>(control->parentWidget()) != nullptr;
    const QWidget* stop = half ? control->parentWidget() : control;
    return stops.count(stop->focusProxy() != nullptr ? stop->focusProxy() : stop) > 0;
}

}   // namespace

TEST_P(Accessibility, EachControlThatTakesInputHasANameOfItsOwn) {
    ForEachPage([&] {
        std::map<QString, const QWidget*> named;
        for (QWidget* control : Inputs()) {
            const QString words = Words(control);
            EXPECT_FALSE(words.isEmpty()) << Called(control);
            const bool first = named.emplace(words, control).second;
            EXPECT_TRUE(first) << Called(control) << " and " << Called(named[words]) << ": " << words.toStdString();
        }
    });
    for (auto* control : Window().findChildren<QWidget*>()) {
        const bool given = !control->objectName().isEmpty() && !control->objectName().startsWith("qt_");
        EXPECT_FALSE(given && !control->isHidden() && Words(control).isEmpty()) << Called(control);
    }
}

TEST_P(Accessibility, TheTabKeyReachesAllAndComesRound) {
    ForEachPage([&] {
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            const auto stops = WalkRound(key);
            for (const QWidget* control : Inputs()) {
                EXPECT_TRUE(Reached(stops, control)) << Called(control);
            }
        }
    });
}

TEST_P(Accessibility, APageTakesOverTheFocusWhereItWasOrAtItsFirstStop) {
    Page(3);
    TabStops(3);   // In by the Tab key, and away from the middle of the page.
    std::map<int, QWidget*> left{{3, QApplication::focusWidget()}};
    for (int i = 0; i < 2 * Window().Pages().count(); ++i) {
        QTest::keyClick(&Window().Pages(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        const int page = Window().Pages().currentIndex();
        SCOPED_TRACE(Window().Pages().tabText(page).toStdString());
        QWidget* focused = QApplication::focusWidget();
        if (left.count(page) == 0) {
            Window().Pages().tabBar()->setFocus();
            KeyClick(Qt::Key_Tab);
            EXPECT_EQ(focused, QApplication::focusWidget()) << Called(focused);
            TabStops(2);
            left[page] = QApplication::focusWidget();
        } else {
            EXPECT_EQ(focused, left[page]) << Called(focused);
        }
    }
}

TEST_P(Accessibility, NoMnemonicOrShortCutStandsForTwo) {
    std::map<QKeySequence, QString> shortCuts;
    const auto addTo = [](std::map<QKeySequence, QString>& taken, const QKeySequence& keys, const QString& what) {
        if (!keys.isEmpty()) {
            const bool first = taken.emplace(keys, what).second;
            EXPECT_TRUE(first) << what.toStdString() << " and " << taken[keys].toStdString();
        }
    };
    std::map<QKeySequence, QString> bar;
    for (const QAction* menu : Window().menuBar()->actions()) {
        addTo(bar, QKeySequence::mnemonic(menu->text()), menu->text());
    }
    EXPECT_EQ(bar.size(), 7U);
    for (const QMenu* menu : Window().menuBar()->findChildren<QMenu*>()) {
        std::map<QKeySequence, QString> items;
        for (const QAction* item : menu->actions()) {
            EXPECT_TRUE(item->isSeparator() || !item->text().trimmed().isEmpty()) << item->objectName().toStdString();
            addTo(items, QKeySequence::mnemonic(item->text()), item->text());
            addTo(shortCuts, item->shortcut(), item->text());
        }
    }
    ForEachPage([&] {
        std::map<QKeySequence, QString> onPage = bar;
        for (const QWidget* control : Inputs()) {
            addTo(onPage, QKeySequence::mnemonic(control->property("text").toString()), control->objectName());
        }
    });
}

TEST_P(Accessibility, WhatCanNotBeChangedCanBeReadInEveryTheme) {
    constexpr double kReadable = 4;   // 4.5, less what the smoothing of thin strokes takes.
    const QPalette system = QApplication::palette();
    for (const QColor& window : {QColor(0xef, 0xef, 0xef), QColor(0x35, 0x35, 0x35)}) {
        SCOPED_TRACE(window.name().toStdString());
        QApplication::setPalette(QPalette(window, window));
        for (const auto& [name, page] : {std::pair{"txtPortAdr", 0}, {"cmbLdBurst", 3}, {"lblCPState(0)", 4}}) {
            Page(page);
            EXPECT_GE(TextContrast(name), kReadable) << name;
        }
        Page(1);
        Click("txtRegBits(0)", Qt::LeftButton, {}, {Child("txtRegBits(0)")->width() - 4, 5});   // A control bit: blue.
        const QWidget* name = Child("lblRegName(0)");
        EXPECT_GE(Contrast(name->palette().color(name->foregroundRole()), window), 4.5);
        Page(4);
        Focus("spnRCounter(0)");
        const QImage spinner = Child("spnRCounter(0)")->grab().toImage();
        EXPECT_GE(Contrast(spinner.pixelColor(0, spinner.height() / 2), window), 3) << "no focus to be seen";
    }
    QApplication::setPalette(system);
}

INSTANTIATE_TEST_SUITE_P(Devices, Accessibility, testing::Values("QRV8320", "QRV5530", "Si4133"),
                         [](const auto& device) { return std::string(device.param); });
