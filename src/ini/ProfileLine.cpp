#include "ini/ProfileLine.h"

#include <algorithm>

#include "ini/ProfileName.h"

ProfileLine::ProfileLine(std::string_view lineText) : text(lineText) {
    const std::string_view content = Trimmed(text, FileBlanks);
    if (content.empty() || content.front() == ';') {
        return;
    }
    if (content.front() == '[') {
        kind = Kind::Header;
        name = Trimmed(content.substr(1, content.find(']') - 1), FileBlanks);
        return;
    }
    const std::size_t equals = content.find('=');
    kind = equals == std::string_view::npos ? Kind::Word : Kind::Key;
    name = TrimmedRight(content.substr(0, equals), FileBlanks);
    if (kind == Kind::Key) {
        value = Trimmed(content.substr(equals + 1), FileBlanks);
    }
}

std::string_view FirstLine(std::string_view text, std::size_t& end) noexcept {
    const std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
    end = std::min(length + (text.substr(length, 2) == "\r\n" ? 2 : 1), text.size());
    return text.substr(0, length);
}
