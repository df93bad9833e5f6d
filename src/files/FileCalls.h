#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <string>

/// The system's file calls, as far as saving and reading a whole file needs them. Each returns what the system's
/// call of that name returns and leaves the reason in errno. A test derives from it to make a call fail.
class FileCalls {
public:
    FileCalls() = default;
    FileCalls(const FileCalls&) = delete;
    FileCalls& operator=(const FileCalls&) = delete;
    virtual ~FileCalls() = default;

    virtual int Stat(const char* path, struct stat& info);
    virtual int Access(const char* path, int mode);   ///< With the rights that writing would have.
    virtual int Open(const char* path, int flags, mode_t mode);
    virtual int Fstat(int descriptor, struct stat& info);
    virtual int Fchown(int descriptor, uid_t owner, gid_t group);
    virtual int Fchmod(int descriptor, mode_t mode);
    virtual ssize_t Read(int descriptor, char* buffer, std::size_t size);
    virtual ssize_t Write(int descriptor, const char* buffer, std::size_t size);
    virtual int Fsync(int descriptor);
    virtual int Close(int descriptor);
    virtual int Link(const char* from, const char* to);
    virtual int Rename(const char* from, const char* to);
    virtual int Unlink(const char* path);
};

/// The calls in use: the system's own, unless others are put in their place.
FileCalls& Files();

/// Puts other calls in place as long as it lives. Doesn't own them.
class FileCallsInPlace {
public:
    explicit FileCallsInPlace(FileCalls& calls);
    FileCallsInPlace(const FileCallsInPlace&) = delete;
    FileCallsInPlace& operator=(const FileCallsInPlace&) = delete;
    ~FileCallsInPlace();

private:
    FileCalls& before_;
};

/// Stands for errno where a path is a device, a pipe or a socket.
constexpr int NotAFile = -1;

/// Stands for errno where another program was quicker.
constexpr int ChangedMeanwhile = -2;

/// The reason in words: the system's own for an errno, ours for the two above.
std::string FileErrorText(int error);

/// 0 for a regular file, else EISDIR or NotAFile.
int FileKindError(const struct stat& info);
