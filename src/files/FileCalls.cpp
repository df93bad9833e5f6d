#include "files/FileCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace {

FileCalls systemCalls;
FileCalls* inPlace = &systemCalls;

}   // namespace

int FileCalls::Stat(const char* path, struct stat& info) {
    return ::stat(path, &info);
}

int FileCalls::Access(const char* path, int mode) {
    return ::faccessat(AT_FDCWD, path, mode, AT_EACCESS);
}

int FileCalls::Open(const char* path, int flags, mode_t mode) {
    return ::open(path, flags | O_CLOEXEC, mode);
}

int FileCalls::Fstat(int descriptor, struct stat& info) {
    return ::fstat(descriptor, &info);
}

int FileCalls::Fchown(int descriptor, uid_t owner, gid_t group) {
    return ::fchown(descriptor, owner, group);
}

int FileCalls::Fchmod(int descriptor, mode_t mode) {
    return ::fchmod(descriptor, mode);
}

ssize_t FileCalls::Read(int descriptor, char* buffer, std::size_t size) {
    return ::read(descriptor, buffer, size);
}

ssize_t FileCalls::Write(int descriptor, const char* buffer, std::size_t size) {
    return ::write(descriptor, buffer, size);
}

int FileCalls::Fsync(int descriptor) {
    return ::fsync(descriptor);
}

int FileCalls::Close(int descriptor) {
    return ::close(descriptor);
}

int FileCalls::Link(const char* from, const char* to) {
    return ::link(from, to);
}

int FileCalls::Rename(const char* from, const char* to) {
    return ::rename(from, to);
}

int FileCalls::Unlink(const char* path) {
    return ::unlink(path);
}

FileCalls& Files() {
    return *inPlace;
}

FileCallsInPlace::FileCallsInPlace(FileCalls& calls) : before_(*inPlace) {
    inPlace = &calls;
}

FileCallsInPlace::~FileCallsInPlace() {
    inPlace = &before_;
}

std::string FileErrorText(int error) {
    if (error == ChangedMeanwhile) {
        return "Another program changed it at the same moment; try again";
    }
    return error == NotAFile ? "Not a regular file" : std::generic_category().message(error);
}

int FileKindError(const struct stat& info) {
    if (S_ISREG(info.st_mode)) {
        return 0;
    }
    return S_ISDIR(info.st_mode) ? EISDIR : NotAFile;
}
