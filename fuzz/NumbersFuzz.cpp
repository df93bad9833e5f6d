#include <cmath>

#include "FuzzInput.h"
#include "core/BinaryString.h"
#include "core/Errors.h"
#include "core/FormatNumber.h"
#include "core/Numbers.h"
#include "core/PortAddress.h"
#include "core/ReloadPeriod.h"

// Any text as a number, and any number as a text and back.

namespace {

/// Read as a file's number, or nothing where it isn't taken.
template <class Convert>
auto Taken(Convert convert, const std::string& text) -> std::optional<decltype(convert(text))> {
    try {
        return convert(text);
    } catch (const ConversionError& error) {
        Expect(*error.what() != '\0', "a refusal says why");
        return std::nullopt;
    }
}

void ReadText(const std::string& text) {
    const auto number = ParseNumber(text);
    const auto real = Taken(FileDouble, text);
    Expect(!number || (std::isfinite(*number) && real == number), "numeric text reads alike everywhere");
    const auto small = Taken(FileShort, text);
    const auto large = Taken(FileLong, text);
    // A hexadecimal number of 16 bits is a pattern that is negative in 16 bits only.
    Expect(!small || (large && static_cast<std::int16_t>(*large) == *small), "what fits 16 bits fits 32");
    Expect(!large || real, "a whole number is a real one");
    Taken(FileBoolean, text);
    if (const auto address = ReadPortAddress(text)) {
        Expect(ReadPortAddress(PortAddressText(*address)) == address, "a port address reads back");
    }
    Expect(!ReadReloadPeriod(text).text.empty(), "a period has a text");
}

void WriteNumber(double value) {
    const std::string general = GeneralText(value);
    const std::string stored = FileText(value);
    constexpr double kRoundsBeyond = 1.797693134862315e308;   // 15 digits can come out above the range.
    if (!std::isfinite(value) || std::fabs(value) >= kRoundsBeyond) {
        return;
    }
    constexpr double kDigits = 1e-14;
    // A denormal number has fewer digits than are written: it reads back as it was.
    for (const std::string& text : {general, stored}) {
        const auto read = ParseNumber(text);
        Expect(read && std::fabs(*read - value) <= kDigits * std::fabs(value), "a number reads back to 15 digits");
        Expect(GeneralText(*read) == general, "its text is the same again");
    }
    if (std::fabs(value) < 9e15 && std::trunc(value) == value) {
        Expect(FileDouble(stored) == value, "a whole number reads back exactly");
    }
    if (value >= 0 && value < 9e15) {
        const std::string binary = ToBase(value, "01");
        Expect(BinaryValue(binary) == std::trunc(value), "a binary string has its value");
        std::string copy = binary;
        Expect(FileDouble("&H" + BinaryToHex(copy)) == std::trunc(value), "hexadecimal digits have the value");
    }
}

void Format(double value, const std::string& pattern) {
    constexpr std::size_t kMost = 4000;   // Digits of the largest number, and the pattern.
    Expect(FormatNumber(value, pattern).size() < kMost + 4 * pattern.size(), "a formatted number has a size");
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    ReadText(std::string(input.File()));
    Format(1234.5678, std::string(input.File()));
    while (!input.Empty()) {
        const double value = input.Number();
        WriteNumber(value);
        Format(value, input.Flag() ? std::string(input.File()) : input.Text());
        ReadText(input.Text());
        ReadText("&H" + input.Text());
        const std::int16_t whole = input.Short();
        Expect(FileShort(FileText(whole)) == whole && FileLong(FileText(whole)) == whole, "a whole number reads back");
    }
    return 0;
}
