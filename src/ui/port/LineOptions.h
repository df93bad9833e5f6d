#pragma once

#include <QButtonGroup>
#include <QGroupBox>
#include <QRadioButton>
#include <optional>

/// A frame with an option button for each of the twelve lines of the port, of which one at most is selected. The
/// frame's caption says what stands on the line.
class LineOptions : public QGroupBox {
    Q_OBJECT

public:
    explicit LineOptions(const QString& caption, QWidget* parent = nullptr);

    [[nodiscard]] const QString& Caption() const { return caption_; }
    void Caption(const QString& caption);   ///< A long one is shortened on the screen only.

    [[nodiscard]] QRadioButton* Option(int line) const;

    /// Selects by program; without a line none is selected. Tells of it, as a user's click does.
    void Select(std::optional<int> line);

signals:
    void Selected(int line);   ///< An option was selected that wasn't before.

private:
    QString caption_;
    QButtonGroup* options_;
};

/// The caption of a line's option button: "1" to "128" by weight, "C1" to "C4".
QString LineCaption(int line);

/// The pin of the 25-way connector that a line leads to.
int ConnectorPin(int line);

/// Selects a button of an exclusive group, or none of them.
void SelectOption(QButtonGroup& group, QAbstractButton* option);

/// Lets the Tab key go to the selected button of a group, and to the others only while none is selected.
void TabToSelected(QButtonGroup& group);
