#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ports/Port.h"
#include "ports/PortRecord.h"
#include "ports/RecordFile.h"

/// Wraps any port: passes each call on and records the writes in files. The files are begun anew when the
/// port is opened, are complete on disk after Idle(), and end when it is closed. Writes outside that time
/// are passed on and not recorded. A record that fails, or has become large, shows in Status() and never holds
/// up a write.
class RecordingPort final : public Port {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    explicit RecordingPort(std::unique_ptr<Port> inner, Clock clock = std::chrono::steady_clock::now);
    ~RecordingPort() override;

    /// Adds a record, before the port is opened. The name ("log") goes before the path in messages.
    void Add(std::string name, std::string path, std::unique_ptr<PortRecord> form);

    bool OpenTVicPort() override;
    void WritePort(std::uint16_t port, std::uint8_t value) override;
    void CloseTVicPort() override;
    void Idle() override;
    [[nodiscard]] PortStatus Status() const override;   ///< That of the wrapped port, and how the records stand.

private:
    struct Record {
        std::string name;
        std::unique_ptr<PortRecord> form;
        std::unique_ptr<RecordFile> file;
    };

    void Start();
    void Complete();
    void Stop();

    std::unique_ptr<Port> inner_;
    Clock clock_;
    std::chrono::steady_clock::time_point start_;
    bool recording_ = false;
    std::vector<Record> records_;
    std::string text_;   ///< Text on its way to a file; kept so that a write needs no memory of its own.
};
