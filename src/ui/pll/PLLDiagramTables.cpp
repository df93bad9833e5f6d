#include "ui/pll/PLLDiagramTables.h"

// The signal runs from the left: the R path on top, the N path below, both into the phase detector between them, the
// loop out to the right, back along the bottom. A box for a number is 34 units wide and 6 high, a line of text 4 high.
// All is as close as that allows: on a screen of 1920 by 1080 at twice the usual size the whole loop is to be seen.

namespace {

using Arrow = DiagramLine::Arrow;
using Figure = DiagramShape::Figure;

// The level of each path, and what stands on it.
constexpr int kRPath = 13;
constexpr int kDetector = 28;
constexpr int kNPath = 58;
constexpr int kFeedback = 80;
constexpr int kUpperInput = kDetector - 3;
constexpr int kLowerInput = kDetector + 3;

constexpr int kOscillatorRight = 25;
constexpr int kCorner = 30;   ///< Where the feedback turns up to the N path.
constexpr int kPrescaler = 50;
constexpr int kPrescalerRight = 68;
constexpr int kCounter = 73;
constexpr int kCounterRight = 112;
constexpr int kTurn = 121;   ///< Where both paths turn to the phase detector.
constexpr int kPolarity = 126;
constexpr int kGain = 155;
constexpr int kState = 182;
constexpr int kFilter = 214;
constexpr int kFilterRight = 230;
constexpr int kReturn = 235;   ///< Where the filter's output turns down to the VCO.
constexpr int kVCO = 216;
constexpr int kVCORight = 228;

constexpr int kBoxWidth = 34;
constexpr int kBoxHeight = 6;
constexpr int kSpinnerWidth = 5;

constexpr DiagramPlace Box(int x, int middle) {
    return {x, middle - kBoxHeight / 2, kBoxWidth, kBoxHeight};
}
constexpr DiagramPlace SpinnerBy(int boxX, int middle) {
    return {boxX + kBoxWidth, middle - kBoxHeight / 2, kSpinnerWidth, kBoxHeight};
}
constexpr DiagramPlace Inside(const DiagramPlace& shape) {
    return {shape.x + 1, shape.y + 1, shape.w - 2, shape.h - 2};
}

constexpr DiagramPlace kOscillatorCircle{13, kRPath - 6, 12, 12};
constexpr DiagramPlace kVCOCircle{kVCO, kFeedback - 6, 12, 12};
constexpr DiagramPlace kRPrescalerBox{kPrescaler, kRPath - 4, 18, 8};
constexpr DiagramPlace kNPrescalerBox{kPrescaler, kNPath - 4, 18, 8};
constexpr DiagramPlace kPolarityBox{kPolarity, kDetector - 6, 24, 12};
constexpr DiagramPlace kGainBox{kGain, kDetector - 6, 22, 12};
constexpr DiagramPlace kStateBox{kState, kDetector - 6, 22, 12};
constexpr DiagramPlace kFilterBox{kFilter, kDetector - 6, 16, 12};
constexpr DiagramPlace kOutline{47, 1, 160, 67};

constexpr int kCheckBox = 90;
constexpr DiagramPlace CheckBox(int place) {
    return {6 + place * (kBoxWidth + 3), kCheckBox, kBoxWidth, kBoxHeight};
}
constexpr DiagramPlace CheckLabel(int place) {
    return {6 + place * (kBoxWidth + 3), kCheckBox - 5, kBoxWidth, 4};
}

}   // namespace

const DiagramPlace kDiagramArea{0, 0, 241, 99};

