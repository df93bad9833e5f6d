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
    static QString N(const char* name, int index) {
        return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
    }

    /// A part file with registers "R0", "R1"... of those values, unprotected.
    static std::string PartText(int length, int control, const std::vector<double>& values,
                                const std::string& setup = {}) {
        std::string text = "[SETUP]\nREGISTER_LENGTH=" + std::to_string(length) +
                           "\nCONTROL_LENGTH=" + std::to_string(control) + "\n" + setup +
                           "[REGISTERS]\nCOUNT=" + std::to_string(values.size()) + "\n";
        for (std::size_t i = 0; i < values.size(); ++i) {
            const std::string item = (i < 10 ? "0" : "") + std::to_string(i);
            text += "NAME" + item + "=R" + std::to_string(i) + "\nMASK" + item + "=0\nVALUE" + item + "=" +
                    std::to_string(static_cast<long long>(values[i])) + "\n";
        }
        return text;
    }

    void Open(int length, int control, const std::vector<double>& values, const std::string& setup = {}) {
        OpenPart("DEVICE", PartText(length, control, values, setup));
        constexpr int kRegistersPage = 1;
        Page(kRegistersPage);
    }

    void TurnRound() { Click("cmdBitOrder"); }

    void Order(bool lowFirst) {
        if ((Child<QPushButton>("cmdBitOrder")->text() == "LSB -->") != lowFirst) {
            TurnRound();
        }
    }

    QLineEdit* Box(int row) { return Child<QLineEdit>(N("txtRegBits", row)); }
    QLabel* Label(const QString& name) { return Child<QLabel>(name); }

    QColor NameColour(int row) {
        const QLabel* name = Label(N("lblRegName", row));
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
        Click(N("txtRegBits", row), Qt::LeftButton, {}, {DigitMiddle(row, position), Box(row)->height() / 2});
    }

    QPoint InWindow(const QString& name, QPoint at = {}) { return Child(name)->mapTo(&Window(), at); }

    int SelectionStart(int row) {
        const QLineEdit* box = Box(row);
        return box->hasSelectedText() ? box->selectionStart() : box->cursorPosition();
    }
};
