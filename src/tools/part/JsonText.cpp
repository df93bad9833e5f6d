#include "tools/part/JsonText.h"

#include <cstdint>

#include "core/Numbers.h"

namespace {

unsigned ByteAt(std::string_view text, std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

/// How many bytes the character at the start takes; 0 if it is no well-formed UTF-8.
std::size_t CharacterLength(std::string_view text) {
    const unsigned first = ByteAt(text, 0);
    const std::size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length < 2) {
        return length;
    }
    // The second byte rules out overlong forms, surrogates and what is beyond the last code point.
    const unsigned second = ByteAt(text, 1);
    const unsigned lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : first > 0xF4 ? 0 : 0xBF;
    if (second < lowest || second > highest) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if ((ByteAt(text, i) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    return length;
}

std::string Character(std::string_view character) {
    const unsigned byte = ByteAt(character, 0);
    if (character == "\"" || character == "\\") {
        return "\\" + std::string(character);
    }
    return byte < 0x20 ? "\\u" + HexText(byte, 4) : std::string(character);
}

}   // namespace

std::string JsonText(std::string_view text) {
    std::string json = "\"";
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        json += length == 0 ? "\\uFFFD" : Character(text.substr(0, length));
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return json + '"';
}
