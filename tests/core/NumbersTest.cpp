#include "core/Numbers.h"

#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <optional>

#include "core/Errors.h"
#include "core/TypedNumber.h"
#include "support/TextTable.h"

namespace {

/// What the conversion gives, or "-" if it refuses.
template <class Convert, class Argument>
std::string Result(Convert convert, const Argument& argument) {
    try {
        return std::to_string(convert(argument));
    } catch (const ConversionError&) {
        return "-";
    }
}

TEST(Numbers, RoundHalvesToEvenAndRefuseWhatDoesNotFit) {
    for (const TextRow& row : TextTable(R"(2.5 2 2; 3.5 4 4; -2.5 -2 -2; -0.5 0 0; 0.49999999999999994 0 0
        32767.4 32767 32767; 32767.5 32768 -; -32768.5 -32768 -32768; -32769 -32769 -
        2147483647.4 2147483647 -; 2147483647.5 - -; -2147483648.5 -2147483648 -; -2147483649 - -
        nan - -; inf - -; -inf - -)")) {
        EXPECT_EQ(Result(RoundToLong, CellNumber(row[0])), row[1]) << row[0];
        EXPECT_EQ(Result(RoundToShort, CellNumber(row[0])), row[2]) << row[0];
    }
    EXPECT_EQ(RoundHalfEven(4503599627370495.5), 4503599627370496.0);
}

TEST(Numbers, TypedTextsMeanOneNumberOrAreRefused) {
    // The text; what it is as a plain number, in MHz and in kHz.
    for (const TextRow& row : TextTable(R"('433' 433 433 433; ' -2,5 ' -2.5 -2.5 -2.5; '0,125' 0.125 0.125 0.125
        '1e3' 1000 1000 1000; '.5E+1' 5 5 5; '2400,0500' 2400.05 2400.05 2400.05
        '433MHz' - 433 433000; '433mhz' - 433 433000; '433 m' - 433 433000; '2.4G' - 2400 2400000
        '1.001 GHZ' - 1001 1001000; '433,5k' - 0.4335 433.5; '25hz' - 0.000025 0.025; '1e3 k' - 1 1000
        '433,500' - - -; '1,000' - - -; '1,000,000' - - -; '1.000,5' - - -; '1.2.3' - - -; '5mHz' - - -; '5 Hzz' - - -
        '5T' - - -; '5e' - - -; 'MHz' - - -; '' - - -; ',' - - -; '1 000' - - -; '1e999999999999' - - -; 'nan' - - -)")) {
        const auto typed = [&](auto convert) {
            try {
                return GeneralText(convert());
            } catch (const ConversionError& error) {
                EXPECT_TRUE(std::string(error.what()).starts_with('"' + row[0] + '"')) << error.what();
                return std::string("-");
            }
        };
        EXPECT_EQ(typed([&] { return TypedNumber(row[0]); }), row[1]) << row[0];
        EXPECT_EQ(typed([&] { return TypedFrequency(row[0], FrequencyUnit::Megahertz); }), row[2]) << row[0];
        EXPECT_EQ(typed([&] { return TypedFrequency(row[0], FrequencyUnit::Kilohertz); }), row[3]) << row[0];
    }
}

TEST(Numbers, WholeBitsKeepTheLowest64) {
    for (const TextRow& row : TextTable(R"(0 0; -1 0; 0.999 0; 7.9 7; nan 0; inf 0; -inf 0; 1e300 0; 0x1p64 0
        9007199254740991 9007199254740991; 18446744073709549568 18446744073709549568; 0x3p63 9223372036854775808)")) {
        EXPECT_EQ(std::to_string(WholeBits(CellNumber(row[0]))), row[1]) << row[0];
    }
}

using NumberTexts = std::vector<std::pair<double, TextRow>>;

/// The rows of a table with the number in one of their cells.
NumberTexts WithNumbers(std::size_t column, const std::string& table) {
    NumberTexts rows;
    for (const TextRow& row : TextTable(table)) {
        rows.emplace_back(CellNumber(row[column]), row);
    }
    return rows;
}

// Made before a test sets a locale. The last of the first table's lines are carries into another notation.
const NumberTexts kGeneralTexts = WithNumbers(0, R"(0 0; -0.0 0; 5 5; -12.5 -12.5; 1000.25 1000.25; 100 100
    0.30000000000000004 0.3; 0.3333333333333333 0.333333333333333; 0.6666666666666667 0.666666666666667
    123456789012345 123456789012345; 1e14 100000000000000; 999999999999999 999999999999999; 1e15 1E+15; -1e15 -1E+15
    123456789012345678 1.23456789012346E+17; 2.5e100 2.5E+100; 1.7976931348623157e308 1.79769313486232E+308
    0.000001 0.000001; 0.0000123 0.0000123; 1e-7 0.0000001; 9.9e-8 9.9E-08; 1e-9 1E-09; 5e-324 4.94065645841247E-324
    999999999999999.5 1E+15; 9.999999999999999e-8 0.0000001; 9.9999999999999999 10)");
const NumberTexts kNumericTexts = WithNumbers(1, R"('0' 0; '1000.25' 1000.25; ' 12 ' 12; '+3' 3; '-3.5' -3.5
    '.5' 0.5; '5.' 5; '-.5e1' -5; '1E3' 1000; '1e+03' 1000; '2.5E-2' 0.025; '007' 7; '	7	' 7
    '' -; '  ' -; '.' -; '-' -; '+-3' -; '--3' -; '- 5' -; '1e' -; '1e+' -; 'e5' -; '1,5' -; '1.000,5' -; '1 000' -
    '1.2.3' -; '12a' -; 'abc' -; 'inf' -; '-inf' -; 'nan' -; '0x10' -; '&H10' -; '1e999' -)");

void CheckTexts() {
    for (const auto& [number, row] : kGeneralTexts) {
        EXPECT_EQ(GeneralText(number), row[1]) << row[0];
    }
    for (const auto& [number, row] : kNumericTexts) {
        EXPECT_EQ(ParseNumber(row[0]), row[1] == "-" ? std::nullopt : std::optional(number)) << '"' << row[0] << '"';
    }
}

TEST(Numbers, TextsOfNumbersAndNumbersOfTextsInAnyLocale) {
    struct Commas : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    CheckTexts();
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Commas));
    CheckTexts();
    // Few machines have one of these; the conversions of C have commas then too.
    for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            CheckTexts();
        }
    }
    std::setlocale(LC_ALL, "C");
    std::locale::global(before);
}

