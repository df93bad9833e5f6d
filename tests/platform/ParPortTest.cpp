#include <gtest/gtest.h>

#include <functional>

#include "FakePortCalls.h"
#include "platform/ParPort.h"

using namespace std::chrono_literals;

namespace {

constexpr const char* kName = "Parallel port /dev/parport0";

struct Opened {
    FakePortCalls calls;
    ParPort port{"/dev/parport0", calls};

    explicit Opened(const std::function<void(FakePortCalls&)>& prepare = {}) {
        if (prepare) {
            prepare(calls);
        }
        port.OpenTVicPort();
    }
    std::string Summary() { return port.Status().summary; }
};

}   // namespace

TEST(ParPort, OpeningTellsCauseAndCureOfEachFailureAndLeavesNothingOpen) {
    const DeviceRights lp = {.group = "lp", .groupWrites = true, .user = "anna"};
    struct {
        std::function<void(FakePortCalls&)> fault;
        std::string summary;
    } const cases[] = {
        {[](auto& c) { c.plugged = false, c.modules = {}; },
         "no such device, for the kernel's modules aren't loaded: sudo modprobe -a parport_pc ppdev"},
        {[](auto& c) { c.plugged = false, c.modules = {"parport_pc"}; },
         "no such device, for the kernel's modules aren't loaded: sudo modprobe -a ppdev"},
        {[](auto& c) {
             c.plugged = false, c.otherPorts = {"parport1", "parport2"};
         },
         "no such device, but there is /dev/parport1, /dev/parport2: name it as DEVICE in tarnwick.ini"},
        {[](auto& c) { c.plugged = false; },
         "the kernel found no parallel port: switch it on in the firmware's set-up or put the card in, then sudo "
         "modprobe -r parport_pc; sudo modprobe parport_pc"},
        {[&](auto& c) { c.errors["open"] = EACCES, c.rights = lp; },
         "permission denied for the user anna: sudo adduser anna lp, then log out and in again"},
        {[&](auto& c) { c.errors["open"] = EPERM, c.rights = lp, c.rights.listed = true; },
         "permission denied for the user anna: you are in the group lp by now, log out and in again"},
        {[&](auto& c) { c.errors["open"] = EACCES, c.rights = lp, c.rights.listed = c.rights.member = true; },
         "permission denied for the user anna: the group lp doesn't suffice, look for access lists: getfacl "
         "/dev/parport0"},
        {[&](auto& c) { c.errors["open"] = EACCES, c.rights = lp, c.rights.groupWrites = false; },
         "permission denied for the user anna: no group may write the device, install 70-tarnwick-parport.rules as "
         "docs/ports.md tells"},
        {[](auto& c) { c.errors["open"] = EMFILE; }, "it can't be opened: Too many open files"},
        {[](auto& c) { c.errors["number"] = 1; },
         "that is no device of the kernel's module ppdev: correct DEVICE in tarnwick.ini"},
        {[](auto& c) { c.active = "lp"; }, "held by the driver lp: wait for its end, or sudo modprobe -r lp"},
        {[](auto& c) { c.active = "ppdev0", c.users = {"flasher (812)"}; },
         "held by another program, end it: flasher (812)"},
        {[](auto& c) { c.active = "ppdev0"; },
         "held by another program: find it with sudo fuser -v /dev/parport0 and end it"},
        {[](auto& c) { c.errors["claim"] = ENXIO, c.drivers = {"plip0"}; },
         "held by the driver plip0: wait for its end, or sudo modprobe -r plip0"},
        {[](auto& c) { c.errors["claim"] = ENXIO; },
         "the kernel found no parallel port: switch it on in the firmware's set-up or put the card in, then sudo "
         "modprobe -r parport_pc; sudo modprobe parport_pc"},
        {[](auto& c) { c.errors["claim"] = EINTR, c.users = {"flasher (812)"}; },
         "held by another program, end it: flasher (812)"},
        {[](auto& c) { c.errors["claim"] = EIO; }, "it can't be claimed: Input/output error"},
        {[](auto& c) { c.errors["output"] = EIO; }, "it can't be set to output: Input/output error"},
        {[](auto& c) { c.errors["read-data"] = EIO; }, "the state of its lines can't be read: Input/output error"},
        {[](auto& c) { c.errors["read-control"] = ENODEV; }, "the state of its lines can't be read: No such device"},
    };
    for (const auto& c : cases) {
        Opened o(c.fault);
        EXPECT_EQ(o.Summary(), std::string(kName) + ": " + c.summary);
        EXPECT_NE(o.port.Status().story.find("Result: " + c.summary), std::string::npos) << o.port.Status().story;
        EXPECT_FALSE(o.port.Status().ready) << c.summary;
        EXPECT_EQ(o.calls.openFiles, 0) << c.summary;
        o.calls.done.clear();
        o.port.WritePort(0x378, 1);
        EXPECT_EQ(o.calls.TakeDone(), "") << c.summary;
        EXPECT_EQ(o.port.Status().failedWrites, 1U) << c.summary;
    }
}

