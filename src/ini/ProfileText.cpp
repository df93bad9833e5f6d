#include "ini/ProfileText.h"

namespace {

constexpr std::string_view NewLineEnd = "\r\n";

std::string_view WithoutQuotes(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

}   // namespace

ProfileText::ProfileText(std::string bytes) : bytes_(std::move(bytes)), encoding_(EncodingOf(bytes_)) {
    const bool isUtf8 = encoding_ == ProfileEncoding::Utf8 || encoding_ == ProfileEncoding::MarkedUtf8;
    lines_ = Split(isUtf8 ? std::string_view(bytes_).substr(MarkSize(encoding_))
                          : kept_.emplace_back(DecodedText(bytes_, encoding_)));
    int number = 0;
    for (ProfileLine& line : lines_) {
        line.number = ++number;
    }
    IndexAll();
}

ProfileText::Lines ProfileText::Split(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        std::size_t end = 0;
        ProfileLine& line = lines.emplace_back(FirstLine(text, end));
        line.whole = text.substr(0, end);
        NoteLineEnd(line.whole.substr(line.text.size()));
        text.remove_prefix(end);
    }
    return lines;
}

void ProfileText::NoteLineEnd(std::string_view lineEnd) noexcept {
    if (!lineEnd.empty()) {
        lineEnd_ = lineEnd_.empty() || lineEnd_ == lineEnd ? lineEnd : NewLineEnd;
    }
}

std::string_view ProfileText::LineEnd() const noexcept {
    return lineEnd_.empty() ? NewLineEnd : lineEnd_;
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

bool ProfileText::ReadsBack(std::string_view value) noexcept {
    return WithoutQuotes(Trimmed(value, FileBlanks)) == value;
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
    const std::string line = std::string(key).append("=").append(value).append(LineEnd());
    const auto found = sections_.find(section);
    if (found == sections_.end()) {
        Append(std::string("[").append(section).append("]").append(LineEnd()) + line);
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
    std::string text;
    text.reserve(bytes_.size());
    for (const ProfileLine& line : lines_) {
        text.append(line.whole);
    }
    std::string contents = EncodedText(text, encoding_);
    if ((encoding_ == ProfileEncoding::Utf16LE || encoding_ == ProfileEncoding::Utf16BE) && bytes_.size() % 2 != 0) {
        contents.push_back(bytes_.back());   // Half a character at the end of a damaged file.
    }
    return contents;
}

// A byte order mark alone counts as a line without an end.
void ProfileText::Append(const std::string& text) {
    if (!lines_.empty()) {
        EndLine(std::prev(lines_.end()));
    } else if (MarkSize(encoding_) != 0) {
        lines_ = Split(kept_.emplace_back(LineEnd()));
    }
    Lines lines = Split(kept_.emplace_back(text));
    auto line = lines.begin();
    lines_.splice(lines_.end(), lines);
    for (; line != lines_.end(); ++line) {
        Index(line);
    }
}

// A name given with "[" or a line end in it makes more than a key of its section.
void ProfileText::InsertKey(Section& section, const std::string& text) {
    EndLine(section.last);
    Lines lines = Split(kept_.emplace_back(text));
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

// What stands before the value stays as it is.
void ProfileText::Replace(Position line, std::string_view value) {
    const bool isKey = line->kind == ProfileLine::Kind::Key;
    const std::size_t start = isKey ? line->text.find('=') + 1 : TrimmedRight(line->text, FileBlanks).size();
    std::string text(line->text.substr(0, start));
    text.append(isKey ? "" : "=").append(value).append(LineEnd());
    Lines lines = Split(kept_.emplace_back(std::move(text)));
    if (isKey && lines.size() == 1) {
        *line = lines.front();
    } else {
        lines_.splice(line, lines);
        lines_.erase(line);
        IndexAll();
    }
}

void ProfileText::EndLine(Position line) {
    if (line->whole.size() == line->text.size()) {
        std::string& whole = kept_.emplace_back(line->text);
        line->whole = whole.append(LineEnd());
        NoteLineEnd(line->whole.substr(line->text.size()));
    }
}
