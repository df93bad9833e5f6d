#include "ports/PortCalls.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/capability.h>
#include <linux/major.h>
#include <pwd.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <thread>

#if defined(__x86_64__) || defined(__i386__)
#include <sys/io.h>
#define TARNWICK_HAS_IO_PORTS 1
#else
#define TARNWICK_HAS_IO_PORTS 0
#endif

namespace {

namespace fs = std::filesystem;

// Wakes the thread that made it from a call that sleeps: again and again, for the first signal may come before the call
// goes to sleep.
class WakeUp {
public:
    explicit WakeUp(std::chrono::milliseconds after) {
        struct sigaction action = {};
        action.sa_handler = [](int) {};   // Without SA_RESTART: the call must end.
        ::sigaction(Signal(), &action, nullptr);
        sigset_t own;
        ::sigemptyset(&own);
        ::sigaddset(&own, Signal());
        ::pthread_sigmask(SIG_UNBLOCK, &own, nullptr);
        sigevent event = {};
        event.sigev_notify = SIGEV_THREAD_ID;
        event.sigev_signo = Signal();
        event._sigev_un._tid = ::gettid();
        running_ = ::timer_create(CLOCK_MONOTONIC, &event, &timer_) == 0;
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(after);
        itimerspec times = {};
        times.it_value.tv_sec = seconds.count();
        times.it_value.tv_nsec = std::chrono::nanoseconds(after - seconds).count();
        times.it_interval.tv_nsec = 20'000'000;
        running_ = running_ && ::timer_settime(timer_, 0, &times, nullptr) == 0;
    }
    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;
    ~WakeUp() {
        if (running_) {
            ::timer_delete(timer_);
        }
    }

    [[nodiscard]] bool Running() const { return running_; }

private:
    static int Signal() { return SIGRTMIN + 3; }

    timer_t timer_ = {};
    bool running_ = false;
};

std::string GroupName(gid_t group) {
    const struct group* entry = ::getgrgid(group);
    return entry == nullptr ? std::to_string(group) : entry->gr_name;
}

bool IsMember(gid_t group) {
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(0, ::getgroups(0, nullptr))));
    const int count = ::getgroups(static_cast<int>(groups.size()), groups.data());
    groups.resize(static_cast<std::size_t>(std::max(0, count)));
    return ::getegid() == group || std::ranges::find(groups, group) != groups.end();
}

bool IsListed(const passwd& user, gid_t group) {
    constexpr int kMostGroups = 1024;
    std::vector<gid_t> groups(kMostGroups);
    int count = kMostGroups;
    ::getgrouplist(user.pw_name, user.pw_gid, groups.data(), &count);
    groups.resize(static_cast<std::size_t>(std::clamp(count, 0, kMostGroups)));
    return std::ranges::find(groups, group) != groups.end();
}

bool HasOpen(const fs::path& process, const fs::path& file) {
    std::error_code error;
    for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end; entry.increment(error)) {
        std::error_code unreadable;
        if (fs::read_symlink(entry->path(), unreadable) == file) {
            return true;
        }
    }
    return false;
}

}   // namespace

