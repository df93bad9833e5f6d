#pragma once

#include <QString>
#include <string>

/// A text of the model, UTF-8, for the screen.
inline QString Qt8(const std::string& text) {
    return QString::fromStdString(text);
}

/// A text as captions and menus take it: "&" is itself, no mnemonic.
inline QString WithoutMnemonics(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}
