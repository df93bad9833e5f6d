#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// A text file that grows while the program runs: gathered in memory and written in large pieces, so that
/// recording costs next to nothing per entry. The first failure ends the recording: the file then holds all
/// entries up to a point and none after it, never a gap. No call throws.
class RecordFile {
public:
    explicit RecordFile(std::string path) : path_(std::move(path)) {}
    RecordFile(const RecordFile&) = delete;
    RecordFile& operator=(const RecordFile&) = delete;
    ~RecordFile() { Close(); }

    /// Creates or empties the file, and forgets earlier failures.
    void Open();

    /// Adds text that records so many entries; 0 for text that frames them, such as a head.
    void Append(std::string_view text, unsigned entries);

    /// Hands to the system what is still held in memory.
    void Flush();

    /// Flushes and closes. A file that isn't open stays as it is.
    void Close();

    [[nodiscard]] const std::string& Path() const noexcept { return path_; }
    [[nodiscard]] std::uint64_t Entries() const noexcept { return written_ + pending_; }    ///< Recorded since Open.
    [[nodiscard]] std::uint64_t Bytes() const noexcept { return size_ + buffer_.size(); }   ///< Likewise.
    [[nodiscard]] std::uint64_t Lost() const noexcept { return lost_; }   ///< Entries that aren't in the file.

    /// Why the recording ended, in the system's words; empty as long as all is well.
    [[nodiscard]] const std::string& Problem() const noexcept { return problem_; }

private:
    [[nodiscard]] bool IsGone() const;
    [[nodiscard]] bool WriteBuffer();
    void Fail(std::string reason);

    static constexpr std::size_t pieceSize = 65536;

    std::string path_;
    int descriptor_ = -1;
    std::string buffer_;
    std::uint64_t size_ = 0;   ///< Length of the file, in bytes, after the last good write.
    std::uint64_t written_ = 0;
    std::uint64_t pending_ = 0;
    std::uint64_t lost_ = 0;
    std::string problem_;
};
