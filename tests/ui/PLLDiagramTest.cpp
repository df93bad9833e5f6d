#include <QLabel>

#include "support/Cases.h"
#include "ui/WindowFixture.h"
#include "ui/pll/PLLDiagramItems.h"

/// The block diagrams of a shipped device with three loops.
class PLLDiagramTest : public WindowFixture {
protected:
    PLLDiagramTest() {
        std::filesystem::copy(PARTS_DIR "/QRV5530.ini", folder.Path("QRV5530.ini"));
        SelectDevice("QRV5530");
    }
    ~PLLDiagramTest() override { QApplication::setFont(usual_); }

    /// Where one diagram has lines and boxes that no label may touch.
    std::vector<QRect> Taken(int loop) {
        std::vector<QRect> taken;
        for (int k = 0; k < 19; ++k) {
            const auto* line = Child<DiagramLine>(Member("linPLL", loop * 19 + k));
            EXPECT_TRUE(line->Start().x() == line->End().x() || line->Start().y() == line->End().y()) << k;
            if (!line->isHidden()) {
                taken.push_back(QRect(line->Start(), line->End()).normalized().adjusted(-1, -1, 1, 1));
            }
        }
        for (const char* box : {"txtOsc", "txtFpd", "txtVCO", "txtRCounter", "txtNCounter", "txtFractNum"}) {
            const auto* edit = Child<QLineEdit>(Member(box, loop));
            taken.push_back(edit->geometry());
            EXPECT_GE(edit->height(), edit->sizeHint().height()) << box;
            EXPECT_GE(edit->width() - 8, edit->fontMetrics().horizontalAdvance("303.030303030303")) << box;
        }
        return taken;
    }

    void CheckLabel(const QLabel& label, const std::vector<QRect>& taken) {
        SCOPED_TRACE(label.objectName().toStdString());
        const QRect text = label.fontMetrics().boundingRect(QRect(0, 0, label.width(), 10000),
                                                            label.wordWrap() ? Qt::TextWordWrap : 0, label.text());
        EXPECT_TRUE(label.width() >= text.width() && label.height() >= text.height()) << "cut";
        EXPECT_TRUE(label.parentWidget()->rect().contains(label.geometry()));
        const bool insideFigure = label.text() == "~" || label.text() == "Z(s)";
        for (const QRect& other : taken) {
            EXPECT_FALSE(!label.isHidden() && !insideFigure && other.intersects(label.geometry())) << "touched";
        }
    }

private:
    QFont usual_ = QApplication::font();
};

TEST_F(PLLDiagramTest, NothingIsCutOrTouchedInAnyFont) {
    QApplication::setFont(QFont("DejaVu Sans", 9));
    Settle();
    const QSize page(950, 408);   // Of a maximised window on a screen of 1920 by 1080 at twice the usual size.
    EXPECT_EQ(Child("txtVCO(0)")->parentWidget()->size().boundedTo(page), Child("txtVCO(0)")->parentWidget()->size());
    for (const int points : {7, 10, 16, 24}) {
        for (const char* family : {"DejaVu Sans", "DejaVu Sans Mono"}) {
            SCOPED_TRACE(testing::Message() << family << points);
            QApplication::setFont(QFont(family, points));
            Settle();
            for (int loop = 0; loop < 3; ++loop) {
                const auto taken = Taken(loop);
                for (int k = 0; k < 22; ++k) {
                    CheckLabel(*Child<QLabel>(Member("lblPLL", loop * 22 + k)), taken);
                }
            }
        }
    }
}

TEST_F(PLLDiagramTest, BlocksThatTheDeviceLacksAreBridged) {
    const auto line = [&](int member) { return Child<DiagramLine>(Member("linPLL", member)); };
    // No R prescaler anywhere: from the oscillator straight to where the line into the counter begins.
    EXPECT_EQ(line(0)->End(), line(1)->Start());
    EXPECT_EQ(line(0)->Head(), DiagramLine::Arrow::None);
    // The N path of the first loop has a prescaler, that of the third none.
    EXPECT_EQ(line(13)->Head(), DiagramLine::Arrow::AtStart);
    EXPECT_LT(line(13)->Start().x(), line(14)->Start().x());
    EXPECT_EQ(line(38 + 13)->Start(), line(38 + 14)->Start());
    const Cases<const char*, bool> cases = {{"shpPLL(3)", true},   {"lblPLL(7)", true},   {"shpPLL(2)", false},
                                            {"lblPLL(6)", false},  {"shpPLL(21)", false}, {"lblPLL(51)", false},
                                            {"linPLL(18)", true},  {"lblPLL(21)", true},  {"linPLL(37)", false},
                                            {"lblPLL(43)", false}, {"lblPLL(14)", false}, {"shpPLL(26)", true}};
    for (const auto& [name, shown] : cases) {
        EXPECT_EQ(Shown(name), shown) << name;
    }
    EXPECT_FALSE(Has("linPLL(57)") || Has("shpPLL(27)") || Has("lblPLL(66)")) << "three diagrams, not more";
}
