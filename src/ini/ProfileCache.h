#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>

#include "files/ProfileFile.h"
#include "ini/ProfileText.h"

/// The INI files that were read last, parsed. A file is read again only when it has changed on the disk. For one
/// thread.
class ProfileCache {
public:
    struct Entry {
        std::string path;
        FileStamp stamp;
        bool mayHide = false;   ///< The stamp was too fresh to trust when the file was read.
        int pins = 0;
        std::unique_ptr<const ProfileText> text;   ///< Of no bytes if the file can't be read.
    };

    /// The file as it is now, or as it was when it was pinned. Valid until the next call.
    const Entry& Current(std::string_view path);

    /// Holds the file's state until as many calls of Unpin.
    void Pin(const std::string& path);
    void Unpin(const std::string& path);

    /// Tells that the file, which had the stamp `before`, was given these contents. Pinned states take them over.
    void Written(const std::string& path, const FileStamp& before, const std::string& contents);

private:
    Entry& Place(std::string_view path);
    static void Refresh(Entry& entry);
    static void Take(Entry& entry, const FileStamp& stamp, std::string bytes);

    static constexpr std::size_t mostFiles = 4;   // The settings, the device, and those just left.

    std::list<Entry> entries_;   // The one used last is first.
};

/// The one cache of the program.
ProfileCache& Profiles();