int PortCalls::Open(const char* path) {
    return ::open(path, O_RDWR | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
}

int PortCalls::Close(int descriptor) {
    return ::close(descriptor);
}

int PortCalls::Ioctl(int descriptor, unsigned long request, void* argument) {
    return ::ioctl(descriptor, request, argument);
}

PortCalls::IoctlFunction PortCalls::DirectIoctl() {
    return ::ioctl;
}

int PortCalls::IoctlWithin(int descriptor, unsigned long request, std::chrono::milliseconds limit) {
    const WakeUp wakeUp(limit);
    return wakeUp.Running() ? ::ioctl(descriptor, request) : -1;
}

#if TARNWICK_HAS_IO_PORTS
int PortCalls::Ioperm(std::uint16_t port, bool on) {
    return ::ioperm(port, 1, on ? 1 : 0);
}

int PortCalls::IopermOutlook() {
    // Asking for no port at all is refused in any case, but not in the same way.
    if (::ioperm(0, 0, 0) != 0 && errno == ENOSYS) {
        return ENOSYS;
    }
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct rights[_LINUX_CAPABILITY_U32S_3] = {};
    const bool known = ::syscall(SYS_capget, &header, rights) == 0;
    return known && (rights[0].effective >> CAP_SYS_RAWIO & 1) == 0 ? EPERM : 0;
}

void PortCalls::Outb(std::uint8_t value, std::uint16_t port) {
    ::outb(value, port);
}
#else
int PortCalls::Ioperm(std::uint16_t, bool) {
    errno = ENOSYS;
    return -1;
}

int PortCalls::IopermOutlook() {
    return ENOSYS;
}

void PortCalls::Outb(std::uint8_t, std::uint16_t) {}
#endif

PortCalls::Time PortCalls::Now() {
    return std::chrono::steady_clock::now();
}

std::string PortCalls::TimeOfDay() {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    ::localtime_r(&now, &local);
    char text[16];
    return {text, std::strftime(text, sizeof text, "%H:%M:%S", &local)};
}

void PortCalls::Sleep(std::chrono::microseconds time) {
    std::this_thread::sleep_for(time);
}

bool PortCalls::Wait(std::condition_variable& change, std::unique_lock<std::mutex>& lock,
                     std::chrono::milliseconds limit, const std::function<bool()>& done) {
    return change.wait_for(lock, limit, done);
}

std::optional<unsigned> PortCalls::ParPortNumber(int descriptor) {
    struct stat info = {};
    if (::fstat(descriptor, &info) != 0 || !S_ISCHR(info.st_mode) || major(info.st_rdev) != PP_MAJOR) {
        return {};
    }
    return minor(info.st_rdev);
}

bool PortCalls::LeadsTo(const char* path, int descriptor) {
    struct stat now = {};
    struct stat then = {};
    return ::stat(path, &now) == 0 && ::fstat(descriptor, &then) == 0 && now.st_dev == then.st_dev &&
           now.st_ino == then.st_ino;
}

std::optional<std::string> PortCalls::FirstLine(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    return std::getline(file, line) ? std::optional(line) : std::nullopt;
}

std::vector<std::string> PortCalls::Names(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        names.push_back(entry->path().filename());
    }
    std::ranges::sort(names);
    return names;
}

DeviceRights PortCalls::Rights(const char* path) {
    DeviceRights rights;
    const passwd* user = ::getpwuid(::geteuid());
    rights.user = user == nullptr ? std::to_string(::geteuid()) : user->pw_name;
    struct stat info = {};
    if (::stat(path, &info) != 0) {
        return rights;
    }
    rights.groupWrites = (info.st_mode & S_IWGRP) != 0;
    rights.member = IsMember(info.st_gid);
    rights.listed = user != nullptr && IsListed(*user, info.st_gid);
    rights.group = GroupName(info.st_gid);
    return rights;
}

std::vector<std::string> PortCalls::Users(const std::string& path) {
    std::error_code error;
    const fs::path file = fs::canonical(path, error);
    std::vector<std::string> users;
    for (const std::string& process : Names("/proc")) {
        const fs::path folder = fs::path("/proc") / process;
        if (process.find_first_not_of("0123456789") == std::string::npos && process != std::to_string(::getpid()) &&
            HasOpen(folder, file)) {
            users.push_back(FirstLine(folder / "comm").value_or("?") + " (" + process + ")");
        }
    }
    return users;
}

PortCalls& SystemPortCalls() {
    // Never destroyed: a thread that the kernel holds may outlive the end of main.
    static PortCalls& calls = *new PortCalls;
    return calls;
}

std::string SystemReason(int error) {
    return std::generic_category().message(error);
}
