#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <memory>
#include <utility>
#include <vector>

#include "ports/PortDrivers.h"
#include "ports/PortLog.h"
#include "ports/PortTrace.h"
#include "ports/RecordingPort.h"
#include "ports/SimulatedPort.h"
#include "support/TempFolder.h"

namespace {

using Writes = std::vector<std::pair<int, int>>;

// A port that is refused by its system: opening fails, writes are counted as failed.
class DeadPort final : public Port {
public:
    explicit DeadPort(Writes& writes) : writes_(writes) {}
    bool OpenTVicPort() override { return false; }
    void WritePort(std::uint16_t port, std::uint8_t value) override { writes_.emplace_back(port, value); }
    void CloseTVicPort() override { writes_.emplace_back(-1, -1); }
    void Idle() override { writes_.emplace_back(-2, -2); }
    [[nodiscard]] PortStatus Status() const override { return {false, "dead", "dead.", writes_.size()}; }

private:
    Writes& writes_;
};

struct Recorded {
    TempFolder folder;
    Writes passed;
    std::chrono::steady_clock::time_point now;
    RecordingPort port{std::make_unique<DeadPort>(passed), [this] { return now; }};

    void WriteAt(int microseconds, std::uint16_t address, std::uint8_t value) {
        now = std::chrono::steady_clock::time_point(std::chrono::microseconds(microseconds));
        port.WritePort(address, value);
    }
};

struct TimedWrite {
    std::uint64_t time;
    std::uint16_t port;
    std::uint8_t value;
};

// No file of this program grows beyond so many bytes; the part of a write that fits is written.
void LimitFileSize(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = std::min(bytes, limit.rlim_max);
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

// The waveform behind its head, on one line, of writes that follow on all lines being set low.
std::string Changes(std::vector<TimedWrite> writes) {
    PortTrace trace;
    std::string head;
    trace.Start(head);
    writes.insert(writes.begin(), {{0, 0x378, 0}, {0, 0x37A, 0x0B}});
    std::string text;
    for (const TimedWrite& write : writes)
        trace.Write(write.time, write.port, write.value, text);
    trace.Complete(text);
    std::ranges::replace(text, '\n', ' ');
    return text;
}

}   // namespace

TEST(PortLog, WritesOneLineOfFixedFormPerWrite) {
    PortLog log;
    std::string text;
    log.Start(text);
    for (const auto& [time, port, value] : std::vector<TimedWrite>{
             {0, 0x378, 0}, {0, 0x37A, 0x0B}, {7, 0, 0xFF}, {1000, 0xFFFE, 0xA}, {5'000'000'000, 0xBC0, 0x80}})
        log.Write(time, port, value, text);
    log.Complete(text);
    EXPECT_EQ(text, "0 0378 00\n0 037A 0B\n7 0000 FF\n1000 FFFE 0A\n5000000000 0BC0 80\n");
}

TEST(PortTrace, HeadDeclaresTwelveOneBitLinesOfUnknownLevel) {
    PortTrace trace;
    std::string text;
    trace.Start(text);
    trace.Complete(text);
    std::ranges::replace(text, '\n', ' ');
    EXPECT_EQ(text,
              "$comment Levels of the parallel port lines at the connector $end $timescale 1 us $end "
              "$scope module port $end $var wire 1 A D0 $end $var wire 1 B D1 $end $var wire 1 C D2 $end "
              "$var wire 1 D D3 $end $var wire 1 E D4 $end $var wire 1 F D5 $end $var wire 1 G D6 $end "
              "$var wire 1 H D7 $end $var wire 1 I C1 $end $var wire 1 J C2 $end $var wire 1 K C3 $end "
              "$var wire 1 L C4 $end $upscope $end $enddefinitions $end "
              "#0 $dumpvars xA xB xC xD xE xF xG xH xI xJ xK xL $end #1 ");
}

TEST(PortTrace, ShowsConnectorLevelsInRisingTime) {
    struct {
        const char* fault;
        std::vector<TimedWrite> writes;
        std::string changes;
    } const cases[] = {
        {"a write of an unknown line shows its level", {}, "#3 "},
        {"control bits 0, 1 and 3 are inverted, bit 2 is not",
         {{0, 0x37A, 0x0A}, {0, 0x37A, 0x09}, {0, 0x37A, 0x0F}, {0, 0x37A, 0x03}},
         "#3 1I #4 0I 1J #5 0J 1K #6 0K 1L #7 "},
        {"the upper bits of the control register are no lines", {{0, 0x37A, 0xFB}, {0, 0x378, 1}}, "#4 1A #5 "},
        {"each data bit is its own line",
         {{0, 0x378, 0x81}, {0, 0x378, 0x7E}, {0, 0x378, 0x7E}},
         "#3 1A 1H #4 0A 1B 1C 1D 1E 1F 1G 0H #6 "},
        {"the clock counts where it is ahead, a microsecond a write where it isn't",
         {{2, 0x378, 1}, {50, 0x378, 0}, {50, 0x378, 1}, {51, 0x378, 0}, {60, 0x378, 1}},
         "#3 1A #50 0A #51 1A #52 0A #60 1A #61 "},
        {"any port drives the same connector", {{0, 0xBC0, 1}, {0, 0xBC2, 0x0A}}, "#3 1A #4 1I #5 "},
        {"other registers are no lines", {{0, 0x379, 0xFF}, {0, 0x37B, 0xFF}, {9, 0x378, 1}}, "#9 1A #10 "},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Changes(c.writes), "#1 0A 0B 0C 0D 0E 0F 0G 0H #2 0I 0J 0K 0L " + c.changes) << c.fault;
}

TEST(RecordingPort, PassesEverythingOnAndRecordsFromOpeningToClosing) {
    Recorded r;
    r.port.Add("log", r.folder.Path("port.log"), std::make_unique<PortLog>());
    r.port.Add("trace", r.folder.Path("port.vcd"), std::make_unique<PortTrace>());
    std::ofstream(r.folder.Path("port.log")) << "an older record that is longer than the new one\n";

    r.WriteAt(500, 0x378, 0xEE);
    EXPECT_FALSE(r.port.OpenTVicPort()) << "the result is that of the wrapped port";
    r.WriteAt(600, 0x378, 2);
    r.WriteAt(601, 0x37A, 0x0B);
    r.port.Idle();
    EXPECT_EQ(r.folder.Read("port.log"), "100 0378 02\n101 037A 0B\n");
    const std::string first = r.folder.Read("port.vcd");
    EXPECT_TRUE(first.ends_with("\n#101\n0I\n0J\n0K\n0L\n#102\n")) << first;

    r.port.Idle();
    EXPECT_EQ(r.folder.Read("port.vcd"), first) << "idling again adds nothing";
    r.WriteAt(601, 0x378, 3);
    r.WriteAt(2000, 0x37A, 0x0B);
    r.port.CloseTVicPort();
    r.WriteAt(2001, 0x378, 0xEE);
    EXPECT_EQ(r.folder.Read("port.log"), "100 0378 02\n101 037A 0B\n101 0378 03\n1500 037A 0B\n");
    EXPECT_EQ(r.folder.Read("port.vcd"), first + "#103\n1A\n#1501\n");

    const Writes passed = {{0x378, 0xEE}, {0x378, 2},    {0x37A, 0x0B}, {-2, -2},     {-2, -2},
                           {0x378, 3},    {0x37A, 0x0B}, {-1, -1},      {0x378, 0xEE}};
    EXPECT_EQ(r.passed, passed);
    const PortStatus status = r.port.Status();
    EXPECT_FALSE(status.ready);
    EXPECT_EQ(status.summary, "dead");
    EXPECT_EQ(status.failedWrites, passed.size());
}

TEST(RecordingPort, LongRecordsGoOutInPiecesAndEndWhole) {
    const TempFolder folder;
    constexpr int count = 20'000;
    {
        RecordingPort port(std::make_unique<SimulatedPort>(), [] { return std::chrono::steady_clock::time_point(); });
        port.Add("log", folder.Path("port.log"), std::make_unique<PortLog>());
        port.Add("trace", folder.Path("port.vcd"), std::make_unique<PortTrace>());
        port.OpenTVicPort();
        for (int i = 0; i < count; ++i)
            port.WritePort(static_cast<std::uint16_t>(i), static_cast<std::uint8_t>(i));
        EXPECT_GT(folder.Read("port.log").size(), 100'000U) << "memory is held to a piece";
    }
    const std::string text = folder.Read("port.log");
    EXPECT_EQ(std::ranges::count(text, '\n'), count) << "the end of the port ends the record";
    EXPECT_TRUE(text.ends_with("\n0 4E1F 1F\n"));
    EXPECT_TRUE(folder.Read("port.vcd").ends_with("\n#20001\n")) << "with a time stamp after the last change";
}

TEST(RecordingPort, AFailingRecordIsReportedAndStopsNothing) {
    struct {
        const char* path;
        const char* reason;
    } const cases[] = {
        {"/dev/full", "No space left on device"},
        {"nowhere/port.log", "No such file or directory"},
        {".", "Is a directory"},
        {"deleted.log", "deleted"},
    };
    for (const auto& c : cases) {
        Recorded r;
        const std::string path = (std::filesystem::path(r.folder.Path("")) / c.path).string();
        r.port.Add("log", path, std::make_unique<PortLog>());
        r.port.Add("trace", r.folder.Path("port.vcd"), std::make_unique<PortTrace>());
        r.port.OpenTVicPort();
        std::filesystem::remove(r.folder.Path("deleted.log"));
        r.WriteAt(1, 0x378, 1);
        r.port.Idle();
        r.WriteAt(2, 0x378, 2);
        r.port.Idle();

        EXPECT_EQ(r.passed, (Writes{{0x378, 1}, {-2, -2}, {0x378, 2}, {-2, -2}})) << path;
        EXPECT_TRUE(r.folder.Read("port.vcd").ends_with("0A\n1B\n#4\n")) << "the other record goes on";
        const PortStatus status = r.port.Status();
        for (const std::string& part :
             {std::string("dead; log ") + path, std::string(c.reason), std::string("2 writes lost")})
            EXPECT_NE(status.summary.find(part), std::string::npos) << status.summary;
    }
}

// A full disk may take a part of what is written to it, and may have room again later.
TEST(RecordFile, EndsBeforeTheFirstLostEntryWhenTheDiskIsFull) {
    const TempFolder folder;
    RecordFile file(folder.Path("port.log"));
    file.Open();
    file.Append("first\n", 1);
    file.Flush();
    LimitFileSize(8);
    file.Append("second\n", 1);
    file.Flush();
    LimitFileSize(RLIM_INFINITY);
    file.Append("third\n", 1);
    file.Close();
    EXPECT_EQ(folder.Read("port.log"), "first\n") << "neither half a line nor a gap";
    EXPECT_EQ(file.Entries(), 1U);
    EXPECT_EQ(file.Lost(), 2U);
    EXPECT_EQ(file.Problem(), "File too large");
}

// The file of nowhere grows without a disk.
TEST(RecordingPort, ALargeRecordTellsItsSize) {
    class Wide final : public PortRecord {
        void Start(std::string&) override {}
        void Write(std::uint64_t, std::uint16_t, std::uint8_t, std::string& text) override {
            text.append(999'990, '.');
        }
        void Complete(std::string&) override {}
    };
    const char* const file = "/dev/null";
    RecordingPort port(std::make_unique<SimulatedPort>());
    port.Add("log", file, std::make_unique<Wide>());
    port.OpenTVicPort();
    int count = 0;
    for (const auto& [writes, said] :
         {std::pair(100, ""), {101, ", log 100 MB"}, {1000, ", log 999 MB"}, {1250, ", log 1.2 GB"}}) {
        for (; count < writes; ++count)
            port.WritePort(0x378, 0);
        port.Idle();
        EXPECT_EQ(port.Status().summary, std::string("Simulated port") + said);
    }
}

TEST(PortDrivers, FollowsTheSettingsOrSaysWhatItCannot) {
    struct {
        PortSettings settings;
        std::string message;
        std::vector<std::string> files;
    } const cases[] = {
        {{}, "", {}},
        {{.driver = "x"}, "unknown port driver 'x' in tarnwick.ini: known are " + KnownDrivers(), {}},
        {{.driver = "Simulated"}, "unknown port driver 'Simulated'", {}},
        {{.log = "a.log", .trace = "a.vcd"}, "", {"a.log", "a.vcd"}},
        {{.driver = "x", .trace = "a.vcd"}, "unknown port driver", {"a.vcd"}},
        {{.log = "a.log", .trace = "./a.log"}, "LOG and TRACE in tarnwick.ini both name", {"a.log"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.settings.driver + c.settings.log + c.settings.trace);
        const TempFolder folder;
        const MadePort made = MakePort(c.settings, folder.Path(""));
        EXPECT_TRUE(made.message.starts_with(c.message)) << made.message;
        EXPECT_EQ(made.message.empty(), c.message.empty()) << made.message;
        EXPECT_TRUE(made.port->OpenTVicPort());
        made.port->WritePort(0x378, 1);
        made.port->Idle();
        EXPECT_TRUE(made.port->Status().ready);
        EXPECT_EQ(made.port->Status().summary, "Simulated port");
        for (const std::string& file : c.files)
            EXPECT_FALSE(folder.Read(file).empty()) << file;
        const std::filesystem::directory_iterator entries(folder.Path(""));
        EXPECT_EQ(static_cast<std::size_t>(std::distance(begin(entries), end(entries))), c.files.size());
    }
}
