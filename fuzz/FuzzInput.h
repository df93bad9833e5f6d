#pragma once

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

/// The bytes of one run, used up from the front. The last ones, up to 128 and at most half, choose the operations;
/// those before are the file that is read. A file with 128 bytes behind it is thus a seed.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : text_(reinterpret_cast<const char*>(data), size) {
        constexpr std::size_t kOperations = 128;
        const std::size_t file = size - std::min(kOperations, size / 2);
        file_ = text_.substr(0, file);
        text_.remove_prefix(file);
    }
    /// These bytes alone, all of them for choices.
    explicit FuzzInput(std::string_view choices) : text_(choices) {}

    [[nodiscard]] std::string_view File() const { return file_; }
    [[nodiscard]] bool Empty() const { return text_.empty(); }

    /// 0 when all is used up.
    std::uint8_t Byte() {
        if (text_.empty()) {
            return 0;
        }
        const auto byte = static_cast<std::uint8_t>(text_.front());
        text_.remove_prefix(1);
        return byte;
    }

    unsigned Below(unsigned end) { return Byte() % end; }
    bool Flag() { return (Byte() & 1U) != 0; }
    std::int16_t Short() {
        const int high = Byte() << 8;
        return static_cast<std::int16_t>(high | Byte());
    }

    /// A number of any kind: small and whole, fraction, huge, infinite, or none.
    double Number() {
        switch (Below(4)) {
            case 0:
                return Byte();
            case 1:
                return Short() / 16.0;
            case 2:
                return Short() * 65536.0;
            default: {
                std::uint64_t bits = 0;
                for (int i = 0; i < 8; ++i) {
                    bits = bits << 8U | Byte();
                }
                double value = 0;
                std::memcpy(&value, &bits, sizeof value);
                return value;
            }
        }
    }

    /// Up to 15 bytes without a NUL.
    std::string Text() {
        std::string text;
        for (unsigned length = Below(16); length > 0 && !text_.empty(); --length) {
            if (const char c = static_cast<char>(Byte()); c != '\0') {
                text += c;
            }
        }
        return text;
    }

private:
    std::string_view text_;
    std::string_view file_;
};

/// A folder for the files of this process, in memory where there is such a file system. Removed at the end.
class FuzzFolder {
public:
    FuzzFolder() {
        const std::filesystem::path memory = "/dev/shm";
        path_ = (std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path()) /
                ("tarnwick-fuzz-" + std::to_string(::getpid()));
        std::filesystem::create_directories(path_);
    }
    FuzzFolder(const FuzzFolder&) = delete;
    FuzzFolder& operator=(const FuzzFolder&) = delete;
    ~FuzzFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    /// With a separator at the end.
    [[nodiscard]] std::string Path() const { return path_.string() + "/"; }

    std::string Put(const std::string& name, std::string_view contents) const {
        const std::string file = Path() + name;
        std::ofstream(file, std::ios::binary).write(contents.data(), static_cast<std::streamsize>(contents.size()));
        return file;
    }

    [[nodiscard]] static std::string Read(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::filesystem::path path_;
};

/// What must hold; otherwise the run ends as a crash, with the input kept.
inline void Expect(bool holds, std::string_view what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
        std::abort();
    }
}
