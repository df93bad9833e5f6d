#include "platform/ProfileText.h"

namespace {

constexpr std::string_view NewLineEnd = "\r\n";

std::string_view WithoutQuotes(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

}   // namespace

ProfileText::ProfileText(std::string bytes) : bytes_(std::move(bytes)), encoding_(ProfileEncoding::Of(bytes_)) {
    const std::string_view body = std::string_view(bytes_).substr(encoding_.markSize);
    if (encoding_.unitSize == 1) {
        lines_ = Split(body, body);
    } else {
        lines_ = Split(kept_.emplace_back(FromUtf16(body)), body);
    }
    int number = 0;
    for (ProfileLine& line : lines_) {
        line.number = ++number;
    }
    IndexAll();
}

ProfileText::Lines ProfileText::Split(std::string_view text, std::string_view bytes) const {
    Lines lines;
    while (!text.empty()) {
        std::size_t end = 0;
        ProfileLine& line = lines.emplace_back(FirstLine(text, end));
        line.bytes = bytes.substr(0, end * encoding_.unitSize);
        text.remove_prefix(end);
        bytes.remove_prefix(line.bytes.size());
    }
    return lines;
}

void ProfileText::Index(Position line) {
    if (line->kind == ProfileLine::Kind::Header) {
        const auto [entry, isFirst] = sections_.try_emplace(line->name, Section{line, line, {}});
        current_ = isFirst ? &entry->second : nullptr;
    } else if (current_ != nullptr && line->kind != ProfileLine::Kind::Other) {
        current_->keys.try_emplace(line->name, line);
        if (line->kind == ProfileLine::Kind::Key) {
            current_->last = line;
        }
    }
}

void ProfileText::IndexAll() {
    sections_.clear();
    current_ = nullptr;
    for (auto line = lines_.begin(); line != lines_.end(); ++line) {
        Index(line);
    }
}

const ProfileText::Section* ProfileText::Find(std::string_view section) const {
    const auto found = sections_.find(Trimmed(section, " "));
    return found == sections_.end() ? nullptr : &found->second;
}

const ProfileLine* ProfileText::Find(std::string_view section, std::string_view key) const {
    const Section* const in = Find(section);
    if (in == nullptr) {
        return nullptr;
    }
    const auto found = in->keys.find(Trimmed(key, " "));
    return found == in->keys.end() ? nullptr : &*found->second;
}

std::optional<std::string_view> ProfileText::Value(std::string_view section, std::string_view key) const {
    const ProfileLine* const line = Find(section, key);
    if (line == nullptr || line->kind != ProfileLine::Kind::Key) {
        return std::nullopt;
    }
    return WithoutQuotes(line->value);
}

std::string ProfileText::SectionNames() const {
    std::string names;
    for (const ProfileLine& line : lines_) {
        if (line.kind == ProfileLine::Kind::Header) {
            names.append(line.name).push_back('\0');
        }
    }
    return names;
}

std::string ProfileText::KeyNames(std::string_view section) const {
    std::string names;
    const Section* const found = Find(section);
    if (found == nullptr) {
        return names;
    }
    for (Lines::const_iterator line = found->header; line != std::next(Lines::const_iterator(found->last)); ++line) {
        if (line->kind == ProfileLine::Kind::Key && !line->name.empty()) {
            names.append(line->name).push_back('\0');
        }
    }
    return names;
}

int ProfileText::LineNumber(std::string_view section, std::string_view key) const {
    const Section* const found = Find(section);
    if (found == nullptr) {
        return 0;
    }
    const ProfileLine* const line = Find(section, key);
    return line != nullptr && line->kind == ProfileLine::Kind::Key ? line->number : found->header->number;
}

void ProfileText::Write(std::string_view section, std::string_view key, std::string_view value) {
    section = Trimmed(section, " ");
    key = Trimmed(key, " ");
    const std::string line = std::string(key).append("=").append(value).append(NewLineEnd);
    const auto found = sections_.find(section);
    if (found == sections_.end()) {
        Append(std::string("[").append(section).append("]").append(NewLineEnd) + line);
    } else if (const auto old = found->second.keys.find(key); old != found->second.keys.end()) {
        Replace(old->second, value);
    } else {
        InsertKey(found->second, line);
    }
}

void ProfileText::RemoveKey(std::string_view section, std::string_view key) {
    const auto in = sections_.find(Trimmed(section, " "));
    if (in == sections_.end()) {
        return;
    }
    const auto found = in->second.keys.find(Trimmed(key, " "));
    if (found != in->second.keys.end()) {
        lines_.erase(found->second);
        IndexAll();
    }
}

void ProfileText::RemoveSection(std::string_view section) {
    const auto found = sections_.find(Trimmed(section, " "));
    if (found == sections_.end()) {
        return;
    }
    auto line = lines_.erase(found->second.header);
    while (line != lines_.end() && line->kind != ProfileLine::Kind::Header) {
        line = line->kind == ProfileLine::Kind::Key ? lines_.erase(line) : std::next(line);
    }
    IndexAll();
}

std::string ProfileText::Contents() const {
    const std::string_view bytes = bytes_;
    std::string contents(bytes.substr(0, encoding_.markSize));
    contents.reserve(bytes.size());
    for (const ProfileLine& line : lines_) {
        contents.append(line.bytes);
    }
    if (encoding_.markSize == 0 && ProfileEncoding::Of(contents).markSize != 0) {
        contents.insert(0, NewLineEnd);   // The line that has become the first must not read as a mark.
    }
    if (encoding_.unitSize == 2 && bytes.size() % 2 != 0) {
        contents.push_back(bytes.back());   // Half a character at the end of a damaged file.
    }
    return contents;
}

ProfileText::Lines ProfileText::NewLines(const std::string& text) {
    const std::string& kept = kept_.emplace_back(text);
    return encoding_.unitSize == 1 ? Split(kept, kept) : Split(kept, kept_.emplace_back(ToUtf16(text)));
}

// A byte order mark alone counts as a line without an end.
void ProfileText::Append(const std::string& text) {
    if (!lines_.empty()) {
        EndLine(std::prev(lines_.end()));
    } else if (encoding_.markSize != 0) {
        lines_ = NewLines(std::string(NewLineEnd));
    }
    Lines lines = NewLines(text);
    auto line = lines.begin();
    lines_.splice(lines_.end(), lines);
    for (; line != lines_.end(); ++line) {
        Index(line);
    }
}

// A name given with "[" or a line end in it makes more than a key of its section.
void ProfileText::InsertKey(Section& section, const std::string& text) {
    EndLine(section.last);
    Lines lines = NewLines(text);
    const auto line = lines.begin();
    const bool plain = lines.size() == 1 && line->kind != ProfileLine::Kind::Header;
    lines_.splice(std::next(section.last), lines);
    if (!plain) {
        IndexAll();
    } else if (line->kind == ProfileLine::Kind::Key) {
        section.keys.try_emplace(line->name, line);
        section.last = line;
    }
}

// What stands before the value stays byte for byte: a name in UTF-16 may hold what the code page doesn't.
void ProfileText::Replace(Position line, std::string_view value) {
    const bool isKey = line->kind == ProfileLine::Kind::Key;
    const std::size_t start = isKey ? line->text.find('=') + 1 : TrimmedRight(line->text, FileBlanks).size();
    const std::string rest = std::string(isKey ? "" : "=").append(value).append(NewLineEnd);
    const std::string& text = kept_.emplace_back(std::string(line->text.substr(0, start)) + rest);
    std::string_view bytes = text;
    if (encoding_.unitSize == 2) {
        bytes = kept_.emplace_back(std::string(line->bytes.substr(0, start * 2)) + ToUtf16(rest));
    }
    Lines lines = Split(text, bytes);
    if (isKey && lines.size() == 1) {
        *line = lines.front();
    } else {
        lines_.splice(line, lines);
        lines_.erase(line);
        IndexAll();
    }
}

void ProfileText::EndLine(Position line) {
    if (line->bytes.size() == line->text.size() * encoding_.unitSize) {
        std::string& bytes = kept_.emplace_back(line->bytes);
        bytes += encoding_.unitSize == 1 ? std::string(NewLineEnd) : ToUtf16(NewLineEnd);
        line->bytes = bytes;
    }
}
