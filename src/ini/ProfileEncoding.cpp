#include "ini/ProfileEncoding.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

// Code page 1252 from 0x80 on; below and from 0xA0 on it is Unicode's first page. Five places stand for themselves.
constexpr std::array<char32_t, 32> upperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr unsigned firstUpperControl = 0x80;
constexpr unsigned endOfUpperControls = firstUpperControl + upperControls.size();

constexpr char32_t firstSurrogate = 0xD800;
constexpr char32_t firstLowSurrogate = 0xDC00;
constexpr char32_t endOfSurrogates = 0xE000;
constexpr char32_t firstPair = 0x10000;   // What takes two units of UTF-16.

constexpr std::array<std::string_view, 5> marks = {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF", ""};

std::string_view MarkOf(ProfileEncoding encoding) {
    return marks.at(static_cast<std::size_t>(encoding));
}

unsigned Byte(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
}

struct Character {
    char32_t code = 0;
    std::size_t size = 0;   ///< Bytes that it takes; 0 where no UTF-8 stands.
};

// The character that the text begins with, half a surrogate pair too.
Character FirstOf(std::string_view text) {
    const unsigned lead = Byte(text, 0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    char32_t code = lead & (0x7FU >> size);
    for (std::size_t at = 1; at < size; ++at) {
        const unsigned next = Byte(text, at);
        if ((next & 0xC0U) != 0x80) {
            return {};
        }
        code = code << 6U | (next & 0x3FU);
    }
    constexpr std::array<char32_t, 3> lowest = {0x80, 0x800, firstPair};
    const bool fits = lead >= 0xC2 && lead <= 0xF4 && code >= lowest.at(size - 2) && code <= 0x10FFFF;
    return fits ? Character{code, size} : Character{};
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const Character first = FirstOf(text);
        if (first.size == 0 || (first.code >= firstSurrogate && first.code < endOfSurrogates)) {
            return false;
        }
        text.remove_prefix(first.size);
    }
    return true;
}

void Append(std::string& text, char32_t code) {
    const auto put = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    const auto rest = [&](unsigned shift) { put(0x80U | (code >> shift & 0x3FU)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0U | code >> 6U);
        rest(0);
    } else if (code < firstPair) {
        put(0xE0U | code >> 12U);
        rest(6);
        rest(0);
    } else {
        put(0xF0U | code >> 18U);
        rest(12);
        rest(6);
        rest(0);
    }
}

std::string FromUtf16(std::string_view bytes, std::size_t lowByte) {
    const auto unit = [&](std::size_t at) {
        return static_cast<char32_t>(Byte(bytes, at + lowByte) | Byte(bytes, at + 1 - lowByte) << 8U);
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t code = unit(at);
        const char32_t next = at + 3 < bytes.size() ? unit(at + 2) : 0;
        if (code >= firstSurrogate && code < firstLowSurrogate && next >= firstLowSurrogate && next < endOfSurrogates) {
            code = firstPair + ((code - firstSurrogate) << 10U) + (next - firstLowSurrogate);
            at += 2;
        }
        Append(text, code);
    }
    return text;
}

void AppendUtf16(std::string& bytes, char32_t code, bool bigEndian) {
    if (code >= firstPair) {
        AppendUtf16(bytes, firstSurrogate + ((code - firstPair) >> 10U), bigEndian);
        code = firstLowSurrogate + ((code - firstPair) & 0x3FFU);
    }
    const auto low = static_cast<char>(static_cast<unsigned char>(code));
    const auto high = static_cast<char>(static_cast<unsigned char>(code >> 8U));
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
}

std::string FromCodePage(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const unsigned byte = Byte(bytes, at);
        const bool upper = byte >= firstUpperControl && byte < endOfUpperControls;
        Append(text, upper ? upperControls.at(byte - firstUpperControl) : byte);
    }
    return text;
}

bool AppendCodePage(std::string& bytes, char32_t code) {
    unsigned byte = code;
    if (code >= firstUpperControl && (code < endOfUpperControls || code > 0xFF)) {
        const auto* const found = std::find(upperControls.begin(), upperControls.end(), code);
        if (found == upperControls.end()) {
            return false;
        }
        byte = firstUpperControl + static_cast<unsigned>(found - upperControls.begin());
    }
    bytes += static_cast<char>(static_cast<unsigned char>(byte));
    return true;
}

// The text behind the mark, or nothing if the encoding doesn't have one of its characters.
std::optional<std::string> Encoded(std::string_view text, ProfileEncoding encoding) {
    if (encoding == ProfileEncoding::Utf8 || encoding == ProfileEncoding::MarkedUtf8) {
        return std::string(text);
    }
    std::string bytes;
    while (!text.empty()) {
        const Character first = FirstOf(text);
        if (first.size == 0) {
            return std::nullopt;
        }
        if (encoding != ProfileEncoding::CodePage1252) {
            AppendUtf16(bytes, first.code, encoding == ProfileEncoding::Utf16BE);
        } else if (!AppendCodePage(bytes, first.code)) {
            return std::nullopt;
        }
        text.remove_prefix(first.size);
    }
    return bytes;
}

}   // namespace

ProfileEncoding EncodingOf(std::string_view bytes) noexcept {
    for (const auto marked : {ProfileEncoding::MarkedUtf8, ProfileEncoding::Utf16LE, ProfileEncoding::Utf16BE}) {
        if (bytes.starts_with(MarkOf(marked))) {
            return marked;
        }
    }
    return IsUtf8(bytes) ? ProfileEncoding::Utf8 : ProfileEncoding::CodePage1252;
}

std::size_t MarkSize(ProfileEncoding encoding) noexcept {
    return MarkOf(encoding).size();
}

std::string DecodedText(std::string_view bytes, ProfileEncoding encoding) {
    bytes.remove_prefix(MarkSize(encoding));
    switch (encoding) {
        case ProfileEncoding::Utf16LE:
            return FromUtf16(bytes, 0);
        case ProfileEncoding::Utf16BE:
            return FromUtf16(bytes, 1);
        case ProfileEncoding::CodePage1252:
            return FromCodePage(bytes);
        case ProfileEncoding::Utf8:
        case ProfileEncoding::MarkedUtf8:
            break;
    }
    return std::string(bytes);
}

std::string EncodedText(std::string_view text, ProfileEncoding encoding) {
    if (const auto body = Encoded(text, encoding)) {
        std::string bytes = std::string(MarkOf(encoding)) + *body;
        if (DecodedText(bytes, EncodingOf(bytes)) == text) {
            return bytes;
        }
    }
    return std::string(MarkOf(ProfileEncoding::MarkedUtf8)).append(text);
}
