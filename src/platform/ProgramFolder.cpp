#include "platform/ProgramFolder.h"

#include <filesystem>
#include <system_error>

namespace {

namespace fs = std::filesystem;

/// Copies the shipped files that the folder doesn't have yet; returns why one of them couldn't be copied.
std::string Fill(const fs::path& folder, const fs::path& shipped) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        return "can't make the folder " + folder.string() + ": " + error.message();
    }
    fs::directory_iterator files(shipped, error);
    if (error) {
        return "no part files were found in " + shipped.string() + ": " + error.message();
    }
    for (const fs::directory_entry& file : files) {
        if (file.path().extension() == ".ini") {
            fs::copy_file(file.path(), folder / file.path().filename(), fs::copy_options::skip_existing, error);
            if (error) {
                return "can't copy " + file.path().string() + " to " + folder.string() + ": " + error.message();
            }
        }
    }
    return {};
}

}   // namespace

ProgramFolder OpenProgramFolder(const FolderPlaces& places) {
    std::error_code error;
    const fs::path beside(places.executable);
    if (fs::exists(beside / "tarnwick.ini", error)) {
        return {(beside / "").string(), {}};
    }
    const fs::path own = fs::path(places.userData) / "tarnwick";
    std::string message;
    if (!fs::exists(own / "tarnwick.ini", error)) {
        message = Fill(own, places.shipped);
    }
    return {(own / "").string(), message};
}
