#include "files/ProfileFile.h"

#include <fcntl.h>
#include <time.h>

#include <cerrno>
#include <cstdlib>

#include "files/FileCalls.h"

namespace {

constexpr std::int64_t second = 1'000'000'000;

std::int64_t Nanoseconds(const timespec& time) {
    return time.tv_sec * second + time.tv_nsec;
}

int ReadAll(int descriptor, std::string& bytes, std::size_t expected) {
    std::size_t filled = 0;
    bytes.resize(expected + 1);   // The byte more lets one read find the end.
    while (true) {
        const ssize_t count = Files().Read(descriptor, bytes.data() + filled, bytes.size() - filled);
        if (count == 0 || (count < 0 && errno != EINTR)) {
            bytes.resize(count == 0 ? filled : 0);
            return count == 0 ? 0 : errno;
        }
        filled += count > 0 ? static_cast<std::size_t>(count) : 0;
        if (filled == bytes.size()) {
            bytes.resize(2 * filled);
        }
    }
}

}   // namespace

FileStamp FileStamp::Unreadable(int error) {
    FileStamp stamp;
    stamp.error = error;
    return stamp;
}

FileStamp FileStamp::From(const struct stat& info) {
    return {FileKindError(info), info.st_dev, info.st_ino, info.st_size, Nanoseconds(info.st_mtim)};
}

FileStamp FileStamp::Of(const std::string& path) {
    struct stat info = {};
    return Files().Stat(path.c_str(), info) == 0 ? From(info) : Unreadable(errno);
}

bool FileStamp::MayHide() const {
    timespec now = {};
    timespec tick = {};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    ::clock_getres(CLOCK_REALTIME_COARSE, &tick);
    const std::int64_t step = modified % second == 0 ? 2 * second : 2 * Nanoseconds(tick);
    return error == 0 && std::abs(Nanoseconds(now) - modified) <= step;
}

FileStamp ReadProfileFile(const std::string& path, std::string& bytes) {
    bytes.clear();
    // A pipe would make an ordinary open wait for its other end.
    const int descriptor = Files().Open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY, 0);
    if (descriptor < 0) {
        return FileStamp::Unreadable(errno);
    }
    struct stat info = {};
    FileStamp stamp = Files().Fstat(descriptor, info) == 0 ? FileStamp::From(info) : FileStamp::Unreadable(errno);
    if (stamp.error == 0) {
        stamp.error = ReadAll(descriptor, bytes, static_cast<std::size_t>(info.st_size));
    }
    Files().Close(descriptor);
    return stamp;
}
