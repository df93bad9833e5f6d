#include <fcntl.h>
#include <linux/ppdev.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <vector>

#include "core/cPart.h"
#include "ports/ParPort.h"

// How long a load takes through the driver "parport", beside a bare loop of the same ioctls on the same device.
//
// usage: parport_speed [DEVICE]

namespace {

struct Write {
    unsigned long request;
    unsigned char value;
};

/// Takes down what a load writes.
class Notes final : public Port {
public:
    bool OpenTVicPort() override { return true; }
    void WritePort(std::uint16_t port, std::uint8_t value) override {
        writes_.push_back({port % 4 == 0 ? PPWDATA : PPWCONTROL, value});
    }
    void CloseTVicPort() override {}
    [[nodiscard]] PortStatus Status() const override { return {}; }
    [[nodiscard]] const std::vector<Write>& Writes() const { return writes_; }

private:
    std::vector<Write> writes_;
};

constexpr int kRounds = 40;
constexpr int kLoads = 5;

/// Of some loads the one that was disturbed least.
template <class Work>
double Seconds(const Work& work) {
    auto best = std::chrono::steady_clock::duration::max();
    for (int load = 0; load < kLoads; ++load) {
        const auto begin = std::chrono::steady_clock::now();
        work();
        best = std::min(best, std::chrono::steady_clock::now() - begin);
    }
    return std::chrono::duration<double>(best).count();
}

double BareLoop(const char* device, const std::vector<Write>& writes) {
    const int file = ::open(device, O_RDWR);
    if (file < 0 || ::ioctl(file, PPEXCL) != 0 || ::ioctl(file, PPCLAIM) != 0) {
        std::cerr << "the bare loop doesn't get the port\n";
        std::exit(1);
    }
    const double seconds = Seconds([&] {
        for (const Write& write : writes) {
            unsigned char value = write.value;
            ::ioctl(file, write.request, &value);
        }
    });
    ::close(file);
    return seconds;
}

double Driver(const char* device, cPart& part) {
    ParPort port(device);
    if (!port.OpenTVicPort()) {
        std::cerr << port.Status().summary << "\n";
        std::exit(1);
    }
    part.UsePort(port);
    const double seconds = Seconds([&] { part.LoadAll(); });
    if (port.Status().failedWrites != 0) {
        std::cerr << port.Status().summary << ": writes failed\n";
        std::exit(1);
    }
    return seconds;
}

void SetUp(cPart& part) {
    part.RegisterLength(24);
    for (const auto& [name, value] : {std::pair("A", 0x012345), {"B", 0xFEDCBA}, {"C", 0x555555}, {"D", 0xFFFFFF}}) {
        part.AddRegister(name, 0, value, true, "");
    }
}

}   // namespace

int main(int argc, char* argv[]) {
    const char* device = argc > 1 ? argv[1] : "/dev/parport0";
    cPart part;
    SetUp(part);
    Notes notes;
    part.UsePort(notes);
    part.LoadAll();

    // In turns, so that what disturbs the machine disturbs both.
    double bare = BareLoop(device, notes.Writes());
    double driver = Driver(device, part);
    for (int round = 1; round < kRounds; ++round) {
        bare = std::min(bare, BareLoop(device, notes.Writes()));
        driver = std::min(driver, Driver(device, part));
    }
    const double perWrite = 1e6 / static_cast<double>(notes.Writes().size());
    std::cout << "ratio " << driver / bare << ": " << driver * perWrite << " us a write in a load through parport, "
              << bare * perWrite << " us in a bare loop of the same ioctls\n";
    return 0;
}
