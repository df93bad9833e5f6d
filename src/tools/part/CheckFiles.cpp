#include <algorithm>
#include <iostream>

#include "tools/part/Commands.h"
#include "tools/part/JsonText.h"
#include "tools/part/ReadDevice.h"

namespace {

void PrintJson(const std::vector<Problem>& problems) {
    std::cout << '[';
    for (std::size_t i = 0; i < problems.size(); ++i) {
        const Problem& problem = problems[i];
        std::cout << (i == 0 ? "\n" : ",\n") << R"(  {"file": )" << JsonText(problem.file) << R"(, "line": )"
                  << problem.line << R"(, "severity": )" << JsonText(SeverityName(problem.severity))
                  << R"(, "section": )" << JsonText(problem.section) << R"(, "key": )" << JsonText(problem.key)
                  << R"(, "text": )" << JsonText(problem.text) << '}';
    }
    std::cout << (problems.empty() ? "]\n" : "\n]\n");
}

}   // namespace

int CheckFiles(Arguments arguments) {
    const bool json = std::erase(arguments, "--json") > 0;
    if (arguments.empty()) {
        throw UsageError("check needs a FILE");
    }
    std::vector<Problem> problems;
    for (const std::string& path : arguments) {
        ReadDevice device(path);
        const auto& found = device.Part().FileProblems().All();
        problems.insert(problems.end(), found.begin(), found.end());
    }
    if (json) {
        PrintJson(problems);
    } else {
        for (const Problem& problem : problems) {
            std::cout << problem.Message() << '\n';
        }
    }
    return std::any_of(problems.begin(), problems.end(), [](const Problem& p) { return p.severity > Severity::Note; });
}
