#include <malloc.h>

#include <QApplication>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <utility>

#include "RobotActions.h"
#include "RobotChecks.h"
#include "automation/Automation.h"
#include "ports/PortLog.h"
#include "ports/RecordingPort.h"
#include "support/TempFolder.h"
#include "ui/window/frmPart.h"

// Works the real window at random and checks after each step that the screen says what the device says.
// usage: dbus-run-session -- test_robot [STEPS [SEED]]
//    or: test_robot devices COUNT       only changes devices and tells the memory.

namespace {

namespace fs = std::filesystem;

/// Copies the part files of a folder, and adds their names with that prefix to the devices.
void TakeParts(const char* from, const std::string& prefix, const TempFolder& to, std::vector<std::string>& devices) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(from)) {
        if (entry.path().extension() == ".ini" && entry.path().filename() != "tarnwick.ini") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    constexpr std::size_t kLongestName = 30;
    for (const fs::path& file : files) {
        devices.push_back((prefix + file.stem().string()).substr(0, kLongestName));
        fs::copy_file(file, to.Path(devices.back() + ".ini"), fs::copy_options::overwrite_existing);
    }
}

/// The device, its window and its recorded port.
class Session {
public:
    explicit Session(unsigned seed) {
        std::vector<std::string> devices;
        TakeParts(PARTS_DIR, "", folder_, devices);
        TakeParts(TEST_DATA_DIR "/part-faults", "F-", folder_, devices);
        fs::copy_file(PARTS_DIR "/tarnwick.ini", folder_.Path("tarnwick.ini"));
        devices.emplace_back("no such device");
        auto end = std::make_unique<FakePort>();
        end_ = end.get();
        port_ = std::make_unique<RecordingPort>(std::move(end));
        port_->Add("log", LogPath(), std::make_unique<PortLog>());
        port_->OpenTVicPort();
        window_ = std::make_unique<frmPart>(part_, *port_, folder_.Path(""));
        window_->Form_Load();
        window_->show();
        automation_ = std::make_unique<Automation>(part_, *window_);
        automation_->Start();
        actions_ = std::make_unique<RobotActions>(*window_, part_, std::move(devices), folder_.Path(""), seed);
        actions_->Settle();
    }

    bool Run(int steps);
    bool ChangeDevices(int count);

private:
    [[nodiscard]] std::string LogPath() const { return folder_.Path("port.log"); }
    bool LogMatches();

    TempFolder folder_;
    cPart part_;
    FakePort* end_ = nullptr;
    std::vector<PortWrite> written_;   ///< Since the log was begun.
    std::unique_ptr<RecordingPort> port_;
    std::unique_ptr<frmPart> window_;
    std::unique_ptr<Automation> automation_;
    std::unique_ptr<RobotActions> actions_;
};

/// Compares the log with what reached the end of the cable, and begins both anew.
bool Session::LogMatches() {
    port_->Idle();
    std::ifstream log(LogPath());
    std::vector<PortWrite> logged;
    unsigned port = 0;
    unsigned value = 0;
    for (std::uint64_t time = 0; log >> std::dec >> time >> std::hex >> port >> value;) {
        logged.push_back({static_cast<std::uint16_t>(port), static_cast<std::uint8_t>(value)});
    }
    port_->OpenTVicPort();
    return logged == std::exchange(written_, {});
}

bool Session::Run(int steps) {
    auto& others = actions_->Others();
    if (!others[0].Connected()) {
        std::puts("no session bus: run it by dbus-run-session");
        return false;
    }
    RobotChecks checks(*window_, part_);
    actions_->midway = [&] { checks.NoteValues(); };
    constexpr int kLogEvery = 250;
    constexpr int kMostFaults = 10;
    int faults = 0;
    std::uint64_t writes = 0;
    for (int step = 1; step <= steps && faults < kMostFaults; ++step) {
        checks.Before();
        const std::string done = actions_->Step();
        if (::getenv("ROBOT_VERBOSE") != nullptr) {
            std::fprintf(stderr, "%d: %s\n", step, done.c_str());
        }
        const auto made = end_->Writes();
        end_->Clear();
        written_.insert(written_.end(), made.begin(), made.end());
        writes += made.size();
        std::string fault = checks.After(made) + others[0].TakeFault() + others[1].TakeFault();
        if (step % kLogEvery == 0 && !LogMatches()) {
            fault += "  the log differs from what went to the port\n";
        }
        if (!fault.empty()) {
            ++faults;
            std::printf("step %d, device %s, %s:\n%s", step, part_.ID().c_str(), done.c_str(), fault.c_str());
        }
        std::fflush(stdout);
    }
    std::printf(
        "%d steps, %d with faults; %zu comparisons, %llu port writes, %zu loads decoded, %d calls over the bus (%d "
        "refused)\n",
        steps, faults, checks.Checked(), static_cast<unsigned long long>(writes), checks.Decoded(),
        others[0].Calls() + others[1].Calls(), others[0].Refused() + others[1].Refused());
    return faults == 0;
}

/// Goes round a few devices; the memory after the last change must be that after the tenth. There are as many as the
/// cache of INI files holds with room to spare, and a divisor of ten, so that the same one stands at both.
bool Session::ChangeDevices(int count) {
    constexpr int kFirstLook = 50;   // Five rounds: what the toolkit keeps of faces and pictures is there by then.
    constexpr std::size_t kDevices = 5;
    std::size_t first = 0;
    std::size_t last = 0;
    for (int change = 1; change <= count; ++change) {
        actions_->SelectDevice(static_cast<std::size_t>(change) % kDevices);
        actions_->Settle();
        end_->Clear();
        last = ::mallinfo2().uordblks;
        if (change == kFirstLook) {
            first = last;
        }
    }
    std::printf("memory in use after device change %d: %zu, after %d: %zu bytes\n", kFirstLook, first, count, last);
    constexpr std::size_t kPart = 50;   // 2 %
    return count <= kFirstLook || last <= first + first / kPart;
}

}   // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication app(argc, argv);
    const std::string first = argc > 1 ? argv[1] : "1500";
    if (first == "devices") {
        return Session(0).ChangeDevices(argc > 2 ? std::stoi(argv[2]) : 100) ? 0 : 1;
    }
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::stoul(argv[2])) : 1U;
    std::printf("seed %u\n", seed);
    return Session(seed).Run(std::stoi(first)) ? 0 : 1;
}
