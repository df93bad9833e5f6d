#include <gtest/gtest.h>

#include "FakePortCalls.h"
#include "ports/RawIoPort.h"

TEST(RawIoPort, AsksForThePortsThatAreWrittenAndLeavesTheLinesAtTheEnd) {
    FakePortCalls calls;
    RawIoPort port(calls);
    EXPECT_TRUE(port.OpenTVicPort());
    EXPECT_EQ(calls.TakeDone(), "") << "no port before it is written";
    for (const int address : {0x378, 0x37A, 0x378, 0xFFFF})
        port.WritePort(static_cast<std::uint16_t>(address), 0x2B);
    EXPECT_EQ(calls.TakeDone(), "ask=378 378:=2B ask=37A 37A:=2B 378:=2B ask=FFFF FFFF:=2B");
    EXPECT_EQ(port.Status().summary, "Direct port access to 0378, 037A, FFFF");
    EXPECT_TRUE(port.Status().ready);
    port.CloseTVicPort();
    EXPECT_EQ(calls.TakeDone(), "give-back=378 give-back=37A give-back=FFFF");
    port.WritePort(0x378, 1);
    EXPECT_EQ(calls.TakeDone(), "") << "closed is closed";
}

TEST(RawIoPort, ARefusedPortIsAskedForOnceOnly) {
    FakePortCalls calls;
    RawIoPort port(calls);
    port.OpenTVicPort();
    calls.errorsOnce["ask"] = EINVAL;
    for (const int address : {0x378, 0x378, 0x37A})
        port.WritePort(static_cast<std::uint16_t>(address), 1);
    EXPECT_EQ(calls.TakeDone(), "ask=378 ask=37A 37A:=1");
    EXPECT_EQ(port.Status().summary, "Direct port access to 037A: Invalid argument");
    EXPECT_EQ(port.Status().failedWrites, 2U);
    EXPECT_FALSE(port.Status().ready);
}

TEST(RawIoPort, ARefusalTellsCauseAndCureBeforeTheFirstWrite) {
    struct {
        int outlook;
        int error;   // Of asking for a port; 0 if the outlook must say it.
        const char* lockdown;
        std::string trouble;
    } const cases[] = {
        {EPERM, 0, "", "the program lacks the right CAP_SYS_RAWIO: sudo setcap cap_sys_rawio+ep"},
        {0, EPERM, "", "the program lacks the right CAP_SYS_RAWIO"},
        {0, EPERM, "[none] integrity confidentiality", "the program lacks the right CAP_SYS_RAWIO"},
        {0, 0, "none [integrity] confidentiality", "the kernel is locked down (integrity), as it is with Secure Boot"},
        {EPERM, 0, "none integrity [confidentiality]", "the kernel is locked down (confidentiality)"},
        {ENOSYS, 0, "", "this processor or this kernel has no I/O ports for programs"},
    };
    for (const auto& c : cases) {
        FakePortCalls calls;
        calls.ioOutlook = c.outlook;
        calls.lockdown = c.lockdown;
        if (c.error != 0) {
            calls.errors["ask"] = c.error;
        }
        RawIoPort port(calls);
        EXPECT_EQ(port.OpenTVicPort(), c.error != 0) << c.trouble;
        if (c.error != 0) {
            port.WritePort(0x378, 1);
        }
        const std::string said = port.Status().summary;
        EXPECT_TRUE(said.starts_with("Direct port access: " + c.trouble)) << said;
        EXPECT_NE(said.find("DRIVER=parport"), std::string::npos) << said;
        EXPECT_FALSE(port.Status().ready);
    }
}
