#include "core/ReloadPeriod.h"

#include <gtest/gtest.h>

#include "core/PortAddress.h"
#include "support/Cases.h"

TEST(ReloadPeriod, RunsFrom1To65Seconds) {
    const Cases<const char*, const char*, std::optional<int>> cases = {
        {"0", "1", 1000},        {"1", "1", 1000},       {"65", "65", 65000},    {"66", "65", 65000},
        {"abc", "65", 65000},    {"", "65", 65000},      {"32767", "65", 65000}, {"32768", "65", 65000},
        {"-40000", "65", 65000}, {"1e400", "65", 65000}, {"10,5", "65", 65000},  {"-5", "-5", std::nullopt},
        {"-0.4", "1", 1000},     {"0.4", "1", 1000},     {"2.5", "2.5", 2500},   {" 7 ", " 7 ", 7000},
        {"1E1", "1E1", 10000},   {"65.6", "65", 65000}};
    for (const auto& [typed, shown, milliseconds] : cases) {
        const ReloadPeriod period = ReadReloadPeriod(typed);
        EXPECT_EQ(period.text, shown) << typed;
        EXPECT_EQ(period.milliseconds, milliseconds) << typed;
    }
}

TEST(PortAddress, IsReadAsHexadecimalDigitsAlone) {
    for (const auto& [typed, expected, shown, choice] :
         Cases<const char*, std::optional<int>, const char*, int>{{"378", 0x378, "378", 0},
                                                                  {"278", 0x278, "278", 1},
                                                                  {"3bc", 0x3BC, "3BC", 2},
                                                                  {"2BC", 0x2BC, "2BC", kOtherPort},
                                                                  {" 0300 ", 0x300, "300", kOtherPort},
                                                                  {"0", 0, "0", kOtherPort},
                                                                  {"7FFF", 0x7FFF, "7FFF", kOtherPort},
                                                                  {"D010", 0xD010 - 0x10000, "D010", kOtherPort},
                                                                  {"FFFF", -1, "FFFF", kOtherPort},
                                                                  {"10000", std::nullopt, "", 0},
                                                                  {"", std::nullopt, "", 0},
                                                                  {"-378", std::nullopt, "", 0},
                                                                  {"&H378", std::nullopt, "", 0},
                                                                  {"0x378", std::nullopt, "", 0},
                                                                  {"37 8", std::nullopt, "", 0},
                                                                  {"LPT1", std::nullopt, "", 0}}) {
        const auto address = ReadPortAddress(typed);
        ASSERT_EQ(address, expected) << typed;
        if (address) {
            EXPECT_EQ(PortAddressText(*address), shown);
            EXPECT_EQ(PortChoice(*address), choice) << typed;
        }
    }
}