const std::array<DiagramLineRow, kDiagramLines> kLineRows{{
    {"Reference oscillator to R path", kOscillatorRight, kRPath, kPrescaler, kRPath, Arrow::AtEnd},
    {"R prescaler to R counter", kPrescalerRight, kRPath, kCounter, kRPath, Arrow::AtEnd},
    {"R counter to phase detector, out", kCounterRight, kRPath, kTurn, kRPath},
    {"R counter to phase detector, down", kTurn, kRPath, kTurn, kUpperInput},
    {"R counter to phase detector, in", kTurn, kUpperInput, kPolarity, kUpperInput, Arrow::AtEnd},
    {"Phase detector to charge pump gain", kPolarity + 24, kDetector, kGain, kDetector, Arrow::AtEnd},
    {"Charge pump gain to charge pump state", kGain + 22, kDetector, kState, kDetector, Arrow::AtEnd},
    {"Charge pump state to loop filter", kState + 22, kDetector, kFilter, kDetector, Arrow::AtEnd},
    {"Loop filter to VCO, out", kFilterRight, kDetector, kReturn, kDetector},
    {"Loop filter to VCO, down", kReturn, kDetector, kReturn, kFeedback},
    {"Loop filter to VCO, in", kReturn, kFeedback, kVCORight, kFeedback, Arrow::AtEnd},
    {"VCO to feedback corner, out", kVCO, kFeedback, kCorner, kFeedback},
    {"VCO to feedback corner, up", kCorner, kFeedback, kCorner, kNPath},
    {"Feedback to N path", kPrescaler, kNPath, kCorner, kNPath, Arrow::AtStart},
    {"N prescaler to N counter", kPrescalerRight, kNPath, kCounter, kNPath, Arrow::AtEnd},
    {"N counter to phase detector, out", kCounterRight, kNPath, kTurn, kNPath},
    {"N counter to phase detector, up", kTurn, kNPath, kTurn, kLowerInput},
    {"N counter to phase detector, in", kTurn, kLowerInput, kPolarity, kLowerInput, Arrow::AtEnd},
    {"Fraction bar", kPolarity, kNPath, kPolarity + kBoxWidth + kSpinnerWidth, kNPath},
}};

const std::array<DiagramShapeRow, kDiagramShapes> kShapeRows{{
    {"Reference oscillator", kOscillatorCircle, Figure::Circle},
    {"VCO", kVCOCircle, Figure::Circle},
    {"R prescaler", kRPrescalerBox, Figure::Box},
    {"N prescaler", kNPrescalerBox, Figure::Box},
    {"Phase detector", kPolarityBox, Figure::Box},
    {"Charge pump gain", kGainBox, Figure::Box},
    {"Charge pump state", kStateBox, Figure::Box},
    {"Loop filter", kFilterBox, Figure::RoundBox},
    {"Device", kOutline, Figure::Outline},
}};

const std::array<DiagramLabelRow, kDiagramLabels> kLabelRows{{
    {"MHz", {37, 22, 9, kBoxHeight}, LabelLook::Beside},
    {"OSCin", {31, kRPath - 5, 14, 4}, LabelLook::Beside, "Input of the device for the reference"},
    {"Reference Oscillator", {2, 2, 34, 4}, LabelLook::Title},
    {"~", kOscillatorCircle, LabelLook::Sign},
    {"~", kVCOCircle, LabelLook::Sign},
    {"Fin", {34, kNPath - 5, 10, 4}, LabelLook::Beside, "Input of the device for the VCO's signal"},
    {"Prescaler", {kPrescaler, kRPath - 9, 18, 4}, LabelLook::Title},
    {"Prescaler", {kPrescaler, kNPath - 9, 18, 4}, LabelLook::Title},
    {"R Counter", {kCounter, kRPath - 9, kBoxWidth, 4}, LabelLook::Beside},
    {"N Counter", {kCounter, kNPath - 9, kBoxWidth, 4}, LabelLook::Beside},
    {"Phase Detector Polarity", {kPolarity, kDetector + 7, 24, 8}, LabelLook::Title},
    {"Charge Pump Gain", {kGain, kDetector + 7, 22, 8}, LabelLook::Title},
    {"Charge Pump State", {kState, kDetector + 7, 22, 8}, LabelLook::Title},
    {"PLL", {kOutline.x, kOutline.y + kOutline.h + 1, kOutline.w, 4}, LabelLook::Device},
    {"Do", {kState + 26, kDetector - 5, 6, 4}, LabelLook::Beside},
    {"MHz", {232, 89, 9, kBoxHeight}, LabelLook::Beside},
    {"VCO", {kVCO - 4, kFeedback - 11, 20, 4}, LabelLook::Title},
    {"Loop Filter", {kFilter - 4, kDetector - 11, 24, 4}, LabelLook::Title},
    {"Z(s)", kFilterBox, LabelLook::Title},
    {"Phase Detector Freq", {kCounter, kDetector - 9, kBoxWidth + kSpinnerWidth, 4}, LabelLook::Beside},
    {"kHz", {kCounterRight + 1, kDetector - 3, 7, kBoxHeight}, LabelLook::Beside},
    {"Fractional Compensation",
     {kPolarity, kNPath - 13, 44, 4},
     LabelLook::Beside,
     "Numerator over denominator: the part of N behind its point"},
}};

