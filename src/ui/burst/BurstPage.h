#pragma once

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>

#include "ui/window/PageHost.h"

class TextBox;
class WaveNames;

/// The text of the burst list: a line for each command. It is only read; a click selects a line.
class BurstList : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit BurstList(QWidget* parent = nullptr);

    /// Shows descriptions or waveforms.
    void Show(const QString& text, bool vectors);

signals:
    void Clicked();
    void DoubleClicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    WaveNames* names_;
    bool pressed_ = false;   ///< A click has begun. The release that ends a double click is none of its own.
};

/// The page that edits and plays the burst list. The modes of the page are the captions of three buttons.
class BurstPage : public QWidget {
    Q_OBJECT

public:
    /// `selectedLine` is the number of the line clicked last, counted from 1.
    BurstPage(PageHost& host, std::int16_t& selectedLine, QWidget* parent = nullptr);

    void AddRegister(const cRegister& added);   ///< One more entry of the list of registers to load.
    void ShowSBIButtons();
    void ShowBurstControls();
    void ShowBurst(bool vectors);   ///< The list, as descriptions or as waveforms.
    void Freshen();                 ///< The list as it is now; waveforms stay waveforms unless it has changed.
    void ShowRunning(bool running);
    [[nodiscard]] bool Loops() const;
    void ClearRegisters();   ///< Empties the list of registers, hides the SBI buttons.

protected:
    void changeEvent(QEvent* event) override;

private:
    QPushButton* MakeButton(const char* name, const char* caption, const char* hint);
    QWidget* BuildCommandColumn();
    QWidget* BuildListButtons();
    void ColourPrompt();
    void Wire();
    void AddCommand(std::int16_t kind, const std::string& name);
    bool SelectClickedLine();
    void txtBurstCmds_Click();
    void txtBurstCmds_DblClick();
    void cmbLdBurst_Click(int entry);
    void cmdDelay_Click();
    void cmdDelete_Click();
    void cmdDeleteAll_Click();
    void cmdRun_Click();
    void cmdLoop_Click();
    void cmdInsert_Click();
    void cmdLEMode_Click();

    PageHost& host_;
    std::int16_t& selectedLine_;
    BurstList* txtBurstCmds_;
    std::string shown_;      ///< The text of the list,
    bool vectors_ = false;   ///< and whether it is that of the waveforms.
    QLabel* label1_;
    QComboBox* cmbLdBurst_;
    TextBox* txtDelay_;
    QPushButton* cmdDelay_;
    QPushButton* cmdSetPins_;
    QPushButton* cmdStrtSBI_;
    QPushButton* cmdStopSBI_;
    QPushButton* cmdRun_;
    QPushButton* cmdLoop_;
    QPushButton* cmdInsert_;
    QPushButton* cmdDelete_;
    QPushButton* cmdDeleteAll_;
    QPushButton* cmdLEMode_;
    QPushButton* command1_;
    QPushButton* cmdSave_;
    QPushButton* cmdLoad_;
};
