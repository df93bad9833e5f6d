#include "ports/RecordFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

static std::string SystemReason() {
    return std::generic_category().message(errno);
}

void RecordFile::Open() {
    Close();
    buffer_.clear();
    buffer_.reserve(pieceSize + pieceSize / 16);
    problem_.clear();
    size_ = 0;
    written_ = pending_ = lost_ = 0;
    descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor_ < 0)
        Fail(SystemReason());
}

void RecordFile::Append(std::string_view text, unsigned entries) {
    if (descriptor_ < 0) {
        lost_ += entries;
        return;
    }
    buffer_ += text;
    pending_ += entries;
    if (buffer_.size() >= pieceSize)
        Flush();
}

void RecordFile::Flush() {
    if (descriptor_ < 0)
        return;
    if (IsGone()) {
        Fail("the file was deleted or replaced while it was written");
    } else if (!WriteBuffer()) {
        Fail(SystemReason());
    } else {
        size_ += buffer_.size();
        written_ += std::exchange(pending_, 0);
        buffer_.clear();
    }
}

void RecordFile::Close() {
    Flush();
    const int descriptor = std::exchange(descriptor_, -1);
    // Some file systems report a full disk only here; which part of the file is missing can't be known then.
    if (descriptor >= 0 && ::close(descriptor) != 0)
        Fail(SystemReason());
}

// Writing to a deleted file succeeds, into nowhere.
bool RecordFile::IsGone() const {
    struct stat facts = {};
    return !buffer_.empty() && ::fstat(descriptor_, &facts) == 0 && facts.st_nlink == 0;
}

bool RecordFile::WriteBuffer() {
    std::string_view rest = buffer_;
    while (!rest.empty()) {
        const ssize_t count = ::write(descriptor_, rest.data(), rest.size());
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            rest.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void RecordFile::Fail(std::string reason) {
    problem_ = std::move(reason);
    lost_ += std::exchange(pending_, 0);
    buffer_.clear();
    const int descriptor = std::exchange(descriptor_, -1);
    if (descriptor < 0)
        return;
    // A piece that was written in part would end in the middle of a line. A device can't be cut, and needn't be.
    [[maybe_unused]] const int cut = ::ftruncate(descriptor, static_cast<off_t>(size_));
    ::close(descriptor);
}
