#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <chrono>
#include <iostream>
#include <string>
#include <thread>

#include "platform/PortCalls.h"
#include "platform/PortDrivers.h"

// Tells how a port stands, as the status bar would, whenever that changes, and at the end the whole story. Does what
// the program does: looks at the port when there is nothing else to do, and writes to it now and then.
//
// usage: port_state DRIVER SECONDS [DEVICE]
//        port_state claim DEVICE        waits for the device as the driver would, without looking who holds it

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
    const auto begin = std::chrono::steady_clock::now();
    const int result = calls.IoctlWithin(file, PPCLAIM, std::chrono::milliseconds(100));
    const int error = errno;
    const std::chrono::duration<double> waited = std::chrono::steady_clock::now() - begin;
    std::cout << (result == 0 ? "claimed" : SystemReason(error)) << " after " << waited.count() << " s" << std::endl;
    return 0;
}

int main(int argc, char* argv[]) {
    if (argc < 3) {
        std::cerr << "usage: port_state DRIVER SECONDS [DEVICE]\n";
        return 2;
    }
    if (std::string(argv[1]) == "claim") {
        return Claim(argv[2]);
    }
    const auto made = MakePort({.driver = argv[1], .device = argc > 3 ? argv[3] : ""}, "/tmp/");
    const auto begin = std::chrono::steady_clock::now();
    const auto end = begin + std::chrono::duration<double>(std::stod(argv[2]));
    made.port->OpenTVicPort();
    const std::chrono::duration<double> opening = std::chrono::steady_clock::now() - begin;
    std::string shown;
    for (int round = 0; round == 0 || std::chrono::steady_clock::now() < end; ++round) {
        if (const PortStatus status = made.port->Status(); status.summary != shown) {
            std::cout << Line(status) << std::endl;
            shown = status.summary;
        }
        if (round % 10 == 9) {
            made.port->WritePort(0x378, static_cast<std::uint8_t>(round));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        made.port->Idle();
    }
    std::cout << Line(made.port->Status()) << "\n" << made.port->Status().story << "\n";
    made.port->CloseTVicPort();
    std::cout << "opening took " << opening.count() << " s" << std::endl;
    return 0;
}