TEST(Numbers, NumbersOfFiles) {
    for (const TextRow& row : TextTable(R"('888' 888 888 888; ' -5 ' -5 -5 -5; '2.5' 2 2 2.5; '1e3' 1000 1000 1000
        '&H378' 888 888 888; '&h3bc' 956 956 956; ' &H7FFF ' 32767 32767 32767; '&H8000' -32768 32768 32768
        '&HFFFF' -1 65535 65535; '&H10000' - 65536 65536; '&H7FFFFFFF' - 2147483647 2147483647
        '&H80000000' - -2147483648 2147483648; '&HFFFFFFFF' - -1 4294967295; '&H100000000' - - 4294967296
        '32767' 32767 32767 32767; '32768' - 32768 32768; '-32769' - -32769 -32769; '2147483648' - - 2147483648
        '&H' - - -; '&HG' - - -; '&H-1' - - -; '-&H1' - - -; '0x378' - - -; 'H378' - - -; '' - - -; 'ten' - - -)")) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(Result(FileShort, row[0]), row[1]);
        EXPECT_EQ(Result(FileLong, row[0]), row[2]);
        EXPECT_EQ(Result(FileDouble, row[0]), row[3] == "-" ? "-" : std::to_string(CellNumber(row[3])));
    }
    for (const TextRow& row : TextTable(R"('TRUE' 1; 'False' 0; ' tRuE ' 1; '0' 0; '0.0' 0; '-1' 1; '1' 1; '2.5' 1
        '' -; 'yes' -; 'TRUE1' -; 'T' -)")) {
        EXPECT_EQ(Result(FileBoolean, row[0]), row[1]) << row[0];
    }
}

TEST(Numbers, KeySuffixesAndHexadecimal) {
    EXPECT_EQ(ItemNumber(0) + ItemNumber(9) + ItemNumber(10) + ItemNumber(99) + ItemNumber(100), "00091099100");
    EXPECT_EQ(HexText(0) + ' ' + HexText(0x3BC, 4) + ' ' + HexText(0x1ABCDEF0123456, 2), "0 03BC 1ABCDEF0123456");
}

}   // namespace
