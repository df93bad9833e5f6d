#include "Child.h"

#include <sys/prctl.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace {

constexpr int kPatience = 20000;   // milliseconds

}   // namespace

Child::Child(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment) {
    process_.setProcessEnvironment(environment);
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process_.start(program, arguments);
    if (!process_.waitForStarted(kPatience)) {
        throw std::runtime_error(program.toStdString() + " can't be started: " + process_.errorString().toStdString());
    }
}

Child::~Child() {
    if (process_.state() != QProcess::NotRunning) {
        process_.terminate();
        if (!process_.waitForFinished(kPatience)) {
            process_.kill();
            process_.waitForFinished(kPatience);
        }
    }
}

QString Child::FirstLine() {
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(kPatience)) {
            throw std::runtime_error(process_.program().toStdString() + " doesn't say that it serves");
        }
    }
    return QString::fromLocal8Bit(process_.readLine()).trimmed();
}

double Child::Memory() const {
    std::ifstream status("/proc/" + std::to_string(process_.processId()) + "/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with("VmRSS:")) {
            return std::stod(line.substr(line.find(':') + 1));
        }
    }
    throw std::runtime_error(process_.program().toStdString() + " is gone");
}

void Child::WaitForEnd() {
    if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(kPatience)) {
        throw std::runtime_error(process_.program().toStdString() + " doesn't end");
    }
}

void WaitFor(const std::string& what, const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kPatience);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("waited in vain for " + what);
        }
        constexpr double kBetween = 0.0005;
        Sleep(kBetween);
    }
}

void Sleep(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}
