#include <algorithm>
#include <array>
#include <iostream>
#include <map>

#include "core/FieldBits.h"
#include "core/FieldEntry.h"
#include "core/Numbers.h"
#include "pll/cPLL.h"
#include "tools/part/Commands.h"
#include "tools/part/ReadDevice.h"

namespace {

constexpr std::size_t kColumns = 5;
using Row = std::array<std::string, kColumns>;

void PrintTable(const std::vector<Row>& rows) {
    std::array<std::size_t, kColumns> widths{};
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < kColumns; ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < kColumns; ++i) {
            line += row[i] + std::string(widths[i] - row[i].size() + 2, ' ');
        }
        std::cout << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
    }
}

std::string BitsText(int high, int low) {
    return std::to_string(high) + (high == low ? "" : ".." + std::to_string(low));
}

std::string ValuesText(const cPrgmBits& field) {
    std::string text;
    if (field.HasStringList() && !field.HasValueList()) {
        int code = 0;
        for (const std::string& entry : field.StringList()) {
            text += (code == 0 ? "" : ", ") + std::to_string(code) + " = " + entry;
            ++code;
        }
    } else {
        text = FieldLimits(field);
        constexpr std::string_view kUsual = " in steps of 1";
        if (const auto usual = text.find(kUsual); usual != std::string::npos) {
            const char next = (text + ',')[usual + kUsual.size()];
            text.erase(usual, next == ',' ? kUsual.size() : 0);
        }
    }
    return text + (field.LinkedBits().empty() ? "" : "; higher bits in " + field.LinkedBits());
}

std::string StartText(const cPrgmBits& field) {
    std::string text;
    IgnoringFailures([&] {
        text = field.Text();
        text = text.empty() ? GeneralText(field.Value()) : text;   // A coded list has no text for its codes.
    });
    return text;
}

/// The rows of one register, the highest bits first: its fields, and the runs of bits between them.
std::multimap<int, Row, std::greater<>> RowsOf(const cPart& part, const cRegister& one) {
    std::multimap<int, Row, std::greater<>> rows;
    std::uint64_t open = FieldRun(0, part.RegisterLength());
    for (const cPrgmBits& field : part.PrgmBits()) {
        if (field.Register() == one.ID() && field.Position() >= 0 && field.Length() > 0) {
            const int high = field.Position() + field.Length() - 1;
            rows.insert(
                {high, {"", BitsText(high, field.Position()), field.ID(), StartText(field), ValuesText(field)}});
            if (field.Polarity()) {
                const int sign = field.PolarityPosition();
                const char* minus = field.PolarityInverted() ? "sign: 1 = -" : "sign: 0 = -";
                rows.insert({sign, {"", BitsText(sign, sign), field.ID(), "", minus}});
            }
            open &= ~BitsOf(field);
        }
    }
    for (int high = part.RegisterLength() - 1; high >= 0; --high) {
        int low = high;
        while (low >= 0 && (open & FieldRun(low, 1)) != 0) {
            --low;
        }
        if (low < high) {
            const double bits = one.GetBits(static_cast<std::int16_t>(low + 1), static_cast<std::int16_t>(high - low));
            rows.insert({high, {"", BitsText(high, low + 1), "-", "0x" + HexText(WholeBits(bits)), ""}});
            high = low;
        }
    }
    return rows;
}

std::string PLLText(cPLL& pll) {
    const bool fractional = !pll.NumeratorName().empty();
    std::string text = pll.ID() + ": reference " + GeneralText(pll.XtalFrequency()) + " MHz / " + pll.RCounterName() +
                       " * " + (fractional ? "(" : "") + pll.NCounterName() +
                       (fractional ? " + " + pll.NumeratorName() + " / " + pll.DenominatorName() + ")" : "");
    IgnoringFailures([&] { text += " = " + GeneralText(pll.VCOFrequency()) + " MHz"; });
    return text;
}

}   // namespace

int ShowFile(const Arguments& arguments) {
    if (arguments.size() != 1) {
        throw UsageError("show takes one FILE");
    }
    ReadDevice device(arguments.front());
    cPart& part = device.Part();
    const bool faulty = device.PrintFaults(Severity::Warning);
    std::cout << part.ID() << ": registers of " << part.RegisterLength() << " bits in the order of loading\n\n";
    std::vector<Row> rows{{"Register", "Bits", "Field", "Start", "Values"}};
    for (const cRegister& one : part.Registers()) {
        rows.push_back({one.ID(), "", "", device.Word(one.Value()), ""});
        for (const auto& [high, row] : RowsOf(part, one)) {
            rows.push_back(row);
        }
    }
    for (const cPrgmBits& field : part.PrgmBits()) {
        if (field.Position() < 0) {
            rows.push_back({"constant", "", field.ID(), StartText(field), ""});
        }
    }
    PrintTable(rows);
    for (cPLL& pll : part.PLLs()) {
        std::cout << '\n' << PLLText(pll);
    }
    std::cout << (part.PLLs().Count() > 0 ? "\n" : "");
    return faulty ? 1 : 0;
}
