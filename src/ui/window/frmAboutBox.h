#pragma once

#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

/// Names the program, its version and that of the part file in use, and tells on request what changed in each
/// version. Any key closes it, but those that walk through it and scroll.
class frmAboutBox : public QDialog {
    Q_OBJECT

public:
    /// `partFileVersion` is empty when no device is selected.
    frmAboutBox(const QString& partFileVersion, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetUpControls();
    void BuildLayout();
    QFrame* BuildPanel();
    void Form_Load(const QString& partFileVersion);
    void Command1_Click();

    QLabel* lblPrgmVersion_;
    QLabel* lblPartVersion_;
    QPushButton* okayButton_;
    QPushButton* command1_;
    QPlainTextEdit* text1_;
};
