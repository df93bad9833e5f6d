#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <memory>

#include "Figures.h"
#include "LargeDevice.h"
#include "core/cPart.h"
#include "platform/SimulatedPort.h"
#include "support/TempFolder.h"
#include "ui/frmPart.h"

namespace {

constexpr int kRegisters = 100;
constexpr int kFields = 1000;
constexpr int kShownFields = 400;
constexpr int kPLLs = 3;

/// The real window with a large device.
struct LargeWindow {
    TempFolder folder;
    SimulatedPort port;
    cPart part;
    std::unique_ptr<frmPart> window;

    LargeWindow() {
        folder.File("LARGE.ini", LargeDevice(kRegisters, kFields, kShownFields, kPLLs));
        window = std::make_unique<frmPart>(part, port, folder.Path(""));
        window->Form_Load();
        window->show();
        std::string name = "LARGE";
        window->SetupPartForm(name, "Fractional");
        QApplication::processEvents();
    }

    /// Turns every bit of every register, so that every text on the screen changes.
    void TurnBits(bool on) {
        for (cRegister& each : part.Registers()) {
            each.Value(on ? 0x5A5A5A5A : 0x25A5A5A5);
        }
    }
};

/// What stands in the controls that a refresh writes, to be written again without the program.
struct Screen {
    std::vector<std::pair<QLineEdit*, QString>> boxes;
    std::vector<std::pair<QAbstractButton*, bool>> marks;
    std::vector<std::pair<QComboBox*, int>> lists;
    std::vector<std::pair<QLabel*, QString>> labels;

    explicit Screen(const QWidget& window) {
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
    const auto refresh = [&large](bool on) {
        large.TurnBits(on);
        large.part.UpdateDisplays();
    };
    refresh(false);
    const Screen dark(*large.window);
    refresh(true);
    const Screen light(*large.window);
    return Compare(
        "UpdateDisplays, 100 registers, 1,000 fields, 3 PLLs", "the same texts straight into the same controls", 2,
        [&] {
            refresh(false);
            refresh(true);
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
    return Compare("Enter in txtVCO to the last port write", "one such refresh", 2, enter, [&] {
        large.TurnBits(up);
        large.part.UpdateDisplays();
    });
}

}   // namespace

std::vector<Figure> WindowFigures() {
    LargeWindow large;
    return {Refresh(large), EnterFrequency(large)};
}
