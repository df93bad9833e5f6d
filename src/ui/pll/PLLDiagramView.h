#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "pll/FrequencyEntry.h"
#include "pll/PrescalerCheck.h"
#include "ui/controls/TextBox.h"
#include "ui/pll/PLLDiagramTables.h"

/// The blocks whose text can be switched on.
enum class DiagramBlock : unsigned char { RPrescale, NPrescale, PDPol, CPGain, CPState };
inline constexpr std::array kDiagramBlocks{DiagramBlock::RPrescale, DiagramBlock::NPrescale, DiagramBlock::PDPol,
                                           DiagramBlock::CPGain, DiagramBlock::CPState};

/// The block diagram of the PLL with one index: all its controls, their places, and what appears and disappears. It
/// knows nothing of the device. Its size follows the font alone.
class PLLDiagramView : public QWidget {
    Q_OBJECT

public:
    PLLDiagramView(int index, QWidget* parent);

    [[nodiscard]] TextBox& Box(EntryBox box) const { return *boxes_[static_cast<std::size_t>(box)]; }
    [[nodiscard]] BlockLabel& Block(DiagramBlock block) const { return *blocks_[static_cast<std::size_t>(block)]; }

    /// A prescaler with its label; without it the line to it goes on to the counter.
    void ShowRPrescaler(bool shown);
    void ShowNPrescaler(bool shown);
    void ShowFraction(bool shown);
    void ShowCheck(const PrescalerResult& result);

signals:
    /// A button of a spinner was pressed; spinners count as in pll.
    void Stepped(int spinner, bool up);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void AddFigures(int index);
    void AddLabels(int index);
    void AddBoxes(int index);
    void AddSpinners(int index);
    void AddCheck(int index);
    void OrderTabs();
    void Arrange();
    void RunLine(std::size_t line);
    void ShowValue(std::size_t value, const std::optional<std::string>& text, bool broken);
    void PlaceCheck();
    [[nodiscard]] double FindUnit() const;
    [[nodiscard]] bool TextsFit(double unit) const;
    [[nodiscard]] QFont LabelFont(LabelLook look) const;
    [[nodiscard]] QPoint At(int x, int y) const;
    [[nodiscard]] QRect At(const DiagramPlace& place) const;

    double unit_ = 4;   ///< The grid, in pixels.
    bool arranged_ = false;
    bool checkHasC_ = true;
    bool rPrescaler_ = false;
    bool nPrescaler_ = false;
    std::array<DiagramLine*, kDiagramLines> lines_{};
    std::array<DiagramShape*, kDiagramShapes> shapes_{};
    std::array<QLabel*, kDiagramLabels> labels_{};
    std::array<TextBox*, kBoxRows.size()> boxes_{};
    std::array<QWidget*, kSpinnerRows.size()> spinners_{};
    std::array<BlockLabel*, kBlockRows.size()> blocks_{};
    std::array<CheckValueBox*, kCheckValues> checkBoxes_{};
    std::array<QLabel*, kCheckValues> checkLabels_{};
    DiagramShape* checkFrame_ = nullptr;
};
