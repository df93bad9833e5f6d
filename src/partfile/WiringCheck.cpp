#include <array>
#include <string>

#include "core/LineUse.h"
#include "core/cPart.h"
#include "partfile/PartCheck.h"
#include "partfile/PartFile.h"

namespace {

struct SerialLine {
    const char* key;
    const char* name;
    std::int16_t word;
};

void CheckSerialLines(PartFile& file, const std::array<SerialLine, 3>& lines) {
    for (const SerialLine& line : lines) {
        if (line.word != 0 && !LineOf(line.word)) {   // 0 stands for the usual line.
            file.Report(
                Severity::Warning, "SETUP", line.key,
                std::to_string(line.word) + " is no line of the port: the twelve are 1, 2, 4 and so on to 2048");
        }
        for (const SerialLine* other = lines.data(); other != &line; ++other) {
            if (other->word == line.word && LineOf(line.word)) {
                file.Report(Severity::Warning, "SETUP", line.key,
                            std::string(line.name) + " and " + other->name +
                                " stand on one line: no register can be loaded so");
            }
        }
    }
}

}   // namespace

void CheckWiring(cPart& part, PartFile& file) {
    CheckSerialLines(file, {{{"CLOCK", "Clock", part.ClockPosition()},
                             {"DATA", "Data", part.DataPosition()},
                             {"LE", "LE", part.LEPosition()}}});
    const auto uses = LineUses(part);
    int place = 0;
    for (const cPrgmPin& pin : part.PrgmPins()) {
        const std::string key = PartFile::Key("LOCATION", FileItems::At(part.Items().pins, place++));
        const LineUse& use = uses.at(static_cast<std::size_t>(pin.Position()));
        if (use.names.size() > 1 && use.names.front() != pin.ID()) {
            file.Report(Severity::Note, "PINS", key,
                        "'" + pin.ID() + "' shares its line with " + use.names.front() + ": one moves the other");
        }
    }
}
