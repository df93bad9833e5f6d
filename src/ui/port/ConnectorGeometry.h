#pragma once

#include <array>
#include <cstddef>

// Where everything stands in the connector diagram, in units of an eighth of the distance of two pins. The 25-way
// connector stands upright at the left, the board connector lies at the right: ten of its pins carry the data lines,
// C1 and ground, the four that the longer kind has more carry the other control lines. No two wires cross.

struct DiagramPoint {
    int x;
    int y;
};

struct DiagramBox {
    int x;
    int y;
    int width;
    int height;
};

inline constexpr int kDiagramWidth = 206;
inline constexpr int kDiagramHeight = 142;
inline constexpr int kPinSize = 4;

inline constexpr int kConnectorPins = 25;
inline constexpr int kGroundPin = 18;

/// Pin n of the 25-way connector: 1 to 13 are the long row, 14 to 25 the other, between them.
constexpr DiagramPoint PinPlace(int n) {
    constexpr int kLongRow = 13;
    constexpr int kPitch = 8;
    return n <= kLongRow ? DiagramPoint{82, 23 + kPitch * (n - 1)} : DiagramPoint{68, 27 + kPitch * (n - kLongRow - 1)};
}

/// The corners of the 25-way connector's shell: its long side is that of the long row.
inline constexpr std::array<DiagramPoint, 4> kShell{{{62, 20}, {89, 16}, {89, 126}, {62, 122}}};
inline constexpr DiagramBox kHeader{108, 99, 80, 20};

/// The pins of the board connector that no line of the port reaches: ground, and one that is free.
inline constexpr DiagramPoint kHeaderGround{172, 103};
inline constexpr DiagramPoint kHeaderFree{112, 115};

/// A wire: the bends on its way from its pin of the 25-way connector, which also names it, to the board connector.
struct DiagramWire {
    static constexpr std::size_t kMostSegments = 6;
    int pin;
    std::size_t segments;
    std::array<DiagramPoint, kMostSegments> bends;   ///< The end of each segment; the last is at the board.
    DiagramBox text;                                 ///< Room for the line's use, above the first segment.
};

inline constexpr std::array<DiagramWire, 12> kWires{{
    {1, 3, {{{190, 23}, {190, 115}, {184, 115}}}, {92, 16, 94, 6}},
    {2, 2, {{{184, 31}, {184, 103}}}, {92, 24, 88, 6}},
    {3, 3, {{{178, 39}, {178, 115}, {172, 115}}}, {92, 32, 82, 6}},
    {4, 3, {{{166, 47}, {166, 115}, {160, 115}}}, {92, 40, 70, 6}},
    {5, 2, {{{160, 55}, {160, 103}}}, {92, 48, 64, 6}},
    {6, 2, {{{148, 63}, {148, 103}}}, {92, 56, 52, 6}},
    {7, 3, {{{142, 71}, {142, 115}, {148, 115}}}, {92, 64, 46, 6}},
    {8, 2, {{{136, 79}, {136, 103}}}, {92, 72, 40, 6}},
    {9, 3, {{{130, 87}, {130, 115}, {136, 115}}}, {92, 80, 36, 6}},
    {14, 6, {{{4, 27}, {4, 4}, {198, 4}, {198, 130}, {124, 130}, {124, 115}}}, {8, 20, 52, 6}},
    {16, 5, {{{4, 43}, {4, 139}, {118, 139}, {118, 103}, {124, 103}}}, {8, 36, 52, 6}},
    {17, 6, {{{9, 51}, {9, 133}, {106, 133}, {106, 109}, {112, 109}, {112, 103}}}, {13, 44, 47, 6}},
}};

// The texts that don't change.
inline constexpr DiagramBox kConnectorLabel{20, 7, 110, 8};
inline constexpr DiagramBox kHeaderLabel{121, 133, 85, 8};
inline constexpr DiagramBox kGroundText{30, 56, 30, 6};
inline constexpr DiagramBox kHeaderGroundText{167, 92, 10, 7};
inline constexpr DiagramBox kLegend{12, 66, 49, 10};   ///< Its first row; the others follow below.
inline constexpr int kLegendText = 6;                  ///< Where the words begin in a row.
