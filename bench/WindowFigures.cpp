#include <QAbstractButton>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "Figures.h"
#include "LargeWindow.h"

namespace {

constexpr int kRegisters = 100;
constexpr int kFields = 1000;
constexpr int kShownFields = 400;
constexpr int kPLLs = 3;

/// What stands in the controls that a refresh writes, to be written again without the program.
struct ShownTexts {
    std::vector<std::pair<QLineEdit*, QString>> boxes;
    std::vector<std::pair<QAbstractButton*, bool>> marks;
    std::vector<std::pair<QComboBox*, int>> lists;
    std::vector<std::pair<QLabel*, QString>> labels;

    explicit ShownTexts(const QWidget& window) {
        for (auto* box : window.findChildren<QLineEdit*>()) {
            boxes.emplace_back(box, box->text());
        }
        for (auto* mark : window.findChildren<QAbstractButton*>()) {
            if (mark->objectName().startsWith(QLatin1String("chkPrgm"))) {
                marks.emplace_back(mark, mark->isChecked());
            }
        }
        for (auto* list : window.findChildren<QComboBox*>()) {
            lists.emplace_back(list, list->currentIndex());
        }
        for (auto* label : window.findChildren<QLabel*>()) {
            if (label->objectName().startsWith(QLatin1String("lblCP")) ||
                label->objectName().startsWith(QLatin1String("lblPD"))) {
                labels.emplace_back(label, label->text());
            }
        }
    }

    void Write() const {
        for (const auto& [box, text] : boxes) {
            box->setText(text);
        }
        for (const auto& [mark, checked] : marks) {
            mark->setChecked(checked);
        }
        for (const auto& [list, index] : lists) {
            list->setCurrentIndex(index);
        }
        for (const auto& [label, text] : labels) {
            label->setText(text);
        }
    }
};

Figure Refresh(LargeWindow& large) {
    large.Refresh(false);
    const ShownTexts dark(*large.window);
    large.Refresh(true);
    const ShownTexts light(*large.window);
    return Compare(
        "UpdateDisplays, 100 registers, 1,000 fields, 3 PLLs", "the same texts straight into the same controls", 2,
        [&] {
            large.Refresh(false);
            large.Refresh(true);
        },
        [&] {
            large.part.Updating(true);
            dark.Write();
            light.Write();
            large.part.Updating(false);
        });
}

Figure EnterFrequency(LargeWindow& large) {
    auto* box = large.window->findChild<QLineEdit*>(QStringLiteral("txtVCO(0)"));
    bool up = false;
    const auto enter = [&] {
        up = !up;
        box->setText(up ? QStringLiteral("20") : QStringLiteral("30"));
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(box, &press);
    };
    return Compare("Enter in txtVCO to the last port write", "one such refresh", 2, enter, [&] { large.Refresh(up); });
}

}   // namespace

std::vector<Figure> WindowFigures() {
    LargeWindow large(kRegisters, kFields, kShownFields, kPLLs);
    return {Refresh(large), EnterFrequency(large)};
}