const std::array<DiagramControlRow, 7> kBoxRows{{
    {"txtOsc", "Reference oscillator frequency, MHz", "10", Box(2, 25)},
    {"txtVCO", "VCO frequency, MHz", "1000", Box(197, 92)},
    {"txtFpd", "Phase detector frequency, kHz", "100", Box(kCounter, kDetector)},
    {"txtRCounter", "R counter", "10000", Box(kCounter, kRPath)},
    {"txtNCounter", "N counter", "10000", Box(kCounter, kNPath)},
    {"txtFractNum", "Fractional numerator", "00", Box(kPolarity, kNPath - 5)},
    {"txtFractDen", "Fractional denominator", "00", Box(kPolarity, kNPath + 5)},
}};

const std::array<DiagramControlRow, 5> kSpinnerRows{{
    {"spnRCounter", "R counter", "One count of R", SpinnerBy(kCounter, kRPath)},
    {"SpnFpd", "phase detector frequency", "One count of R: up raises the frequency", SpinnerBy(kCounter, kDetector)},
    {"spnNCounter", "N counter", "One phase detector frequency at the VCO", SpinnerBy(kCounter, kNPath)},
    {"SpnFractNum", "fractional numerator", "One count of the numerator", SpinnerBy(kPolarity, kNPath - 5)},
    {"spnFractDen", "fractional denominator", "One count of the denominator", SpinnerBy(kPolarity, kNPath + 5)},
}};

const std::array<DiagramControlRow, 5> kBlockRows{{
    {"lblRPrescale", "R prescaler", "128", Inside(kRPrescalerBox)},
    {"lblNPrescale", "N prescaler", "128", Inside(kNPrescalerBox)},
    {"lblPDPol", "Phase detector polarity", "+", Inside(kPolarityBox)},
    {"lblCPGain", "Charge pump gain", "HIGH", Inside(kGainBox)},
    {"lblCPState", "Charge pump state", "Tristate", Inside(kStateBox)},
}};

const std::array<DiagramControlRow, kCheckValues> kCheckBoxRows{{
    {"txtAvalue", "A value of the prescaler check", "", CheckBox(2)},
    {"txtBvalue", "B value of the prescaler check", "", CheckBox(1)},
    {"txtCvalue", "C value of the prescaler check", "", CheckBox(0)},
}};

const std::array<DiagramControlRow, kCheckValues> kCheckLabelRows{{
    {"lblAvalue", "", "A Value", CheckLabel(2)},
    {"lblBvalue", "", "B Value", CheckLabel(1)},
    {"lblCvalue", "", "C Value", CheckLabel(0)},
}};

const DiagramShapeRow kCheckFrameRow{"Prescaler check", {3, kCheckBox - 7, 114, 15}, Figure::Frame};
