#include <array>
#include <charconv>
#include <sstream>
#include <vector>

#include "FuzzInput.h"
#include "ports/Connector.h"
#include "ports/PortLog.h"
#include "ports/PortTrace.h"
#include "ports/RecordingPort.h"
#include "ports/SimulatedPort.h"

// Any writes at any times: the log has a line for each, and the waveform is one that a viewer can read, with the levels
// that were written.

namespace {

struct Write {
    std::uint64_t time;
    std::uint16_t port;
    std::uint8_t value;
};

template <class Number>
bool Take(std::string_view& text, Number& number, int base) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.starts_with(' ')) {
        text.remove_prefix(1);
    }
    return error == std::errc();
}

void CheckLog(const std::string& log, const std::vector<Write>& writes) {
    std::istringstream lines(log);
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        std::string_view rest = line;
        Write read{};
        Expect(Take(rest, read.time, 10) && Take(rest, read.port, 16) && Take(rest, read.value, 16) && rest.empty(),
               "a log line has three numbers");
        Expect(count < writes.size() && read.time == writes[count].time && read.port == writes[count].port &&
                   read.value == writes[count].value,
               "the log has the write");
    }
    Expect(count == writes.size(), "the log has every write");
}

/// The levels after all writes: '0', '1', or 'x' for a line that was never written.
std::array<char, kPortLines> Levels(const std::vector<Write>& writes) {
    std::array<char, kPortLines> levels;
    levels.fill('x');
    for (const Write& write : writes) {
        const bool data = write.port % 4 == 0;
        if (!data && write.port % 4 != 2) {
            continue;
        }
        const unsigned bits = data ? write.value : static_cast<unsigned>(write.value ^ kInvertedControls);
        for (std::size_t line = data ? 0 : 8; line < (data ? 8 : 12); ++line) {
            levels[line] = (bits >> (data ? line : line - 8) & 1U) != 0 ? '1' : '0';
        }
    }
    return levels;
}

void CheckTrace(const std::string& trace, const std::vector<Write>& writes) {
    std::array<char, kPortLines> levels{};
    std::istringstream lines(trace);
    bool body = false;
    std::int64_t time = -1;
    for (std::string line; std::getline(lines, line);) {
        if (!body) {
            body = line == "$enddefinitions $end";
        } else if (line.starts_with('#')) {
            std::string_view rest = std::string_view(line).substr(1);
            std::int64_t next = 0;
            Expect(Take(rest, next, 10) && rest.empty() && next > time, "time goes on");
            time = next;
        } else if (!line.starts_with('$')) {
            Expect(line.size() == 2 && line.find_first_of("01x") == 0 && line[1] >= 'A' && line[1] < 'A' + kPortLines,
                   "a change is a level and a line");
            Expect(time >= 0, "a change has a time");
            levels.at(static_cast<std::size_t>(line[1] - 'A')) = line[0];
        }
    }
    Expect(body, "the waveform has a head");
    Expect(levels == Levels(writes), "the waveform ends with the levels");
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFolder folder;
    FuzzInput input(data, size);
    const std::string log = folder.Path() + "port.log";
    const std::string trace = folder.Path() + "port.vcd";
    std::chrono::steady_clock::time_point now;
    RecordingPort port(std::make_unique<SimulatedPort>(), [&] { return now; });
    port.Add("log", log, std::make_unique<PortLog>());
    port.Add("trace", trace, std::make_unique<PortTrace>());
    port.OpenTVicPort();
    std::vector<Write> writes;
    auto start = now;
    const std::string_view bytes = input.File();
    for (std::size_t i = 0; i + 3 < bytes.size(); i += 4) {
        const auto at = [&](std::size_t place) { return static_cast<std::uint8_t>(bytes[i + place]); };
        now += std::chrono::nanoseconds((at(0) >> 4) * (at(0) >> 4) * 100);
        switch (at(0) & 15U) {
            case 0:
                port.Idle();
                break;
            case 1:
                port.OpenTVicPort();
                start = now;
                writes.clear();
                break;
            default: {
                const auto address = static_cast<std::uint16_t>(at(1) << 8 | at(2));
                port.WritePort(address, at(3));
                writes.push_back({static_cast<std::uint64_t>(
                                      std::chrono::duration_cast<std::chrono::microseconds>(now - start).count()),
                                  address, at(3)});
            }
        }
    }
    input.Flag() ? port.CloseTVicPort() : port.Idle();
    CheckLog(FuzzFolder::Read(log), writes);
    CheckTrace(FuzzFolder::Read(trace), writes);
    return 0;
}
