#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <string>
#include <vector>

#include "ui/WindowFixture.h"

/// The Registers page of the real window, with its digits as the user points at them.
class RegistersFixture : public WindowFixture {
protected:
    /// Opens the page on a device with unprotected registers "R0", "R1"... of those values.
    void Open(int length, int control, const std::vector<double>& values, const std::string& setup = {}) {
        std::string text = "[SETUP]|REGISTER_LENGTH=" + std::to_string(length) +
                           "|CONTROL_LENGTH=" + std::to_string(control) + "|" + setup +
                           "[REGISTERS]|COUNT=" + std::to_string(values.size()) + "|";
        for (int i = 0; const double value : values) {
            text += Item(i, "NAME=R" + std::to_string(i) + "|MASK=0|VALUE=" + FileText(value));
            ++i;
        }
        OpenPart("DEVICE", text);
        constexpr int kRegistersPage = 1;
        Page(kRegistersPage);
    }

    void Order(bool lowFirst) {
        if ((Text("cmdBitOrder") == "LSB -->") != lowFirst) {
            Click("cmdBitOrder");
        }
    }

    QLineEdit* Box(int row) { return Child<QLineEdit>(Member("txtRegBits", row)); }

    QColor NameColour(int row) {
        const QWidget* name = Child(Member("lblRegName", row));
        return name->palette().color(name->foregroundRole());
    }

    /// The middle of the digit at a text position, in the box, as the box itself places its caret.
    int DigitMiddle(int row, int position) {
        QLineEdit* box = Box(row);
        const int start = box->selectionStart();
        const auto length = static_cast<int>(box->selectedText().size());
        const int caret = box->cursorPosition();
        const auto caretX = [&](int at) {
            box->setCursorPosition(at);
            return box->inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x() + 1;
        };
        const int middle = (caretX(position) + caretX(position + 1)) / 2;
        length > 0 ? box->setSelection(start, length) : box->setCursorPosition(caret);
        return middle;
    }

    void ClickDigit(int row, int position) {
        Click(Member("txtRegBits", row), Qt::LeftButton, {}, {DigitMiddle(row, position), Box(row)->height() / 2});
    }

    QPoint InWindow(const QString& name, QPoint at = {}) { return Child(name)->mapTo(&Window(), at); }

    int SelectionStart(int row) {
        const QLineEdit* box = Box(row);
        return box->hasSelectedText() ? box->selectionStart() : box->cursorPosition();
    }
};
