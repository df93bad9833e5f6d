#include <gtest/gtest.h>

#include <functional>

#include "FakePortCalls.h"
#include "ports/ParPort.h"

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
    void Write(std::uint8_t value) { port.WritePort(0x378, value); }
};

// A user in the group or not, by the system's files and by the login.
DeviceRights Rights(bool groupWrites, bool listed, bool member) {
    return {.group = "lp", .groupWrites = groupWrites, .user = "anna", .listed = listed, .member = member};
}

}   // namespace

TEST(ParPort, OpeningTellsCauseAndCureOfEachFailureAndLeavesNothingOpen) {
    struct {
        std::function<void(FakePortCalls&)> fault;
        std::string cause, cure;
    } const cases[] = {
        {[](auto& c) { c.plugged = false, c.modules = {}; }, "modules aren't loaded", "modprobe -a parport_pc ppdev"},
        {[](auto& c) { c.plugged = false, c.modules = {"parport_pc"}; }, "modules aren't loaded", "modprobe -a ppdev"},
        {[](auto& c) { c.plugged = false, c.otherPorts = {"parport1"}; }, "there is /dev/parport1", "as DEVICE"},
        {[](auto& c) { c.plugged = false; }, "found no parallel port", "modprobe -r parport_pc"},
        {[](auto& c) { c.errors["open"] = EACCES, c.rights = Rights(true, false, false); }, "denied",
         "adduser anna lp"},
        {[](auto& c) { c.errors["open"] = EPERM, c.rights = Rights(true, true, false); }, "denied",
         "lp by now, log out"},
        {[](auto& c) { c.errors["open"] = EACCES, c.rights = Rights(true, true, true); }, "denied",
         "getfacl /dev/parp"},
        {[](auto& c) { c.errors["open"] = EACCES, c.rights = Rights(false, true, true); }, "denied",
         "70-tarnwick-parp"},
        {[](auto& c) { c.errors["open"] = EMFILE; }, "it can't be opened", "Too many open files"},
        {[](auto& c) { c.errors["number"] = 1; }, "no device of the kernel's module ppdev", "correct DEVICE"},
        {[](auto& c) { c.active = "lp"; }, "held by the driver lp", "modprobe -r lp"},
        {[](auto& c) { c.active = "ppdev0", c.users = {"flasher (812)"}; }, "another program", "end it: flasher (812)"},
        {[](auto& c) { c.active = "ppdev0"; }, "held by another program", "fuser -v /dev/parport0"},
        {[](auto& c) { c.errors["claim"] = ENXIO, c.drivers = {"plip0"}; }, "held by the driver plip0", "-r plip0"},
        {[](auto& c) { c.errors["claim"] = ENXIO; }, "found no parallel port", "modprobe -r parport_pc"},
        {[](auto& c) { c.errors["claim"] = EINTR; }, "held by another program", "fuser -v /dev/parport0"},
        {[](auto& c) { c.errors["claim"] = EIO; }, "it can't be claimed", "Input/output error"},
        {[](auto& c) { c.errors["output"] = EIO; }, "it can't be set to output", "Input/output error"},
    };
    for (const auto& c : cases) {
        Opened o(c.fault);
        const std::string said = o.Summary();
        EXPECT_TRUE(said.find(c.cause) < said.find(c.cure)) << c.cause << ", " << c.cure << " in: " << said;
        EXPECT_NE(said.find(c.cure), std::string::npos) << said;
        EXPECT_NE(o.port.Status().story.find("Result: " + said.substr(std::string(kName).size() + 2)),
                  std::string::npos);
        EXPECT_FALSE(o.port.Status().ready) << said;
        EXPECT_EQ(o.calls.openFiles, 0) << said;
        o.calls.done.clear();
        o.Write(1);
        EXPECT_EQ(o.calls.TakeDone(), "") << said;
        EXPECT_EQ(o.port.Status().failedWrites, 1U) << said;
    }
}

