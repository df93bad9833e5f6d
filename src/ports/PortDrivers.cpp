#include "ports/PortDrivers.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <utility>

#include "ports/FaultPort.h"
#include "ports/ParPort.h"
#include "ports/PortLog.h"
#include "ports/PortTrace.h"
#include "ports/RawIoPort.h"
#include "ports/RecordingPort.h"
#include "ports/SimulatedPort.h"

struct PortDriver {
    std::string_view name;
    std::string_view defaultDevice;
    MadePort (*make)(const PortSettings& settings);   ///< Is given the device that holds, default or not.
};

static MadePort MakeSimulated(const PortSettings&) {
    return {std::make_unique<SimulatedPort>(), ""};
}

static MadePort MakeParPort(const PortSettings& settings) {
    return {std::make_unique<ParPort>(settings.device), ""};
}

static MadePort MakeRawIo(const PortSettings&) {
    return {std::make_unique<RawIoPort>(), ""};
}

static MadePort MakeFault(const PortSettings& settings);

static constexpr PortDriver drivers[] = {
    {"simulated", "", MakeSimulated},
    {"parport", "/dev/parport0", MakeParPort},
    {"rawio", "", MakeRawIo},
    {"fault", "", MakeFault},
};

static MadePort MakeDriver(PortSettings settings) {
    const auto* driver = std::ranges::find(drivers, settings.driver, &PortDriver::name);
    if (driver == std::end(drivers))
        return {std::make_unique<SimulatedPort>(), "unknown port driver '" + settings.driver +
                                                       "' in tarnwick.ini: known are " + KnownDrivers() +
                                                       "; the simulated port is used"};
    if (settings.device.empty())
        settings.device = driver->defaultDevice;
    return driver->make(settings);
}

static MadePort MakeFault(const PortSettings& settings) {
    PortSettings inner = settings;
    inner.driver = settings.backend;
    MadePort made;
    if (settings.backend == settings.driver) {
        inner.driver = "simulated";
        made.message = "BACKEND in tarnwick.ini can't be '" + settings.driver + "' itself; the simulated port is used";
    }
    MadePort wrapped = MakeDriver(std::move(inner));
    made.message += wrapped.message;
    made.port = std::make_unique<FaultPort>(std::move(wrapped.port), settings.seed);
    return made;
}

static std::string RecordPath(const std::string& appPath, const std::string& file) {
    return (std::filesystem::path(appPath) / file).lexically_normal().string();
}

MadePort MakePort(const PortSettings& settings, const std::string& appPath) {
    MadePort made = MakeDriver(settings);
    if (settings.log.empty() && settings.trace.empty())
        return made;
    const std::string log = RecordPath(appPath, settings.log);
    const std::string trace = RecordPath(appPath, settings.trace);
    auto recording = std::make_unique<RecordingPort>(std::move(made.port));
    if (!settings.log.empty())
        recording->Add("log", log, std::make_unique<PortLog>());
    if (!settings.log.empty() && trace == log)
        made.message += (made.message.empty() ? "" : "; ") + ("LOG and TRACE in tarnwick.ini both name '" + log) +
                        "': no trace is made";
    else if (!settings.trace.empty())
        recording->Add("trace", trace, std::make_unique<PortTrace>());
    made.port = std::move(recording);
    return made;
}

std::string KnownDrivers() {
    std::string names;
    for (const PortDriver& driver : drivers)
        names += (names.empty() ? "" : ", ") + std::string(driver.name);
    return names;
}
