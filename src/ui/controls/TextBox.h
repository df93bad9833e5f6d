#pragma once

#include <QLineEdit>

/// A box for one line of text that tells when the user is done with it: by Enter, or by leaving the box with a move
/// of the user's own. The window losing the desktop's focus, a menu or message opening and moves that the program
/// makes don't count as leaving.
class TextBox : public QLineEdit {
    Q_OBJECT

public:
    explicit TextBox(QWidget* parent = nullptr);

    /// Whether the user changed the text since it was last written by program.
    [[nodiscard]] bool UserChanged() const { return isModified(); }

    /// Whether the box holds anything else than what was last written by program.
    [[nodiscard]] bool Edited() const { return isModified() || text() != shown_; }

    /// Writes a text by program. The user's mark goes; the caret stays where the text allows it.
    void ShowText(const QString& text);

    /// The same for a box that nobody is editing; a text that was changed and not entered stays.
    void Freshen(const QString& text);

signals:
    void EnterPressed();
    void LeftByUser();
    void RightPressed();   ///< The right mouse button went down.

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QString shown_;
};

/// Whether focus went by a move of the user's own.
bool IsUserMove(Qt::FocusReason reason);
