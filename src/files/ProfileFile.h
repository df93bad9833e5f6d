#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>

/// What tells one state of a file from the next without reading it.
struct FileStamp {
    int error = -1;   ///< 0, or why there is nothing to read: an errno or NotAFile.
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    std::int64_t modified = 0;   ///< In nanoseconds.

    [[nodiscard]] static FileStamp Of(const std::string& path);
    [[nodiscard]] static FileStamp From(const struct stat& info);
    [[nodiscard]] static FileStamp Unreadable(int error);

    bool operator==(const FileStamp&) const = default;

    [[nodiscard]] bool IsSameFile(const FileStamp& other) const {
        return error == 0 && other.error == 0 && device == other.device && inode == other.inode;
    }

    /// True if the file was written so lately that a further write could leave it the same stamp: the time of
    /// modification moves in steps, of a clock tick or, in some file systems, of two seconds.
    [[nodiscard]] bool MayHide() const;
};

/// Reads the whole file. Returns its stamp as it was before the first byte was read; with an error in it, `bytes`
/// is empty.
FileStamp ReadProfileFile(const std::string& path, std::string& bytes);
