#pragma once

#include <gtest/gtest.h>
#include <regex.h>

#include <array>
#include <string>
#include <vector>

/// Every match of an extended regular expression in a text: the whole match, then its groups, empty where one took no
/// part.
inline std::vector<std::vector<std::string>> AllMatches(const std::string& text, const std::string& pattern) {
    std::vector<std::vector<std::string>> matches;
    regex_t compiled;
    EXPECT_EQ(::regcomp(&compiled, pattern.c_str(), REG_EXTENDED | REG_NEWLINE), 0) << pattern;
    std::array<regmatch_t, 6> groups{};
    const char* from = text.c_str();
    int flags = 0;
    while (::regexec(&compiled, from, groups.size(), groups.data(), flags) == 0 && groups[0].rm_eo > groups[0].rm_so) {
        auto& match = matches.emplace_back();
        for (const regmatch_t& group : groups) {
            match.push_back(group.rm_so < 0 ? std::string() : std::string(from + group.rm_so, from + group.rm_eo));
        }
        from += groups[0].rm_eo;
        flags = from[-1] == '\n' ? 0 : REG_NOTBOL;
    }
    ::regfree(&compiled);
    return matches;
}
