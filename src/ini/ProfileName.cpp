#include "ini/ProfileName.h"

#include <algorithm>
#include <cstdint>

#include "files/Hash.h"

namespace {

// The small letters of code page 1252, as they stand in UTF-8: a letter keeps its length, so that texts can be compared
// byte by byte.
unsigned Lower(std::string_view text, std::size_t at) noexcept {
    const auto byte = [text](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    const unsigned c = byte(at);
    if (c < 0x80) {
        return c >= 'A' && c <= 'Z' ? c + 0x20 : c;
    }
    if (c == 0xC5 && byte(at + 1) == 0xB8) {   // Y with diaeresis is alone in having its small letter elsewhere.
        return 0xC3;
    }
    const unsigned lead = at > 0 ? byte(at - 1) : 0;
    if (lead == 0xC3) {
        return c <= 0x9E && c != 0x97 ? c + 0x20 : c;   // 0x97 is the multiplication sign.
    }
    if (lead == 0xC5) {
        return c == 0xB8 ? 0xBF : c == 0x92 || c == 0xA0 || c == 0xBD ? c + 1 : c;   // OE, S and Z with caron.
    }
    return c;
}

}   // namespace

std::size_t ProfileNameHash::operator()(std::string_view name) const noexcept {
    Hash hash;
    for (std::size_t at = 0; at < name.size(); ++at) {
        hash.Add(static_cast<unsigned char>(Lower(name, at)));
    }
    return static_cast<std::size_t>(hash.Value());
}

bool ProfileNameEqual::operator()(std::string_view left, std::string_view right) const noexcept {
    if (left.size() != right.size()) {
        return false;
    }
    std::size_t at = 0;
    while (at < left.size() && Lower(left, at) == Lower(right, at)) {
        ++at;
    }
    return at == left.size();
}

std::string_view TrimmedRight(std::string_view text, std::string_view blanks) noexcept {
    return text.substr(0, text.find_last_not_of(blanks) + 1);   // npos + 1 is 0.
}

std::string_view Trimmed(std::string_view text, std::string_view blanks) noexcept {
    text = TrimmedRight(text, blanks);
    return text.substr(std::min(text.find_first_not_of(blanks), text.size()));
}
