#pragma once

#include <deque>
#include <list>
#include <optional>
#include <string>
#include <string_view>

#include "ini/ProfileEncoding.h"
#include "ini/ProfileLine.h"
#include "ini/ProfileName.h"

/// The text of an INI file in UTF-8: look-up in constant time, and changes that leave every other byte as it was.
/// Only the first section of a name counts, and in it the first key of a name. Names are compared as
/// ProfileNameEqual does; spaces around a given name don't count.
class ProfileText {
public:
    explicit ProfileText(std::string bytes);
    ProfileText(const ProfileText&) = delete;
    ProfileText& operator=(const ProfileText&) = delete;
    ~ProfileText() = default;

    /// What this was made from, without later changes.
    [[nodiscard]] const std::string& Bytes() const noexcept { return bytes_; }

    /// The key's value without the quotation marks around it; nothing without such a key.
    [[nodiscard]] std::optional<std::string_view> Value(std::string_view section, std::string_view key) const;

    /// Each name followed by a NUL, repeated ones too. A key without a name is left out.
    [[nodiscard]] std::string SectionNames() const;
    [[nodiscard]] std::string KeyNames(std::string_view section) const;

    /// The line of the key, else that of the section's header, else 0. Lines count as they stood in the bytes that
    /// this was made from.
    [[nodiscard]] int LineNumber(std::string_view section, std::string_view key) const;

    /// Sets the key's value as it is given, in its own line, or in a new one after the section's last key. Lines that
    /// are written end as those of the file do, in CRLF in a new file and in one that has several kinds of line ends.
    /// Linear in the file only if the value holds a line end.
    void Write(std::string_view section, std::string_view key, std::string_view value);
    /// Whether a value that is written so is read so: without blanks or a pair of quotation marks at its ends.
    [[nodiscard]] static bool ReadsBack(std::string_view value) noexcept;

    void RemoveKey(std::string_view section, std::string_view key);

    /// Removes the header and the keys below it. Comments, empty lines and other lines stay.
    void RemoveSection(std::string_view section);

    /// The bytes of the file with all changes, in its encoding, or in UTF-8 with a mark if that can't hold them.
    [[nodiscard]] std::string Contents() const;

private:
    using Lines = std::list<ProfileLine>;
    using Position = Lines::iterator;
    struct Section {
        Position header;
        Position last;   ///< Its last key, or the header.
        ProfileNameMap<Position> keys;
    };

    [[nodiscard]] const Section* Find(std::string_view section) const;
    [[nodiscard]] const ProfileLine* Find(std::string_view section, std::string_view key) const;

    Lines Split(std::string_view text);
    void NoteLineEnd(std::string_view lineEnd) noexcept;
    [[nodiscard]] std::string_view LineEnd() const noexcept;
    void Index(Position line);
    void IndexAll();

    void Append(const std::string& text);
    void InsertKey(Section& section, const std::string& text);
    void Replace(Position line, std::string_view value);
    void EndLine(Position line);

    std::string bytes_;
    ProfileEncoding encoding_;
    std::string_view lineEnd_;       ///< Of all lines, or CRLF if they differ; empty without any.
    std::deque<std::string> kept_;   ///< What lines are views into, other than bytes_.
    Lines lines_;
    ProfileNameMap<Section> sections_;
    Section* current_ = nullptr;   ///< The section of the last line; null where keys can't be asked for.
};
