#include "ports/PortTrace.h"

#include <algorithm>

#include "ports/Connector.h"

namespace {

// What stands for a line in the value changes: a letter, which no reader takes for a level or a time.
char LineCode(unsigned line) {
    return static_cast<char>('A' + line);
}

void AppendTime(std::string& text, std::uint64_t time) {
    text += '#';
    text += std::to_string(time);
    text += '\n';
}

void AppendLevel(std::string& text, char level, unsigned line) {
    text += level;
    text += LineCode(line);
    text += '\n';
}

}   // namespace

void PortTrace::Start(std::string& text) {
    time_ = 0;
    levels_ = known_ = 0;
    open_ = true;
    text +=
        "$comment Levels of the parallel port lines at the connector $end\n"
        "$timescale 1 us $end\n"
        "$scope module port $end\n";
    for (unsigned line = 0; line < kPortLines; ++line) {
        text += std::string("$var wire 1 ") + LineCode(line) + ' ' + kConnector[line].name + " $end\n";
    }
    text +=
        "$upscope $end\n"
        "$enddefinitions $end\n";
    AppendTime(text, time_);
    text += "$dumpvars\n";
    for (unsigned line = 0; line < kPortLines; ++line) {
        AppendLevel(text, 'x', line);
    }
    text += "$end\n";
}

void PortTrace::Write(std::uint64_t microseconds, std::uint16_t port, std::uint8_t value, std::string& text) {
    time_ = std::max(time_ + 1, microseconds);
    if (port % 4 == 0) {
        Change(kDataLines, value, text);
    } else if (port % 4 == kControlOffset) {
        Change(kControlLines, ControlLevels(value), text);
    }
}

void PortTrace::Complete(std::string& text) {
    if (!open_) {
        return;
    }
    AppendTime(text, ++time_);
    open_ = false;
}

void PortTrace::Change(unsigned lines, unsigned levels, std::string& text) {
    const unsigned changed = ((levels ^ levels_) | ~known_) & lines;
    if (changed == 0) {
        return;
    }
    AppendTime(text, time_);
    for (unsigned line = 0; line < kPortLines; ++line) {
        if ((changed >> line & 1U) != 0) {
            AppendLevel(text, (levels >> line & 1U) != 0 ? '1' : '0', line);
        }
    }
    levels_ = (levels_ & ~lines) | levels;
    known_ |= lines;
    open_ = true;
}
