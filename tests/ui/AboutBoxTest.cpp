#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

#include "support/Cases.h"
#include "ui/WindowFixture.h"
#include "ui/window/frmAboutBox.h"

class AboutBox : public WindowFixture {
protected:
    frmAboutBox* Open() {
        Choose("mnuAbout");
        return Window().findChild<frmAboutBox*>();
    }

    /// A control of the box; the main window has one of the same name.
    template <class Control = QWidget>
    static Control* In(frmAboutBox* box, const char* name) {
        return QString(name) == box->objectName() ? qobject_cast<Control*>(box) : box->findChild<Control*>(name);
    }
    static QString Text(frmAboutBox* box, const char* name) { return In<QLabel>(box, name)->text(); }
    void Press(frmAboutBox* box, const char* button) {
        QTest::mouseClick(In<QPushButton>(box, button), Qt::LeftButton);
        Settle();
    }
};

TEST_F(AboutBox, ShowsBothVersionsAsTheyStandAtEachOpening) {
    QPointer<frmAboutBox> box = Open();
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(box->isModal());
    EXPECT_EQ(Text(box, "lblPrgmVersion"), "Program Version:   2.2.0");
    EXPECT_EQ(Text(box, "lblPartVersion"), "Part File Version: ") << "without a device";
    EXPECT_FALSE(In<QLabel>(box, "PIC_Icon")->pixmap().toImage().allGray()) << "the icon isn't drawn";

    OpenPart("X", "[SETUP]\nVERSION=1.7\n");
    EXPECT_EQ(Open(), box) << "a second box beside the first";
    EXPECT_EQ(Text(box, "lblPartVersion"), "Part File Version: ");
    box->close();
    Settle();
    EXPECT_EQ(box, nullptr) << "a closed box stays in memory";
    box = Open();
    EXPECT_EQ(Text(box, "lblPartVersion"), "Part File Version: 1.7");
}

TEST_F(AboutBox, VersionInfoOpensTheHistoryOnce) {
    frmAboutBox* box = Open();
    auto* history = In<QPlainTextEdit>(box, "Text1");
    EXPECT_FALSE(history->isVisible());
    for (int press = 0; press < 2; ++press) {
        Press(box, "Command1");
        EXPECT_EQ(box->height(), 300);
        EXPECT_TRUE(history->isVisible() && box->rect().contains(history->geometry()));
        const QStringList lines = history->toPlainText().split('\n');
        EXPECT_EQ(lines.size(), 25);
        EXPECT_EQ(lines.back(), "Fix Data Entry");
    }
}

TEST_F(AboutBox, AnyKeyClosesItButThoseThatWalkThroughIt) {
    const Cases<const char*, Qt::Key, bool> cases = {
        {"OkayButton", Qt::Key_X, true},    {"OkayButton", Qt::Key_Left, true},   {"frmAboutBox", Qt::Key_Escape, true},
        {"Command1", Qt::Key_Q, true},      {"Command1", Qt::Key_Space, false},   {"Command1", Qt::Key_Return, false},
        {"OkayButton", Qt::Key_Tab, false}, {"OkayButton", Qt::Key_Shift, false}, {"Text1", Qt::Key_PageDown, false},
        {"Text1", Qt::Key_Escape, true}};
    for (const auto& [where, key, closes] : cases) {
        const QPointer<frmAboutBox> box = Open();
        if (QString(where) == "Text1") {
            Press(box, "Command1");
        }
        In(box, where)->setFocus();
        QTest::keyClick(In(box, where), key);
        Settle();
        EXPECT_EQ(box == nullptr, closes) << where << ", key " << std::hex << key;
        if (box != nullptr) {
            box->close();
            Settle();
        }
    }
    const QPointer<frmAboutBox> box = Open();
    Press(box, "OkayButton");
    EXPECT_EQ(box, nullptr);
}
