#include "ports/RecordingPort.h"

#include <utility>

static constexpr std::uint64_t kMegabyte = 1'000'000;
static constexpr std::uint64_t kLargeRecord = 100 * kMegabyte;   // From here on the user is told the size.

static std::string SizeText(std::uint64_t bytes) {
    const std::uint64_t megabytes = bytes / kMegabyte;
    return megabytes < 1000 ? std::to_string(megabytes) + " MB"
                            : std::to_string(megabytes / 1000) + "." + std::to_string(megabytes % 1000 / 100) + " GB";
}

static void TellSize(const std::string& name, const RecordFile& file, PortStatus& status) {
    const std::string size = SizeText(file.Bytes());
    status.summary += ", " + name + " " + size;
    status.story += "\nIt has grown to " + size +
                    " and goes on growing with each write. To do without it, empty its name in section [PORT] of "
                    "tarnwick.ini, then start again.";
}

static void TellProblem(const std::string& title, const RecordFile& file, PortStatus& status) {
    const std::string fault = title + ": " + file.Problem() + ", " + std::to_string(file.Lost()) + " writes lost";
    status.summary += "; " + fault;
    status.story += "\nRecording ended, output did not. " + fault +
                    ".\nFree the disk or correct the file name in section [PORT] of tarnwick.ini, then start again.";
}

RecordingPort::RecordingPort(std::unique_ptr<Port> inner, Clock clock)
    : inner_(std::move(inner)), clock_(std::move(clock)) {}

RecordingPort::~RecordingPort() {
    Stop();
}

void RecordingPort::Add(std::string name, std::string path, std::unique_ptr<PortRecord> form) {
    records_.push_back({std::move(name), std::move(form), std::make_unique<RecordFile>(std::move(path))});
}

bool RecordingPort::OpenTVicPort() {
    Start();
    return inner_->OpenTVicPort();
}

void RecordingPort::WritePort(std::uint16_t port, std::uint8_t value) {
    // The line first: recording must not delay the level that it records.
    inner_->WritePort(port, value);
    if (!recording_)
        return;
    const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(clock_() - start_).count();
    for (Record& record : records_) {
        text_.clear();
        record.form->Write(static_cast<std::uint64_t>(elapsed), port, value, text_);
        record.file->Append(text_, 1);
    }
}

void RecordingPort::CloseTVicPort() {
    inner_->CloseTVicPort();
    Stop();
}

void RecordingPort::Idle() {
    inner_->Idle();
    Complete();
}

PortStatus RecordingPort::Status() const {
    PortStatus status = inner_->Status();
    for (const auto& [name, form, file] : records_) {
        const std::string title = name + " " + file->Path();
        status.story += "\nThe " + title + " holds " + std::to_string(file->Entries()) + " writes.";
        if (!file->Problem().empty())
            TellProblem(title, *file, status);
        else if (file->Bytes() >= kLargeRecord)
            TellSize(name, *file, status);
    }
    return status;
}

void RecordingPort::Start() {
    start_ = clock_();
    recording_ = true;
    for (Record& record : records_) {
        record.file->Open();
        text_.clear();
        record.form->Start(text_);
        record.file->Append(text_, 0);
    }
}

void RecordingPort::Complete() {
    if (!recording_)
        return;
    for (Record& record : records_) {
        text_.clear();
        record.form->Complete(text_);
        record.file->Append(text_, 0);
        record.file->Flush();
    }
}

void RecordingPort::Stop() {
    Complete();
    recording_ = false;
    for (Record& record : records_)
        record.file->Close();
}
