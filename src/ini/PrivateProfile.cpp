#include "ini/PrivateProfile.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "files/FileCalls.h"
#include "ini/ProfileCache.h"
#include "ini/ProfileChange.h"

namespace {

std::uint32_t CopyText(std::string_view text, char* buffer, std::uint32_t size) {
    const std::size_t count = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(buffer, text.data(), count);
    buffer[count] = '\0';
    return static_cast<std::uint32_t>(count);
}

// A list that is cut ends in two NULs of its own.
std::uint32_t CopyList(std::string_view names, char* buffer, std::uint32_t size) {
    if (names.size() < size || size < 2) {
        return CopyText(names, buffer, size);
    }
    const std::uint32_t count = CopyText(names, buffer, size - 1);
    buffer[size - 1] = '\0';
    return count;
}

std::uint32_t CopyDefault(const char* text, char* buffer, std::uint32_t size) {
    return CopyText(text == nullptr ? "" : TrimmedRight(text, " "), buffer, size);
}

void Change(ProfileText& text, const char* section, const char* key, const char* value) {
    if (key == nullptr) {
        text.RemoveSection(section);
    } else if (value == nullptr) {
        text.RemoveKey(section, key);
    } else {
        text.Write(section, key, value);
    }
}

}   // namespace

std::uint32_t GetPrivateProfileStringA(const char* section, const char* key, const char* defaultText, char* buffer,
                                       std::uint32_t size, const char* file) {
    if (buffer == nullptr || size == 0) {
        return 0;
    }
    if (file == nullptr) {
        return CopyDefault(defaultText, buffer, size);
    }
    const ProfileText& text = *Profiles().Current(file).text;
    if (section == nullptr) {
        return CopyList(text.SectionNames(), buffer, size);
    }
    if (key == nullptr) {
        const std::string names = text.KeyNames(section);
        return names.empty() ? CopyDefault(defaultText, buffer, size) : CopyList(names, buffer, size);
    }
    const auto value = text.Value(section, key);
    return value ? CopyText(*value, buffer, size) : CopyDefault(defaultText, buffer, size);
}

bool WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file) {
    if (file == nullptr || section == nullptr) {
        return ProfileChange::Fail(file == nullptr ? "cannot write: no file was named"
                                                   : std::string("cannot write ") + file + ": no section was named");
    }
    ProfileChange change(file, ProfileTransaction::Start::FromFile);
    Change(change.Text(), section, key, value);
    return change.Commit(true);
}

std::optional<std::string> PrivateProfileReadError(const std::string& file) {
    const int error = Profiles().Current(file).stamp.error;
    return error == 0 ? std::nullopt : std::optional(FileErrorText(error));
}

std::optional<std::string> PrivateProfileUnreadable(const std::string& file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored) ? PrivateProfileReadError(file) : std::nullopt;
}

int PrivateProfileLine(std::string_view section, std::string_view key, const std::string& file) {
    return Profiles().Current(file).text->LineNumber(section, key);
}

ProfileSnapshot::ProfileSnapshot(const std::string& file) : file_(file) {
    Profiles().Pin(file_);
}

ProfileSnapshot::~ProfileSnapshot() {
    Profiles().Unpin(file_);
}
