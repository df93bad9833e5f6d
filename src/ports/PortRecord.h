#pragma once

#include <cstdint>
#include <string>

/// A text form in which the writes to a port are recorded. All calls add to the end of `text`, nothing else;
/// where the text goes is the caller's business.
class PortRecord {
public:
    PortRecord() = default;
    PortRecord(const PortRecord&) = delete;
    PortRecord& operator=(const PortRecord&) = delete;
    virtual ~PortRecord() = default;

    /// Begins a new record: what stands before the first write.
    virtual void Start(std::string& text) = 0;

    /// One write, at so many microseconds since the start.
    virtual void Write(std::uint64_t microseconds, std::uint16_t port, std::uint8_t value, std::string& text) = 0;

    /// What makes all text so far a complete record. Further writes may follow.
    virtual void Complete(std::string& text) = 0;
};
