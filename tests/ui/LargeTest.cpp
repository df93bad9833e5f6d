#include <QMenu>
#include <QScreen>
#include <QScrollBar>
#include <QTabBar>

#include "ui/WindowFixture.h"
#include "ui/pll/PLLDiagramItems.h"
#include "ui/port/ConnectorShape.h"

// More of everything than any device has, in the smallest window and in a very large one.

namespace {

constexpr int kRegisters = 60;
constexpr int kPins = 64;
constexpr int kFields = 300;
constexpr int kPLLs = 3;
constexpr int kDevices = 200;

/// A name of 60 characters that ends with its number.
std::string LongName(const std::string& what, int number) {
    std::string name = what + " R&D ";
    const std::string end = "_" + std::to_string(number);
    name.resize(60 - end.size(), 'w');
    return name + end;
}

std::string LargePart() {
    const auto section = [](const char* name, int count) {
        return "[" + std::string(name) + "]|COUNT=" + std::to_string(count) + "|";
    };
    std::string text = "[SETUP]|REGISTER_LENGTH=53|" + section("REGISTERS", kRegisters);
    for (int i = 0; i < kRegisters; ++i) {
        text += Item(i, "NAME=" + LongName("Register", i) + "|MASK=0|VALUE=0");
    }
    text += section("PINS", kPins);
    for (int i = 0; i < kPins; ++i) {
        text += Item(i, "NAME=" + LongName("Pin", i) + "|LOCATION=" + std::to_string(i % 12));
    }
    text += section("BITS", kFields);
    for (int i = 0; i < kFields; ++i) {
        text += Item(i, "NAME=" + LongName("Field", i) + "|REG=" + LongName("Register", i % kRegisters) +
                            "|POS=" + std::to_string(i / kRegisters * 3) + "|LEN=3|DISPLAY=TRUE|TYPE=" +
                            std::array{"Bit", "Counter", "List"}.at(static_cast<std::size_t>(i) % 3) +
                            "|FRAME=" + LongName("Frame", i / 40) + "|COUNT=1|FORMAT=String");
        text += "VAL" + ItemNumber(i) + "00=" + LongName("Entry", i) + "|";
    }
    text += section("PLLS", kPLLs);
    for (int i = 0; i < kPLLs; ++i) {
        text += Item(i, "NAME=" + LongName("PLL", i) + "|N=" + LongName("Field", 3 * i + 1) +
                            "|NP=" + LongName("Field", 3 * i + 2) + "|R=" + LongName("Field", 3 * i + 31));
    }
    return text;
}

template <class... Kinds>
bool IsAny(const QWidget* control) {
    return ((qobject_cast<const Kinds*>(control) != nullptr) || ...);
}

/// Whether it is to be read or worked: not a frame round such, nor a shape of a diagram, whose text lies on it. Rows
/// and rulers go on below the bars that scroll them.
bool ShowsSomething(const QWidget* control) {
    const auto children = control->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    return control->isVisible() && control->metaObject() != &QWidget::staticMetaObject &&
           std::none_of(children.begin(), children.end(), [](const QWidget* each) { return each->isVisible(); }) &&
           !IsAny<DiagramShape, DiagramLine, ConnectorShape, QScrollBar>(control) &&
           !IsAny<QTabBar>(control->parentWidget()) && control->objectName() != "shpBitHiLite" &&
           control->objectName() != "cmdBoxRegisters";
}

/// The part of a control that isn't cut off by what it stands in, seen from the window.
QRect Seen(const QWidget* control) {
    QRect seen(control->mapTo(control->window(), QPoint()), control->size());
    for (const QWidget* in = control->parentWidget(); in != nullptr; in = in->parentWidget()) {
        seen &= QRect(in->mapTo(in->window(), QPoint()), in->size());
    }
    return seen;
}

class Large : public WindowFixture {
protected:
    void SetUp() override {
        std::string settings = "[MENUFRACPLL]\nCOUNT=" + std::to_string(kDevices) + '\n';
        for (int i = 0; i < kDevices; ++i) {
            settings += Item(i, "ITEM=" + LongName("DEVICE", i));
        }
        folder.File("tarnwick.ini", settings);
    }

    void ExpectNothingRunsUnderAnything() {
        std::vector<std::pair<QRect, const QWidget*>> shown;
        for (const auto* control : Window().findChildren<QWidget*>()) {
            if (const QRect seen = Seen(control); ShowsSomething(control) && !seen.isEmpty()) {
                for (const auto& [other, by] : shown) {
                    EXPECT_FALSE(other.intersects(seen))
                        << control->objectName().toStdString() << " under " << by->objectName().toStdString();
                }
                shown.emplace_back(seen, control);
            }
        }
        EXPECT_GT(shown.size(), 6U);
    }
};

}   // namespace

TEST_F(Large, NothingOverlapsInTheSmallestWindowAndInAVeryLargeOne) {
    OpenPart("LARGE", LargePart());
    ASSERT_EQ(Window().Pages().count(), 4 + kPLLs);
    for (const QSize size : {QSize(641, 427), QSize(3840, 2160)}) {
        Resize(size.width(), size.height());
        ASSERT_EQ(Window().size(), size) << "long names must not widen the window";
        for (int page = 0; page < Window().Pages().count(); ++page) {
            SCOPED_TRACE(testing::Message() << size.width() << " wide, page " << page);
            Page(page);
            ExpectNothingRunsUnderAnything();
        }
    }
}

TEST_F(Large, AllDevicesOfALongMenuCanBeReached) {
    auto* menu = qobject_cast<QMenu*>(Child<QAction>("mnuFracQRVxxxx(0)")->parent());
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), kDevices);
    menu->popup({});
    const QSize screen = menu->screen()->availableSize();
    EXPECT_EQ(menu->size().boundedTo(screen), menu->size());
    for (QAction* device : menu->actions()) {
        menu->setActiveAction(device);   // Scrolls to it.
        EXPECT_TRUE(menu->rect().contains(menu->actionGeometry(device))) << device->text().toStdString();
    }
    menu->close();
}

TEST_F(Large, StartsWithinTheScreen) {
    frmPart fresh(part, port, folder.Path(""));
    fresh.show();
    EXPECT_TRUE(fresh.screen()->availableGeometry().contains(fresh.frameGeometry()));
    EXPECT_GE(fresh.height(), fresh.screen()->availableSize().height() * 3 / 4) << "there is room for more";
}
