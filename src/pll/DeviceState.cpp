#include "pll/DeviceState.h"

#include "core/cPart.h"
#include "pll/cPLL.h"

std::vector<double> DeviceState(cPart& part) {
    std::vector<double> state;
    for (const cRegister& one : part.Registers()) {
        state.push_back(one.Value());
    }
    for (const cPLL& pll : part.PLLs()) {
        state.push_back(pll.XtalFrequency());
    }
    state.push_back(part.OutputPinValue());
    return state;
}
