#include "settings/ShippedFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "files/AtomicFile.h"
#include "files/FileCalls.h"
#include "files/Hash.h"
#include "files/ProfileFile.h"
#include "settings/RecentItems.h"

namespace {

namespace fs = std::filesystem;

constexpr auto settingsName = "tarnwick.ini";
constexpr auto memoryName = ".shipped";

/// What tells versions of a file apart.
std::string HashOf(std::string_view text) {
    std::array<char, 16> digits{};
    const std::uint64_t hash = Hash::Of(WithoutRecentItems(text));
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 16);
    return {digits.data(), end.ptr};
}

std::string ReadError(const std::string& path, int error) {
    return "can't read " + path + ": " + FileErrorText(error);
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

}   // namespace

ShippedFiles::ShippedFiles(std::string folder, std::string shipped)
    : folder_(std::move(folder)), shipped_(std::move(shipped)) {}

std::string ShippedFiles::Update() {
    std::error_code error;
    if (fs::equivalent(folder_, shipped_, error)) {
        return {};
    }
    fs::create_directories(folder_, error);
    if (error) {
        return "can't make the folder " + folder_ + ": " + error.message();
    }
    refill_ = !fs::exists(PathOf(settingsName), error);
    std::string message = Recall();
    if (message.empty()) {
        message = BringAll();
    }
    if (!changed_.empty()) {
        message += (message.empty() ? "" : "; ") +
                   ("you changed " + Joined(changed_) + ": yours stays in use, the new version lies beside it in ") +
                   folder_ + ", with .new behind the name";
    }
    return message;
}

// Goes on after a failure, and returns the first.
std::string ShippedFiles::BringAll() {
    const Hashes before = remembered_;
    std::vector<std::string> names;
    std::string first = List(names);
    const auto keep = [&first](const std::string& failure) { first = first.empty() ? failure : first; };
    for (const std::string& name : names) {
        keep(Bring(name));
    }
    keep(Remember(before));
    return first;
}

// tarnwick.ini is the last: a first filling that is interrupted goes on at the next start.
std::string ShippedFiles::List(std::vector<std::string>& names) const {
    std::error_code error;
    for (fs::directory_iterator file(shipped_, error), end; !error && file != end; file.increment(error)) {
        if (file->path().extension() == ".ini") {
            names.push_back(file->path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    std::stable_partition(names.begin(), names.end(), [](const std::string& name) { return name != settingsName; });
    return error && refill_ ? "no part files were found in " + shipped_ + ": " + error.message() : std::string();
}

std::string ShippedFiles::Recall() {
    std::string text;
    const FileStamp stamp = ReadProfileFile(PathOf(memoryName), text);
    if (stamp.error != 0 && stamp.error != ENOENT) {
        return ReadError(PathOf(memoryName), stamp.error);
    }
    std::istringstream lines(text);
    for (std::string hash, name; lines >> hash && std::getline(lines >> std::ws, name);) {
        remembered_[name] = hash;
    }
    return {};
}

std::string ShippedFiles::Bring(const std::string& name) {
    std::string shipped;
    if (const FileStamp stamp = ReadProfileFile(shipped_ + "/" + name, shipped); stamp.error != 0) {
        return ReadError(shipped_ + "/" + name, stamp.error);
    }
    const std::string hash = HashOf(shipped);
    const auto known = remembered_.find(name);
    if (known != remembered_.end() && known->second == hash && !refill_) {
        return {};
    }
    std::string own;
    std::string failure;
    const FileStamp stamp = ReadProfileFile(PathOf(name), own);
    if (stamp.error == 0) {
        failure = BringOver(name, shipped, own);
    } else if (stamp.error != ENOENT) {
        failure = ReadError(PathOf(name), stamp.error);
    } else if (refill_ || known == remembered_.end()) {
        failure = ReplaceFile(PathOf(name), shipped);
    }
    if (failure.empty()) {
        remembered_[name] = hash;
    }
    return failure;
}

std::string ShippedFiles::BringOver(const std::string& name, std::string_view shipped, std::string_view own) {
    const std::string now = HashOf(own);
    const std::string next = HashOf(shipped);
    const auto known = remembered_.find(name);
    const bool isKnown = known != remembered_.end();
    if (now == next || (isKnown && known->second == next)) {
        return {};
    }
    if (isKnown && known->second == now) {
        return ReplaceFile(PathOf(name), WithRecentItemsOf(own, shipped));
    }
    std::string failure = ReplaceFile(PathOf(name + ".new"), shipped);
    if (failure.empty()) {
        changed_.push_back(name);
    }
    return failure;
}

// Written last: whatever is interrupted before it is done again at the next start, with the same result.
std::string ShippedFiles::Remember(const Hashes& before) const {
    if (remembered_ == before) {
        return {};
    }
    std::string text;
    for (const auto& [name, hash] : remembered_) {
        text += hash + " " + name + "\n";
    }
    return ReplaceFile(PathOf(memoryName), text);
}
