#pragma once

#include <string>

#include "files/ProfileFile.h"
#include "ini/PrivateProfile.h"
#include "ini/ProfileText.h"

/// A change of an INI file from reading to saving. It works on what is on the disk, also where a snapshot of the file
/// is held, so that nothing is lost that others wrote.
class ProfileChange {
public:
    /// A missing file counts as empty. Another failure to read it is told by Commit.
    ProfileChange(std::string path, ProfileTransaction::Start start);

    [[nodiscard]] ProfileText& Text() noexcept { return text_; }

    /// Saves what differs from the file; a missing file for which there is nothing to save is created if `create` is
    /// set. False if the file couldn't be read or written; the reason is then in PrivateProfileError().
    bool Commit(bool create);

    /// Sets the text of PrivateProfileError(). Returns false.
    static bool Fail(std::string reason);

private:
    [[nodiscard]] bool IsSaved(const std::string& contents, bool create) const;

    std::string path_;
    bool needsOld_;
    std::string old_;
    FileStamp stamp_;
    ProfileText text_;
};