TEST(ParPort, TakesThePortAloneIfItCanAndTogetherIfItMust) {
    struct {
        std::function<void(FakePortCalls&)> state;
        std::string steps;
        std::string shared;
    } const cases[] = {
        {{}, "exclusive claim output read-data read-control", ""},
        {[](auto& c) { c.drivers = {"lp"}; }, "claim output read-data read-control", ", shared with lp"},
        {[](auto& c) {
             c.drivers = {"lp", "plip0", "ppdev0"};
         },
         "claim output read-data read-control", ", shared with lp, plip0"},
        {[](auto& c) { c.errorsOnce["claim"] = ENXIO; }, "exclusive claim close claim output read-data read-control",
         ", shared with others"},
        {[](auto& c) { c.errors["exclusive"] = EINVAL; }, "exclusive claim output read-data read-control",
         ", shared with others"},
    };
    for (const auto& c : cases) {
        Opened o(c.state);
        EXPECT_EQ(o.calls.TakeDone(), c.steps);
        EXPECT_EQ(o.Summary(), kName + c.shared);
        EXPECT_TRUE(o.port.Status().ready);
        o.port.CloseTVicPort();
        EXPECT_EQ(o.calls.openFiles, 0);
    }
}

TEST(ParPort, WritesByTheLowAddressBitsAndPutsTheLinesBack) {
    Opened o;
    o.calls.TakeDone();
    for (const auto& [port, value] : std::vector<std::pair<int, int>>{
             {0x378, 0x02}, {0x37A, 0x0B}, {0xBC0, 0xFF}, {0x002, 0xFB}, {0x379, 0x11}, {0x37B, 0x22}})
        o.port.WritePort(static_cast<std::uint16_t>(port), static_cast<std::uint8_t>(value));
    // Of the control register only the lines: its bit 5 would turn the data lines round.
    EXPECT_EQ(o.calls.TakeDone(), "data=2 control=B data=FF control=B");
    EXPECT_NE(o.port.Status().story.find("4 writes went out, 0 failed, 2 were for registers without lines"),
              std::string::npos);
    o.port.CloseTVicPort();
    EXPECT_EQ(o.calls.TakeDone(), "data=A5 control=C release close");
    EXPECT_FALSE(o.port.Status().ready);
    o.port.CloseTVicPort();
    o.port.Idle();
    EXPECT_EQ(o.calls.TakeDone(), "") << "closed is closed";
}

TEST(ParPort, LinesThatCantBePutBackAreTold) {
    Opened o;
    o.calls.errors["control"] = ENODEV;
    o.port.CloseTVicPort();
    EXPECT_NE(o.port.Status().story.find("the lines not put back: No such device"), std::string::npos);
    EXPECT_EQ(o.calls.openFiles, 0);
}

