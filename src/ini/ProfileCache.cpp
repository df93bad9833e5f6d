#include "ini/ProfileCache.h"

#include <algorithm>

ProfileCache& Profiles() {
    static ProfileCache cache;
    return cache;
}

const ProfileCache::Entry& ProfileCache::Current(std::string_view path) {
    Entry& entry = Place(path);
    if (entry.pins == 0) {
        Refresh(entry);
    }
    return entry;
}

void ProfileCache::Pin(const std::string& path) {
    Current(path);
    ++entries_.front().pins;
}

void ProfileCache::Unpin(const std::string& path) {
    --Place(path).pins;
}

ProfileCache::Entry& ProfileCache::Place(std::string_view path) {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [path](const Entry& entry) { return entry.path == path; });
    if (found != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, found);
        return entries_.front();
    }
    if (entries_.size() >= mostFiles) {
        const auto oldest =
            std::find_if(entries_.rbegin(), entries_.rend(), [](const Entry& e) { return e.pins == 0; });
        if (oldest != entries_.rend()) {
            entries_.erase(std::prev(oldest.base()));
        }
    }
    Entry& entry = entries_.emplace_front();
    entry.path = path;
    return entry;
}

void ProfileCache::Refresh(Entry& entry) {
    if (!entry.mayHide && entry.text != nullptr && FileStamp::Of(entry.path) == entry.stamp) {
        return;
    }
    std::string bytes;
    const FileStamp stamp = ReadProfileFile(entry.path, bytes);
    Take(entry, stamp, std::move(bytes));
}

void ProfileCache::Take(Entry& entry, const FileStamp& stamp, std::string bytes) {
    entry.stamp = stamp;
    entry.mayHide = stamp.MayHide();
    if (entry.text == nullptr || bytes != entry.text->Bytes()) {
        entry.text = std::make_unique<const ProfileText>(std::move(bytes));
    }
}

void ProfileCache::Written(const std::string& path, const FileStamp& before, const std::string& contents) {
    const FileStamp now = FileStamp::Of(path);
    for (Entry& entry : entries_) {
        if (entry.path != path && !entry.stamp.IsSameFile(before)) {
            continue;
        }
        if (entry.pins > 0) {
            Take(entry, now, contents);
        } else {
            entry.text.reset();
        }
    }
}
