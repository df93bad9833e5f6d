#pragma once

#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QWidget>
#include <limits>
#include <string>
#include <vector>

#include "ui/bits/BitRow.h"
#include "ui/controls/ControlArray.h"
#include "ui/registers/RegisterBitMark.h"
#include "ui/registers/RegisterBitsBox.h"
#include "ui/registers/RegisterLoadButton.h"
#include "ui/window/PageHost.h"

/// The page that shows every register bit by bit, takes single bits from the keyboard, and loads one register.
///
/// The rows stand in columns under rulers with the bit numbers. Rows that don't fit scroll under the rulers, which
/// stay. What the user does is answered in RegistersPage.cpp; where things stand is in RegistersPageLayout.cpp.
class RegistersPage : public QWidget {
    Q_OBJECT

public:
    explicit RegistersPage(PageHost& host, QWidget* parent = nullptr);

    void AddRow(const cRegister& added);   ///< A row for the register added last. It shows no bits yet.
    void RebuildRulers();                  ///< After a change of the register length.
    void ShowRegisters();                  ///< Rewrites all rows from the registers.
    void ClearRows();                      ///< Back to the design state.
    void Entered();                        ///< The page became current: no selection shows.

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    struct Row {
        QLabel* name;
        RegisterBitsBox* bits;
        RegisterLoadButton* load;
        std::string key;                                           ///< The register's name.
        double shown = std::numeric_limits<double>::quiet_NaN();   ///< The value that the text shows.
    };

    void BuildControls();
    void MakeRow();
    void MakeRulers(int column);
    void WireRow(int index);

    void txtRegBits_Click(int index, int position);
    void txtRegBits_DblClick(int index);
    void txtRegBits_KeyDown(int index, int key);
    void txtRegBits_KeyPress(int index, QChar key);
    void cmdLoadReg_MouseDown(int index, Qt::MouseButton button, Qt::KeyboardModifiers shift);
    void cmdLoadReg_Click(int index);
    void cmdBitOrder_Click();
    void hscRegisters_Change();
    void vscRegisters_Change();

    [[nodiscard]] BitRow Bits() const;
    [[nodiscard]] Row& RowAt(int index) { return rows_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] const Row& RowAt(int index) const { return rows_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] int Count() const { return static_cast<int>(rows_.size()); }
    void ReadBack(int index);
    void WriteBit(int index, int position, QChar key);
    void MoveToRow(int index, int position);
    void SelectBit(int index, int position, int length);
    void MarkSelection();
    void UnmarkRow();
    void HideSelection();
    void ShowHex(int index);
    void MarkHex();
    void ShowRulers();
    void ReverseRulers();
    void NameRow(Row& row, const std::string& name);

    void Measure();
    void Arrange();
    void PlaceHeader();
    void PlaceRow(int index);
    void PlaceMark();
    void PlaceHex();
    void ShiftContent(int firstRow = 0);
    void HideRowsAbove(int firstRow);
    void UpdateBars();
    void ShowBars();
    void FitContent(int firstRow = 0);
    [[nodiscard]] QSize Excess() const;
    [[nodiscard]] int RowPitch() const;
    [[nodiscard]] int RowsPerColumn() const;
    [[nodiscard]] int Columns() const;
    [[nodiscard]] int ColumnOf(int index) const { return index / RowsPerColumn(); }
    [[nodiscard]] int ColumnWidth() const;
    [[nodiscard]] int LoadRight(int column) const;   ///< The right edge of its buttons, unscrolled.
    [[nodiscard]] QPoint PlaceOf(int index) const;   ///< Of a row within the content.
    [[nodiscard]] QRect DigitPlace(int index, int position) const;
    [[nodiscard]] QSize View() const;   ///< What of the page shows rows.
    void EnsureVisible(const QRect& place);

    PageHost& host_;
    QWidget* view_;      ///< Cuts off what is scrolled away.
    QWidget* content_;   ///< All rows, shifted by the scroll bars.
    ControlArray<QLabel> lblRegName_{QStringLiteral("lblRegName")};
    ControlArray<RegisterBitsBox> txtRegBits_{QStringLiteral("txtRegBits")};
    ControlArray<RegisterLoadButton> cmdLoadReg_{QStringLiteral("cmdLoadReg")};
    ControlArray<QLabel> lblOnes_{QStringLiteral("lblOnes")};
    ControlArray<QLabel> lblTens_{QStringLiteral("lblTens")};
    QPushButton* cmdBitOrder_;
    QLabel* label10_;
    RegisterBitMark* shpBitHiLite_;
    QLabel* lblHexValue_;
    QLabel* lblHexDisplay_;
    QScrollBar* hscRegisters_;
    QScrollBar* vscRegisters_;
    QWidget* cmdBoxRegisters_;
    std::vector<Row> rows_;
    BitRow::Order order_ = BitRow::Order::HighFirst;
    bool designState_ = true;
    int selectedRow_ = -1;    ///< The row with the highlight; -1 for none.
    int hexRow_ = -1;         ///< The row beside which the hexadecimal value stands; -1 for none.
    std::string hexDigits_;   ///< What that value was made of.

    // Sizes that depend on fonts, names and register length.
    int nameWidth_ = 0;
    int boxWidth_ = 0;
    int loadWidth_ = 0;
    int hexWidth_ = 0;
    int lineHeight_ = 0;   ///< Of a line of a ruler.
    int rowHeight_ = 0;
    int headerHeight_ = 0;
    int wheel_ = 0;   ///< Turns of the wheel that don't make a row yet.
};
