#include "core/DeviceDisplay.h"
#include "core/cPart.h"
#include "pll/PLLDiagram.h"
#include "pll/cPLL.h"

// The device's operations that make its PLLs and bind each to its fields and its page. The index of a PLL is its
// position counted from 0.

void cPart::AddPLL(const std::string& name, const std::string& nBits, const std::string& rBits) {
    auto made = std::make_unique<cPLL>(*this);
    made->ID(name);
    made->NCounter(nBits);
    made->RCounter(rBits);
    plls_.Add(name, std::move(made));
    lines_ = kDiagramLines;
    shapes_ = kDiagramShapes;
    labels_ = kDiagramLabels;
    display_->AddPLLPage(plls_.Count() - 1, name);
}

void cPart::AddPLLTab(const std::string& name, std::int16_t /*lines*/, std::int16_t /*shapes*/,
                      std::int16_t /*labels*/) {
    display_->AddFreePLLPage(name);
}

void cPart::SetupPLL(const std::string& polarity, const std::string& gain, const std::string& state,
                     const std::string& nPrescaler, const std::string& rPrescaler) {
    static_cast<void>(plls_.At(plls_.Count()));   // Fails without a PLL.
    display_->BindPLLBlocks(plls_.Count() - 1, {polarity, gain, state, nPrescaler, rPrescaler});
}

void cPart::SetupPLLFraction(const std::string& name, const std::string& numerator, const std::string& denominator) {
    cPLL& pll = plls_.At(name);
    if (!numerator.empty()) {
        pll.Numerator(numerator);
        pll.Denominator(denominator);
    }
    display_->BindFraction(plls_.PositionOf(name) - 1, numerator, numerator.empty() ? numerator : denominator);
}

void cPart::SetupFraction(const std::string& numerator, const std::string& denominator) {
    cPLL& pll = plls_.At(plls_.Count());
    display_->BindFraction(plls_.Count() - 1, numerator, numerator.empty() ? numerator : denominator);
    if (!numerator.empty()) {
        pll.Numerator(numerator);
        pll.Denominator(denominator);
    }
}
