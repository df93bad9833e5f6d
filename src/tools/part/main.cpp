#include <cerrno>
#include <exception>
#include <iostream>
#include <map>
#include <system_error>

#include "tools/part/Commands.h"

namespace {

constexpr int kUsage = 2;

int Run(Arguments arguments) {
    static const std::map<std::string, int (*)(const Arguments&)> commands{
        {"check", [](const Arguments& rest) { return CheckFiles(rest); }},
        {"show", [](const Arguments& rest) { return ShowFile(rest); }},
        {"words", [](const Arguments& rest) { return PrintWords(rest); }},
        {"--help", [](const Arguments& /*none*/) { return std::cout << HelpText(), 0; }},
        {"--version",
         [](const Arguments& /*none*/) { return std::cout << "tarnwick-part " TARNWICK_VERSION "\n", 0; }}};
    if (arguments.empty()) {
        throw UsageError("no command");
    }
    const auto command = commands.find(arguments.front());
    if (command == commands.end()) {
        throw UsageError("no command '" + arguments.front() + "'");
    }
    arguments.erase(arguments.begin());
    for (const std::string& argument : arguments) {
        if (argument.starts_with("--") && !(argument == "--json" && command->first == "check")) {
            throw UsageError("no option '" + argument + "' of " + command->first);
        }
    }
    return command->second(arguments);
}

}   // namespace

int main(int argc, char* argv[]) {
    try {
        const int status = Run(Arguments(argv + 1, argv + argc));
        std::cout.flush();
        if (!std::cout) {
            throw std::system_error(errno, std::generic_category(), "can't write the output");
        }
        return status;
    } catch (const UsageError& error) {
        std::cerr << "tarnwick-part: " << error.what() << "; tarnwick-part --help tells more\n";
        return kUsage;
    } catch (const std::exception& error) {
        std::cerr << "tarnwick-part: " << error.what() << '\n';
        return 1;
    }
}
