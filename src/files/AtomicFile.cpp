#include "files/AtomicFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <optional>

#include "files/FileCalls.h"

namespace {

namespace fs = std::filesystem;

// The end of the chain of links that starts at the path. Whether it exists doesn't matter.
fs::path FollowLinks(fs::path path, int& error) {
    for (int links = 0; links <= 40; ++links) {
        std::error_code notALink;
        const fs::path next = fs::read_symlink(path, notALink);
        if (notALink) {
            return path;
        }
        path = path.parent_path() / next;
    }
    error = ELOOP;
    return path;
}

bool IsRunning(pid_t process) {
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

// Names of the files that stand beside a file while it is replaced: ".name.process-number.new".
class SideNames {
public:
    explicit SideNames(const fs::path& target)
        : folder_(target.parent_path().empty() ? "." : target.parent_path()),
          head_("." + target.filename().string().substr(0, longestName) + ".") {}

    [[nodiscard]] const fs::path& Folder() const { return folder_; }

    std::string Next() {
        return (folder_ / (head_ + std::to_string(::getpid()) + "-" + std::to_string(++number_) + tail)).string();
    }

    /// Removes what processes left behind that were killed in the middle of this.
    void RemoveStale() const {
        std::error_code ignored;
        for (fs::directory_iterator entry(folder_, ignored), end; !ignored && entry != end; entry.increment(ignored)) {
            if (IsStale(entry->path().filename().string())) {
                Files().Unlink(entry->path().c_str());
            }
        }
    }

private:
    [[nodiscard]] bool IsStale(std::string_view name) const {
        if (!name.starts_with(head_) || !name.ends_with(tail)) {
            return false;
        }
        name.remove_prefix(head_.size());
        pid_t process = 0;
        const auto number = std::from_chars(name.data(), name.data() + name.size(), process);
        return number.ec == std::errc() && *number.ptr == '-' && (process == ::getpid() || !IsRunning(process));
    }

    // Leaves room in the 255 bytes of a file name for the numbers.
    static constexpr std::size_t longestName = 200;
    static constexpr const char* tail = ".new";

    fs::path folder_;
    std::string head_;
    int number_ = 0;
};

// One replacement. Its steps return 0 or the system's error number.
class Replacement {
public:
    Replacement(fs::path target, const FileStamp* seen) : target_(std::move(target)), seen_(seen), names_(target_) {}

    int Run(std::string_view contents);

private:
    int ExamineOld();
    int WriteNew(std::string_view contents);
    int CreateNew();
    [[nodiscard]] int KeepOwnerAndMode(int descriptor) const;
    [[nodiscard]] int CompareWithSeen() const;
    int PutInPlace(int folder);
    void TakeBack(bool kept);

    FileCalls& files_ = Files();
    fs::path target_;
    const FileStamp* seen_;
    SideNames names_;
    std::optional<struct stat> old_;
    std::string new_;
    std::string backup_;
};

int Replacement::Run(std::string_view contents) {
    if (const int error = ExamineOld(); error != 0) {
        return error;
    }
    names_.RemoveStale();
    // Opened first, so that a folder that can't be flushed is known before anything has changed.
    const int folder = files_.Open(names_.Folder().c_str(), O_RDONLY | O_DIRECTORY, 0);
    if (folder < 0) {
        return errno;
    }
    int error = WriteNew(contents);
    if (error == 0) {
        error = PutInPlace(folder);
    }
    files_.Close(folder);
    return error;
}

// A rename asks only for rights on the folder: the file's own are asked for here.
int Replacement::ExamineOld() {
    struct stat info = {};
    if (files_.Stat(target_.c_str(), info) != 0) {
        return errno == ENOENT ? 0 : errno;
    }
    if (const int error = FileKindError(info); error != 0) {
        return error;
    }
    old_ = info;
    return files_.Access(target_.c_str(), W_OK) == 0 ? 0 : errno;
}

int WriteAll(FileCalls& files, int descriptor, std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t written = files.Write(descriptor, contents.data(), contents.size());
        if (written > 0) {
            contents.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0) {
            return EIO;
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

int Replacement::WriteNew(std::string_view contents) {
    const int descriptor = CreateNew();
    if (descriptor < 0) {
        return errno;
    }
    int error = KeepOwnerAndMode(descriptor);
    if (error == 0) {
        error = WriteAll(files_, descriptor, contents);
    }
    if (error == 0 && files_.Fsync(descriptor) != 0) {
        error = errno;
    }
    if (files_.Close(descriptor) != 0 && error == 0) {
        error = errno;
    }
    if (error != 0) {
        files_.Unlink(new_.c_str());
    }
    return error;
}

int Replacement::CreateNew() {
    // Nobody else reads it before it has the old one's mode.
    const mode_t mode = old_ ? 0600 : 0666;
    for (int attempt = 0; attempt < 100; ++attempt) {
        new_ = names_.Next();
        const int descriptor = files_.Open(new_.c_str(), O_WRONLY | O_CREAT | O_EXCL, mode);
        if (descriptor >= 0 || errno != EEXIST) {
            return descriptor;
        }
    }
    return -1;
}

int Replacement::KeepOwnerAndMode(int descriptor) const {
    if (!old_) {
        return 0;
    }
    // Only an administrator can give a file away. A group of the user's own can still be kept.
    const auto mayNot = [] { return errno == EPERM || errno == EINVAL; };
    if (files_.Fchown(descriptor, old_->st_uid, old_->st_gid) != 0 &&
        (!mayNot() || (files_.Fchown(descriptor, static_cast<uid_t>(-1), old_->st_gid) != 0 && !mayNot()))) {
        return errno;
    }
    return files_.Fchmod(descriptor, old_->st_mode & 07777) == 0 ? 0 : errno;
}

int Replacement::CompareWithSeen() const {
    if (seen_ == nullptr) {
        return 0;
    }
    const FileStamp now = FileStamp::Of(target_);
    if (now == *seen_) {
        return 0;
    }
    return now.error == 0 || now.error == ENOENT ? ChangedMeanwhile : now.error;
}

// A second name keeps the old file until the folder is flushed, so that a failure of that can be taken back too.
// Where a file can't have two names, such a failure leaves the new contents.
int Replacement::PutInPlace(int folder) {
    backup_ = names_.Next();
    const bool kept = old_ && files_.Link(target_.c_str(), backup_.c_str()) == 0;
    int error = CompareWithSeen();   // As late as can be: writing and flushing takes its time.
    if (error == 0 && files_.Rename(new_.c_str(), target_.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        files_.Unlink(new_.c_str());
    } else if (files_.Fsync(folder) != 0 && errno != EINVAL) {   // EINVAL: nothing to flush in such a file system.
        error = errno;
        TakeBack(kept);
        return error;
    }
    if (kept) {
        files_.Unlink(backup_.c_str());
    }
    return error;
}

void Replacement::TakeBack(bool kept) {
    if (kept) {
        files_.Rename(backup_.c_str(), target_.c_str());
    } else if (!old_) {
        files_.Unlink(target_.c_str());
    }
}

}   // namespace

std::string ReplaceFile(const std::string& path, std::string_view contents, const FileStamp* seen) {
    int error = 0;
    const fs::path target = FollowLinks(path, error);
    if (error == 0) {
        error = Replacement(target, seen).Run(contents);
    }
    return error == 0 ? std::string() : "cannot write " + path + ": " + FileErrorText(error);
}
