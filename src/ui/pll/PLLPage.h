#pragma once

#include <QWidget>
#include <array>
#include <optional>
#include <string>

#include "core/DeviceDisplay.h"
#include "pll/StepCommands.h"
#include "ui/pll/PLLDiagramView.h"
#include "ui/window/PageHost.h"

class QScrollArea;
class cPLL;

/// The page of one PLL: its loop as a block diagram, with every frequency and counter in a box on it. A window
/// smaller than the diagram scrolls it.
class PLLPage : public QWidget {
    Q_OBJECT

public:
    /// `index` is the PLL's position counted from 0; the controls are member `index` of their arrays.
    PLLPage(PageHost& host, int index, QWidget* parent = nullptr);

    void Bind(const QString& pll);   ///< The PLL that the boxes act on.
    void BindBlocks(const PLLBlocks& blocks);
    void BindFraction(const std::string& numerator, const std::string& denominator);
    void ShowPLL();                              ///< Everything from the PLL, the prescaler check last.
    void Freshen();                              ///< The same, but a text that is being edited stays.
    void Unbind();                               ///< Back to the design state's bindings.
    [[nodiscard]] std::string OscText() const;   ///< The reference box's text as it stands.

    /// Step commands of the menu, which act on the current page.
    void StepN(int steps);   ///< By so many phase detector steps, negative downward.
    void StepNumerator(bool up);
    void SetFrequency(EntryBox box);   ///< Goes to the box and applies what it holds.

    [[nodiscard]] QSize sizeHint() const override;

private:
    void Wire();

    // Answers to the user: a KeyPress (Enter) or the LostFocus of a box of kBoxRows, the Click on a label of
    // kBlockRows, a press of a spinner.
    void TakeEntry(EntryBox box, bool byEnter);
    void Toggle(DiagramBlock block);
    void SpinnerStepped(int which, bool up);
    void Follow(const EntryResult& result, FollowUp followUp, bool say = true);

    void BindBlock(DiagramBlock block, const std::string& field, const char* withoutField);
    template <class Read>
    void ShowNumber(EntryBox box, Read&& read);
    void ShowBlock(DiagramBlock block);
    void ShowCheck();
    void ShowHints();
    [[nodiscard]] std::string FpdText() const;

    PageHost& host_;
    int index_;
    QScrollArea* scroll_;
    PLLDiagramView* diagram_;
    std::string pll_;         ///< Name of the PLL; empty while there is none.
    std::string numerator_;   ///< Bit fields of the fraction.
    std::string denominator_;
    std::array<QString, kBoxRows.size()> faults_;   ///< Why a box could not be filled.
    bool keepEdited_ = false;                       ///< During Freshen().
    bool hintsStale_ = true;                        ///< What the tool tips say may have changed.
    struct Miss {
        EntryBox box;
        QString text;                ///< What was reached instead.
        std::vector<double> state;   ///< Of the device then.
    };
    std::optional<Miss> miss_;   ///< The last entry, where it could not be met exactly.
};
