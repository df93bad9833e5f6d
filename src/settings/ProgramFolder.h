#pragma once

#include <string>

/// Where the program may find its files.
struct FolderPlaces {
    std::string executable;   ///< The folder of the executable.
    std::string userData;     ///< The user's data folder, usually ~/.local/share.
    std::string shipped;   ///< The folder of the installed part files, unless ../share/tarnwick of `executable` is one.
};

struct ProgramFolder {
    std::string appPath;   ///< Ends with a separator.
    std::string message;   ///< What the user should know of it, or empty.
};

/// The folder of the part files and of tarnwick.ini: that of the executable if a tarnwick.ini lies there, so that
/// program and files can be copied together, which then stay as they are; otherwise `tarnwick` under the user's data
/// folder, filled from the shipped files and kept up to date with them, but for what the user changed (ShippedFiles.h).
ProgramFolder OpenProgramFolder(const FolderPlaces& places);
