#pragma once

#include <stdexcept>
#include <string>
#include <vector>

using Arguments = std::vector<std::string>;

/// A command line that can't be understood: ends the program with status 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Each command gets what stands behind its name and gives the status that the program ends with: 0 if all is well, 1
// if something was found or couldn't be done.

/// Prints the faults of part files. 1 from a warning up.
int CheckFiles(Arguments arguments);

/// Prints the register map of a part file as a table. 1 if the file has errors.
int ShowFile(const Arguments& arguments);

/// Prints the register words of a part file after settings. 1 if a setting was not taken as it was given, or if the
/// file has errors.
int PrintWords(const Arguments& arguments);

/// The text of --help.
std::string HelpText();
