#pragma once

#include <QGroupBox>
#include <vector>

/// A captioned frame of rows: a check box, or a label with a box and perhaps a spinner behind it. The rows run down
/// in as many columns as the height at hand asks for.
class BitsFrame : public QGroupBox {
    Q_OBJECT

public:
    explicit BitsFrame(QWidget* parent);

    /// The caption as it stands; "&" is no mnemonic.
    void Caption(const QString& text);
    [[nodiscard]] QString Caption() const { return caption_; }

    void AddRow(QWidget* box) { AddRow(nullptr, box); }
    void AddRow(QWidget* label, QWidget* box, QWidget* spinner = nullptr);
    void RemoveRows();

    /// Arranges the rows so that the frame is no higher than that, if one row isn't already, and gives its size.
    QSize Flow(int height);
    [[nodiscard]] QSize NeededSize() const { return sizeHint().expandedTo(minimumSizeHint()); }

    /// The widths of the labels and of the boxes, so that frames which stand below each other can share them.
    struct Widths {
        int labels = 0;
        int boxes = 0;
    };
    [[nodiscard]] Widths NaturalWidths() const;   ///< 0 for a frame that has nothing to share.
    void ShareWidths(const Widths& widths);       ///< Takes at least these.

    /// The controls that take the focus, in their order.
    [[nodiscard]] std::vector<QWidget*> FocusOrder() const;

private:
    struct Row {
        QWidget* label;
        QWidget* box;
        QWidget* spinner;
    };

    [[nodiscard]] bool Shares() const;
    [[nodiscard]] int RowHeight() const;
    [[nodiscard]] int RowsThatFit(int height) const;
    [[nodiscard]] bool LastFillerTaken(int rowsPerColumn) const;
    void Arrange(int rowsPerColumn);
    void Place(const Row& row, int line, int column);

    QString caption_;
    std::vector<Row> rows_;
    int rowsPerColumn_ = 0;   ///< As arranged; 0 when that has to be done anew.
};
