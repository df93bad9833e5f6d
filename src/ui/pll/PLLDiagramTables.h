#pragma once

#include <array>
#include <cstddef>

#include "pll/PLLDiagram.h"
#include "ui/pll/PLLDiagramItems.h"

// The block diagram of a PLL as data: what stands where, in units of its grid. The grid grows with the font, see
// PLLDiagramView. Rows of lines, shapes and labels stand in the order of their numbers.

struct DiagramPlace {
    int x;
    int y;
    int w;
    int h;
};

struct DiagramLineRow {
    const char* name;   ///< In words.
    int x1;
    int y1;
    int x2;
    int y2;
    DiagramLine::Arrow arrow = DiagramLine::Arrow::None;
};

struct DiagramShapeRow {
    const char* name;
    DiagramPlace at;
    DiagramShape::Figure figure;
};

enum class LabelLook : unsigned char {
    Title,    ///< Centred, on as many lines as its place has.
    Beside,   ///< From the left: a unit beside its box, the name of a pin on its line, the title of a box.
    Sign,     ///< Large, to fill a circle.
    Device    ///< Bold, centred.
};

struct DiagramLabelRow {
    const char* text;
    DiagramPlace at;
    LabelLook look;
    const char* tip = "";
};

struct DiagramControlRow {
    const char* name;    ///< Of the control array.
    const char* words;   ///< What it is, in words.
    const char* text;    ///< At the start.
    DiagramPlace at;
};

constexpr std::size_t kCheckValues = 3;

// Members that show only with the block that they belong to.
struct DiagramMembers {
    static constexpr std::size_t kLineToR = 0;
    static constexpr std::size_t kLineToN = 13;
    static constexpr std::size_t kFractionBar = 18;
    static constexpr std::size_t kShapeRPrescaler = 2;
    static constexpr std::size_t kShapeNPrescaler = 3;
    static constexpr std::size_t kLabelRPrescaler = 6;
    static constexpr std::size_t kLabelNPrescaler = 7;
    static constexpr std::size_t kLabelDo = 14;
    static constexpr std::size_t kLabelFraction = 21;
};

extern const DiagramPlace kDiagramArea;
extern const std::array<DiagramLineRow, kDiagramLines> kLineRows;
extern const std::array<DiagramShapeRow, kDiagramShapes> kShapeRows;
extern const std::array<DiagramLabelRow, kDiagramLabels> kLabelRows;
extern const std::array<DiagramControlRow, 7> kBoxRows;                     ///< In the order of EntryBox.
extern const std::array<DiagramControlRow, 5> kSpinnerRows;                 ///< In the order of the spinners in pll.
extern const std::array<DiagramControlRow, 5> kBlockRows;                   ///< In the order of DiagramBlock.
extern const std::array<DiagramControlRow, kCheckValues> kCheckBoxRows;     ///< A, B, C.
extern const std::array<DiagramControlRow, kCheckValues> kCheckLabelRows;   ///< A, B, C.
extern const DiagramShapeRow kCheckFrameRow;
