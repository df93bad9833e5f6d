#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <iostream>
#include <string>
#include <thread>

#include "ports/PortCalls.h"
#include "ports/PortDrivers.h"

// Tells how a port stands, as the status bar would, whenever that changes, and at the end the whole story. Does what
// the program does: writes to the port now and then, and looks at it when there is nothing else to do.
//
// usage: port_state DRIVER ROUNDS [DEVICE]     ends early, but properly, with SIGTERM
//        port_state claim DEVICE               waits for the device as the driver would, without looking who holds it

static std::string Line(const PortStatus& status) {
    const std::string failed = std::to_string(status.failedWrites) + " writes failed";
    return (status.ready ? "ready: " : "not ready: ") + status.summary +
           (status.failedWrites == 0   ? ""
            : status.failedWrites == 1 ? ", 1 write failed"
                                       : ", " + failed);
}

static int Claim(const char* device) {
    PortCalls& calls = SystemPortCalls();
    const int file = calls.Open(device);
    const int result = calls.IoctlWithin(file, PPCLAIM, std::chrono::milliseconds(100));
    std::cout << (result == 0 ? "claimed" : SystemReason(errno)) << std::endl;
    return 0;
}

static volatile std::sig_atomic_t stopped = 0;

int main(int argc, char* argv[]) {
    if (argc < 3) {
        std::cerr << "usage: port_state DRIVER ROUNDS [DEVICE]\n";
        return 2;
    }
    if (std::string(argv[1]) == "claim") {
        return Claim(argv[2]);
    }
    std::signal(SIGTERM, [](int) { stopped = 1; });
    const auto made = MakePort({.driver = argv[1], .device = argc > 3 ? argv[3] : ""}, "/tmp/");
    made.port->OpenTVicPort();
    // What stands while it is being opened depends on how busy the machine is.
    while (made.port->Status().summary.ends_with(": being opened") && stopped == 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        made.port->Idle();
    }
    std::string shown;
    const auto tell = [&] {
        if (const PortStatus status = made.port->Status(); status.summary != shown) {
            std::cout << Line(status) << std::endl;
            shown = status.summary;
        }
    };
    for (int round = 0; round < std::stoi(argv[2]) && stopped == 0; ++round) {
        if (round > 0) {
            tell();   // Before a write too: that the port is there again is told until then.
        }
        if (round % 10 == 0) {
            made.port->WritePort(0x378, static_cast<std::uint8_t>(round));
        }
        tell();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        made.port->Idle();
    }
    std::cout << made.port->Status().story << "\n";
    made.port->CloseTVicPort();
    return 0;
}
