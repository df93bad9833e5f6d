#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// An empty folder of its own, removed with all that is in it.
class TempFolder {
public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tarnwick-test-XXXXXX").string();
        EXPECT_NE(::mkdtemp(name.data()), nullptr) << name;
        path_ = name;
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::string Path(const std::string& name) const { return (path_ / name).string(); }

    /// Writes a file and gives its path.
    std::string File(const std::string& name, const std::string& contents) const {
        std::ofstream(path_ / name, std::ios::binary) << contents;
        return Path(name);
    }

    /// The contents of a file; empty without one.
    [[nodiscard]] std::string Read(const std::string& name) const {
        std::ifstream in(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::filesystem::path path_;
};
