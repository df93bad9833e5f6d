#include "settings/ProgramFolder.h"

#include <filesystem>
#include <system_error>

#include "settings/ShippedFiles.h"

namespace {

namespace fs = std::filesystem;

// An installed tree that was moved as a whole, or unpacked somewhere, is found too.
fs::path Shipped(const FolderPlaces& places) {
    std::error_code error;
    fs::path moved = fs::path(places.executable).parent_path() / "share" / "tarnwick";
    return fs::exists(moved / "tarnwick.ini", error) ? moved : fs::path(places.shipped);
}

}   // namespace

ProgramFolder OpenProgramFolder(const FolderPlaces& places) {
    std::error_code error;
    const fs::path beside(places.executable);
    if (fs::exists(beside / "tarnwick.ini", error)) {
        return {(beside / "").string(), {}};
    }
    const fs::path own = fs::path(places.userData) / "tarnwick";
    const std::string message = ShippedFiles(own.string(), Shipped(places).string()).Update();
    return {(own / "").string(), message};
}