TEST(ParPort, TakesThePortAloneIfItCanAndTogetherIfItMust) {
    struct {
        std::function<void(FakePortCalls&)> state;
        std::string steps, shared;
    } const cases[] = {
        {{}, "exclusive claim output", ""},
        {[](auto& c) {
             c.drivers = {"lp", "plip0", "ppdev0"};
         },
         "claim output", ", shared with lp, plip0"},
        {[](auto& c) { c.errorsOnce["claim"] = ENXIO; }, "exclusive claim close claim output", ", shared with others"},
        {[](auto& c) { c.errors["exclusive"] = EINVAL; }, "exclusive claim output", ", shared with others"},
    };
    for (const auto& c : cases) {
        Opened o(c.state);
        EXPECT_EQ(o.calls.TakeDone(), c.steps);
        EXPECT_EQ(o.Summary(), kName + c.shared);
        EXPECT_TRUE(o.port.Status().ready);
    }
}

TEST(ParPort, WritesByTheLowAddressBitsAndLeavesTheLinesAtTheEnd) {
    Opened o;
    o.calls.TakeDone();
    for (const auto& [port, value] : std::vector<std::pair<int, int>>{
             {0x378, 0x02}, {0x37A, 0x0B}, {0xBC0, 0xFF}, {0x002, 0xFB}, {0x379, 0x11}, {0x37B, 0x22}}) {
        o.port.WritePort(static_cast<std::uint16_t>(port), static_cast<std::uint8_t>(value));
    }
    // Of the control register only the lines: its bit 5 would turn the data lines round.
    EXPECT_EQ(o.calls.TakeDone(), "data=2 control=B data=FF control=B");
    EXPECT_NE(o.port.Status().story.find("4 writes went out, 0 failed, 2 were for"), std::string::npos);
    o.port.CloseTVicPort();
    EXPECT_EQ(o.calls.TakeDone(), "release close");
    EXPECT_FALSE(o.port.Status().ready);
    o.port.CloseTVicPort();
    o.port.Idle();
    EXPECT_EQ(o.calls.TakeDone(), "") << "closed is closed";
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
        o.Write(1);
        o.Write(2);
        EXPECT_EQ(o.calls.TakeDone(), c.done) << c.error;
        EXPECT_EQ(o.port.Status().failedWrites, c.failed) << c.error;
        EXPECT_EQ(o.Summary(), kName + c.state);
    }
}

TEST(ParPort, ADeviceThatGoesAndComesBackIsLookedForOnceASecond) {
    Opened o;
    o.port.Idle();
    o.Write(1);
    o.Write(2);
    o.calls.plugged = false;   // The kernel goes on taking writes then.
    o.port.Idle();
    EXPECT_NE(o.port.Status().story.find("it may have been gone for the last 2 writes"), std::string::npos);
    o.Write(3);
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
    o.Write(4);
    o.calls.Pass(1s);
    o.Write(5);
    EXPECT_EQ(o.calls.TakeDone(), "") << "no load may begin in its middle";
    o.port.Idle();
    EXPECT_EQ(o.Summary(), std::string(kName) + ", there since 14:05:02: load the device again");
    EXPECT_EQ(o.port.Status().failedWrites, 3U);
    o.Write(6);
    EXPECT_EQ(o.Summary(), kName);

    o.calls.node = 3;   // Out and in again between two looks.
    o.port.Idle();
    EXPECT_FALSE(o.port.Status().ready);
}

TEST(ParPort, AKernelThatDoesntAnswerHoldsNothingUp) {
    Opened o([](auto& c) { c.Block(); });
    EXPECT_EQ(o.Summary(), std::string(kName) + ": being opened");
    o.Write(1);
    o.calls.Pass(1s);
    o.port.Idle();
    EXPECT_NE(o.Summary().find(": the kernel doesn't answer since 14:03:12: "), std::string::npos) << o.Summary();
    EXPECT_EQ(o.port.Status().failedWrites, 1U);
    o.calls.LetGo();
    o.port.Idle();
    EXPECT_EQ(o.Summary(), std::string(kName) + ", there since 14:03:12: load the device again");
}

TEST(ParPort, AnAttemptThatIsNoLongerWantedGivesThePortBack) {
    FakePortCalls calls;
    calls.Block();
    {
        ParPort port("/dev/parport0", calls);
        port.OpenTVicPort();
    }
    calls.LetGo();   // The thread that is left opens the device now, and then closes it.
    calls.WaitForClosing();
    EXPECT_EQ(calls.openFiles, 0);
}
