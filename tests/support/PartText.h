#pragma once

#include <algorithm>
#include <string>

#include "core/Numbers.h"

/// A part file as the tests write it: a line end for each "|".
inline std::string Lines(std::string text) {
    std::replace(text.begin(), text.end(), '|', '\n');
    return text;
}

/// The keys of one item: of the number 3, "NAME=F|LEN=4" are "NAME03=F" and "LEN03=4".
inline std::string Item(int number, const std::string& keys) {
    std::string text;
    bool inKey = true;
    for (const char c : Lines(keys + '|')) {
        text += inKey && c == '=' ? ItemNumber(number) : "";
        text += c;
        inKey = c == '\n' || (inKey && c != '=');
    }
    return text;
}