TEST(ParPort, AFailingWriteIsCountedRepeatedOrTheEndOfTheDevice) {
    struct {
        int error;
        std::string done;
        std::uint64_t failed;
        std::string state;
    } const cases[] = {
        {EINTR, "data=1 data=1 data=2", 0, ""},
        {ENOMEM, "data=1 data=2", 1, "; a write failed at 14:03:12: Cannot allocate memory"},
        {ENODEV, "data=1 close", 2, ": gone since 14:03:12, plug it in again"},
        {EIO, "data=1 close", 2, ": gone since 14:03:12, plug it in again"},
        {EINVAL, "data=1 close", 2, ": gone since 14:03:12, plug it in again"},
    };
    for (const auto& c : cases) {
        Opened o;
        o.calls.TakeDone();
        o.calls.errorsOnce["data"] = c.error;
        o.port.WritePort(0x378, 1);
        o.port.WritePort(0x378, 2);
        EXPECT_EQ(o.calls.TakeDone(), c.done) << c.error;
        EXPECT_EQ(o.port.Status().failedWrites, c.failed) << c.error;
        EXPECT_EQ(o.Summary(), kName + c.state);
    }
}

TEST(ParPort, ADeviceThatGoesAndComesBackIsLookedForOnceASecond) {
    Opened o;
    o.port.Idle();
    o.port.WritePort(0x378, 1);
    o.port.WritePort(0x378, 2);
    o.calls.plugged = false;   // The kernel goes on taking writes then.
    o.port.Idle();
    EXPECT_EQ(o.Summary(), std::string(kName) + ": gone since 14:03:12, plug it in again");
    EXPECT_NE(o.port.Status().story.find("it may have been gone for the last 2 writes"), std::string::npos);
    o.port.WritePort(0x378, 3);
    o.calls.TakeDone();

    o.calls.Pass(999ms);
    o.port.Idle();
    EXPECT_EQ(o.calls.TakeDone(), "");
    o.calls.Pass(1ms);
    o.port.Idle();
    EXPECT_NE(o.Summary().find(": gone since 14:03:12, the kernel found no parallel port"), std::string::npos);

    o.calls.plugged = true;
    o.calls.node = 2;
    o.calls.time = "14:05:02";
    o.port.WritePort(0x378, 4);
    o.calls.Pass(1s);
    o.port.WritePort(0x378, 5);
    EXPECT_EQ(o.calls.TakeDone(), "") << "no load may begin in its middle";
    o.port.Idle();
    EXPECT_EQ(o.Summary(), std::string(kName) + ", there since 14:05:02: load the device again");
    EXPECT_EQ(o.port.Status().failedWrites, 3U);
    o.port.WritePort(0x378, 6);
    EXPECT_EQ(o.Summary(), kName);

    o.calls.node = 3;   // Out and in again between two looks.
    o.port.Idle();
    EXPECT_FALSE(o.port.Status().ready);
}

TEST(ParPort, AKernelThatDoesntAnswerHoldsNothingUp) {
    Opened o([](auto& c) { c.Block(); });
    EXPECT_EQ(o.Summary(), std::string(kName) + ": being opened");
    o.port.WritePort(0x378, 1);
    o.calls.Pass(1s);
    o.port.Idle();
    EXPECT_EQ(o.Summary(), std::string(kName) +
                               ": the kernel doesn't answer since 14:03:12: another program waits for a port, find it "
                               "with sudo fuser -v /dev/parport* and end it");
    EXPECT_EQ(o.port.Status().failedWrites, 1U);
    o.calls.LetGo();
    for (int i = 0; i < 500 && !o.port.Status().ready; ++i) {
        SystemPortCalls().Sleep(10ms);
        o.port.Idle();
    }
    EXPECT_EQ(o.Summary(), std::string(kName) + ", there since 14:03:12: load the device again");
}

TEST(ParPort, AnAttemptThatIsNoLongerWantedGivesThePortBack) {
    FakePortCalls calls;
    calls.Block();
    const auto begin = std::chrono::steady_clock::now();
    {
        ParPort port("/dev/parport0", calls);
        port.OpenTVicPort();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
    calls.LetGo();
    // The thread that is left opens the device now, and then closes it.
    for (int i = 0; i < 500 && calls.closings == 0; ++i) {
        SystemPortCalls().Sleep(10ms);
    }
    EXPECT_EQ(calls.closings, 1);
    EXPECT_EQ(calls.openFiles, 0);
}
