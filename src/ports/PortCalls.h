#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// Who may write a device file, for the words behind "permission denied".
struct DeviceRights {
    std::string group;          ///< The group that the file belongs to.
    bool groupWrites = false;   ///< Its members may write the file.
    std::string user;           ///< The user that the program runs as.
    bool listed = false;        ///< That user belongs to the group by the system's files,
    bool member = false;        ///< and this program does: it was started after he was listed.
};

/// The system's calls that the port drivers need. Where nothing else is said, a call returns what the system's call of
/// that name returns and leaves the reason in errno. A test derives from it to stand in for the hardware and to make
/// calls fail. The calls come from more than one thread.
class PortCalls {
public:
    using Time = std::chrono::steady_clock::time_point;
    using IoctlFunction = int (*)(int, unsigned long, ...);

    PortCalls() = default;
    PortCalls(const PortCalls&) = delete;
    PortCalls& operator=(const PortCalls&) = delete;
    virtual ~PortCalls() = default;

    virtual int Open(const char* path);   ///< To read and write, without waiting.
    virtual int Close(int descriptor);
    virtual int Ioctl(int descriptor, unsigned long request, void* argument);
    /// The system's ioctl itself, so that nothing stands between a write and the kernel; null: Ioctl() is used.
    virtual IoctlFunction DirectIoctl();
    /// An ioctl without argument that is given up with EINTR when it has slept so long.
    virtual int IoctlWithin(int descriptor, unsigned long request, std::chrono::milliseconds limit);
    /// Asks for one I/O port, or gives it back. Holds for the calling thread. ENOSYS where there are no I/O ports.
    virtual int Ioperm(std::uint16_t port, bool on);
    /// The errno with which Ioperm is sure to fail for want of rights or ports; 0 if it may succeed.
    virtual int IopermOutlook();
    virtual void Outb(std::uint8_t value, std::uint16_t port);

    virtual Time Now();
    virtual std::string TimeOfDay();   ///< By the user's clock: "14:03:12".
    virtual void Sleep(std::chrono::microseconds time);
    /// Waits until another thread has done it, for so long at most; false if it isn't done by then.
    virtual bool Wait(std::condition_variable& change, std::unique_lock<std::mutex>& lock,
                      std::chrono::milliseconds limit, const std::function<bool()>& done);

    /// The number of the parallel port behind an open ppdev device; nothing if it is another kind of file.
    virtual std::optional<unsigned> ParPortNumber(int descriptor);
    /// Whether the path still leads to the file that was opened by it.
    virtual bool LeadsTo(const char* path, int descriptor);
    /// The first line of a file, without its end; nothing if it can't be read.
    virtual std::optional<std::string> FirstLine(const std::string& path);
    /// The names in a folder, sorted; empty if there is no such folder.
    virtual std::vector<std::string> Names(const std::string& folder);
    virtual DeviceRights Rights(const char* path);
    /// The other programs that have the file open, as "name (process number)", as far as this user may know.
    virtual std::vector<std::string> Users(const std::string& path);
};

/// The system's own. They outlive every thread.
PortCalls& SystemPortCalls();

/// The system's words for an errno.
std::string SystemReason(int error);
