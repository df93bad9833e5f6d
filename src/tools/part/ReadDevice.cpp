#include "tools/part/ReadDevice.h"

#include <filesystem>
#include <iostream>

#include "core/Numbers.h"
#include "settings/DeviceSetup.h"

ReadDevice::ReadDevice(const std::string& path) {
    part_.ID(std::filesystem::path(path).stem().string());
    ReadPartFile(part_, path);
}

bool ReadDevice::PrintFaults(Severity least) {
    for (const Problem& problem : part_.FileProblems().All()) {
        if (problem.severity >= least) {
            std::cerr << problem.Message() << '\n';
        }
    }
    return part_.FileProblems().Count(Severity::Error) > 0;
}

std::string ReadDevice::Word(double value) const {
    constexpr int kBitsPerDigit = 4;
    return "0x" + HexText(WholeBits(value), (part_.RegisterLength() + kBitsPerDigit - 1) / kBitsPerDigit);
}
