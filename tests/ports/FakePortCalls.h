#pragma once

#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstdio>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "ports/PortCalls.h"

/// A system with one parallel port, /dev/parport0, as the kernel shows it, and with I/O ports. What was done to the
/// hardware stands in `done`. Any call can be made to fail.
class FakePortCalls : public PortCalls {
public:
    bool plugged = true;
    int node = 1;   ///< Which device file stands at the path; another one after the device was away.
    std::vector<std::string> modules = {"parport_pc", "ppdev"};
    std::vector<std::string> otherPorts;
    std::vector<std::string> drivers;   ///< Registered for the port, beside the program.
    std::string active = "none";        ///< The one that holds it.
    std::vector<std::string> users;
    DeviceRights rights;
    std::string lockdown;
    int ioOutlook = 0;
    std::string time = "14:03:12";
    std::map<std::string, int> errors;       ///< The errno with which a step fails, always;
    std::map<std::string, int> errorsOnce;   ///< and the first time only.
    std::vector<std::string> done;
    std::atomic<int> openFiles = 0;

    void Pass(std::chrono::milliseconds span) { now_ += span; }

    /// From now on the opening of the device waits in the kernel, until it is let go. Whoever waits for the opening
    /// runs out of patience at once meanwhile, and waits as long as it takes otherwise.
    void Block() { blocked_ = true; }
    void LetGo() {
        {
            const std::lock_guard lock(mutex_);
            blocked_ = false;
        }
        free_.notify_all();
    }
    void WaitForClosing() {
        std::unique_lock lock(mutex_);
        free_.wait(lock, [this] { return closed_; });
    }

    /// What was done since the last call, on one line.
    std::string TakeDone() {
        std::string line;
        for (const std::string& step : std::exchange(done, {})) {
            line += (line.empty() ? "" : " ") + step;
        }
        return line;
    }

    int Open(const char* path) override {
        std::unique_lock lock(mutex_);
        free_.wait(lock, [this] { return !blocked_; });
        if (!plugged || std::string(path) != "/dev/parport0") {
            errno = ENOENT;
            return -1;
        }
        return Fails("open") ? -1 : (++openFiles, opened_ = node, 7);
    }
    int Close(int) override {
        const std::lock_guard lock(mutex_);
        done.emplace_back("close");
        --openFiles;
        closed_ = true;
        free_.notify_all();
        return 0;
    }
    int Ioctl(int, unsigned long request, void* argument) override {
        auto* byte = static_cast<unsigned char*>(argument);
        switch (request) {
            case PPEXCL:
                return Step("exclusive");
            case PPDATADIR:
                return Step(*static_cast<int*>(argument) == 0 ? "output" : "input");
            case PPWDATA:
                return Step("data", *byte);
            case PPWCONTROL:
                return Step("control", *byte);
            case PPRELEASE:
                return Step("release");
            default:
                return Step("unknown-request");
        }
    }
    IoctlFunction DirectIoctl() override { return nullptr; }
    int IoctlWithin(int, unsigned long request, std::chrono::milliseconds) override {
        return Step(request == PPCLAIM ? "claim" : "unknown-request");
    }
    int Ioperm(std::uint16_t port, bool on) override { return Step(on ? "ask" : "give-back", port); }
    int IopermOutlook() override { return ioOutlook; }
    void Outb(std::uint8_t value, std::uint16_t port) override { done.push_back(Hex(port) + ":=" + Hex(value)); }

    Time Now() override { return now_; }
    std::string TimeOfDay() override { return time; }
    void Sleep(std::chrono::microseconds span) override { done.push_back("sleep" + std::to_string(span.count())); }
    bool Wait(std::condition_variable& change, std::unique_lock<std::mutex>& lock, std::chrono::milliseconds,
              const std::function<bool()>& isDone) override {
        if (!blocked_) {
            change.wait(lock, isDone);
        }
        return isDone();
    }

    std::optional<unsigned> ParPortNumber(int) override {
        return errors.contains("number") ? std::nullopt : std::optional(0U);
    }
    bool LeadsTo(const char*, int) override { return plugged && node == opened_; }
    std::optional<std::string> FirstLine(const std::string& path) override {
        if (path == "/proc/sys/dev/parport/parport0/devices/active") {
            return active;
        }
        return lockdown.empty() ? std::nullopt : std::optional(lockdown);
    }
    std::vector<std::string> Names(const std::string& folder) override {
        if (folder == "/proc/sys/dev/parport/parport0/devices") {
            std::vector<std::string> names = drivers;
            names.emplace_back("active");
            return names;
        }
        if (folder == "/proc/sys/dev/parport") {
            std::vector<std::string> names = otherPorts;
            names.emplace_back("default");
            return names;
        }
        const bool loaded = std::ranges::find(modules, folder.substr(folder.rfind('/') + 1)) != modules.end();
        return loaded ? std::vector<std::string>{"refcnt"} : std::vector<std::string>{};
    }
    DeviceRights Rights(const char*) override { return rights; }
    std::vector<std::string> Users(const std::string&) override { return users; }

private:
    static std::string Hex(unsigned value) {
        char text[16];
        std::snprintf(text, sizeof text, "%X", value);
        return text;
    }
    bool Fails(const std::string& step) {
        if (const auto once = errorsOnce.find(step); once != errorsOnce.end()) {
            errno = once->second;
            errorsOnce.erase(once);
            return true;
        }
        if (const auto always = errors.find(step); always != errors.end()) {
            errno = always->second;
            return true;
        }
        return false;
    }
    int Step(const std::string& step) {
        done.push_back(step);
        return Fails(step) ? -1 : 0;
    }
    int Step(const std::string& step, unsigned value) {
        done.push_back(step + "=" + Hex(value));
        return Fails(step) ? -1 : 0;
    }

    std::mutex mutex_;
    std::condition_variable free_;
    bool blocked_ = false;
    bool closed_ = false;
    int opened_ = 0;
    Time now_;
};
