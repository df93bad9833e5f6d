#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Reads one string of an INI file, in UTF-8 whatever the file's encoding (ProfileEncoding.h). Returns the number of
/// characters copied, without the NUL at the end: a value that doesn't fit is cut to size - 1. A missing file, section
/// or key gives `defaultText`. `section` null lists the section names, `key` null the keys of the section: each name
/// ends with a NUL, the list with one more, and a list that doesn't fit is cut, with size - 2 as the result.
std::uint32_t GetPrivateProfileStringA(const char* section, const char* key, const char* defaultText, char* buffer,
                                       std::uint32_t size, const char* file);

/// Writes one string of an INI file, at once, atomically and durably. `value` null removes the key, `key` null
/// the section, but not the comments in it. Every byte that the change doesn't concern stays; lines that are written
/// end as the others do (ProfileText.h). True also if there was nothing to change. False if the file couldn't be
/// written; it then is as it was, and PrivateProfileError() tells why.
bool WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file);

/// Why the last failed write of this thread failed: the file and the system's reason, for a message.
const std::string& PrivateProfileError();

/// Why the file can't be read, in the system's words ("No such file or directory"), or nothing if it can.
std::optional<std::string> PrivateProfileReadError(const std::string& file);

/// The same, but only of a file that is there: what stands in it must not be taken for missing.
std::optional<std::string> PrivateProfileUnreadable(const std::string& file);

/// The line, counted from 1, on which the key that a read finds stands; without such a key that of the section's
/// header; 0 without such a section.
int PrivateProfileLine(std::string_view section, std::string_view key, const std::string& file);

/// While it lives, the file reads as it was when this was made, and isn't looked at again for each key: a
/// device is read from one state of its file, and fast. Writes through this interface are seen all the same.
class ProfileSnapshot {
public:
    explicit ProfileSnapshot(const std::string& file);
    ProfileSnapshot(const ProfileSnapshot&) = delete;
    ProfileSnapshot& operator=(const ProfileSnapshot&) = delete;
    ~ProfileSnapshot();

private:
    std::string file_;
};

/// Many writes to one file that happen together: readers of the file see none of them or all.
class ProfileTransaction {
public:
    enum class Start {
        FromFile,   ///< Change the file as it stands when this is made.
        Empty       ///< Replace its whole contents.
    };
    explicit ProfileTransaction(std::string file, Start start = Start::FromFile);
    ProfileTransaction(const ProfileTransaction&) = delete;
    ProfileTransaction& operator=(const ProfileTransaction&) = delete;
    ~ProfileTransaction();

    /// Sets a value so that it is read back as it is: one with blanks or quotation marks at its ends is put in quotes.
    void Write(std::string_view section, std::string_view key, std::string_view value);

    /// Replaces the file, or leaves it untouched if nothing changed. False if it couldn't be written; it then
    /// is as it was, and PrivateProfileError() tells why.
    bool Commit();

private:
    struct State;
    std::unique_ptr<State> state_;
};
