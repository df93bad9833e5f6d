#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>

#include "files/FileCalls.h"

/// For files that nobody needs to survive a power cut: waiting for the disk is most of the time of a save.
class NoFlush final : public FileCalls {
public:
    int Fsync(int /*file*/) override { return 0; }
};

/// The system's file calls, of which the n-th fails. Counts from 0 all calls that a save or a read makes.
class FailingCalls final : public FileCalls {
public:
    /// The n-th call fails with its kind's error, and so does every call of the kind `always`.
    explicit FailingCalls(int n, std::string always = "") : n_(n), always_(std::move(always)) {}

    /// Instead of failing, the n-th call comes right after something else happened.
    FailingCalls(int n, std::function<void()> before) : n_(n), before_(std::move(before)) {}

    [[nodiscard]] const std::string& Failed() const { return failed_; }   ///< Its kind; empty if there was no n-th.
    [[nodiscard]] int Error() const { return errors_.at(failed_); }
    [[nodiscard]] int Count() const { return count_; }

    int Stat(const char* path, struct stat& info) override { return Fails("stat") ? -1 : FileCalls::Stat(path, info); }
    int Access(const char* path, int mode) override { return Fails("access") ? -1 : FileCalls::Access(path, mode); }
    int Open(const char* path, int flags, mode_t mode) override {
        return Fails("open") ? -1 : FileCalls::Open(path, flags, mode);
    }
    int Fstat(int file, struct stat& info) override { return Fails("stat") ? -1 : FileCalls::Fstat(file, info); }
    int Fchown(int file, uid_t user, gid_t group) override {
        return Fails("fchown") ? -1 : FileCalls::Fchown(file, user, group);
    }
    int Fchmod(int file, mode_t mode) override { return Fails("fchmod") ? -1 : FileCalls::Fchmod(file, mode); }
    ssize_t Read(int file, char* buffer, std::size_t size) override {
        return Fails("read") ? -1 : FileCalls::Read(file, buffer, size);
    }
    // Takes half of the bytes at a time, and every other time is interrupted first.
    ssize_t Write(int file, const char* buffer, std::size_t size) override {
        if (Fails("write")) {
            return -1;
        }
        errno = EINTR;
        interrupted_ = !interrupted_;
        return interrupted_ ? -1 : FileCalls::Write(file, buffer, (size + 1) / 2);
    }
    int Fsync(int /*file*/) override { return Fails("fsync") ? -1 : 0; }
    int Close(int file) override {
        const int result = FileCalls::Close(file);
        return Fails("close") ? -1 : result;
    }
    int Link(const char* from, const char* to) override { return Fails("link") ? -1 : FileCalls::Link(from, to); }
    int Rename(const char* from, const char* to) override { return Fails("rename") ? -1 : FileCalls::Rename(from, to); }
    int Unlink(const char* path) override { return Fails("unlink") ? -1 : FileCalls::Unlink(path); }

private:
    bool Fails(const std::string& kind) {
        const bool isNth = count_++ == n_;
        if (isNth) {
            failed_ = kind;
        }
        if (isNth && before_) {
            before_();
        } else if (isNth || kind == always_) {
            errno = errors_.at(kind);
            return true;
        }
        return false;
    }

    const std::map<std::string, int> errors_ = {{"stat", EACCES},  {"access", EROFS}, {"open", EACCES},
                                                {"fchown", EPERM}, {"fchmod", EPERM}, {"read", EIO},
                                                {"write", ENOSPC}, {"fsync", EIO},    {"close", EDQUOT},
                                                {"link", EPERM},   {"rename", EXDEV}, {"unlink", EBUSY}};
    int n_;
    std::string always_;
    std::function<void()> before_;
    std::string failed_;
    int count_ = 0;
    bool interrupted_ = false;
};

/// Does something in a process of its own, which ends before its n-th file call. False if it had no n-th.
inline bool KilledInCall(int n, const std::function<void()>& work) {
    constexpr int killed = 9;
    const pid_t child = ::fork();
    if (child == 0) {
        FailingCalls calls(n, [] { ::_exit(killed); });
        const FileCallsInPlace inPlace(calls);
        work();
        ::_exit(0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
    return WIFEXITED(status) && WEXITSTATUS(status) == killed;
}
