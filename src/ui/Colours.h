#pragma once

#include <QColor>
#include <QPalette>
#include <cmath>

/// A colour between two of the palette's, so that it suits a light theme and a dark one. Share 0 gives the first.
inline QColor Between(const QColor& one, const QColor& two, double share) {
    const auto mix = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {mix(one.red(), two.red()), mix(one.green(), two.green()), mix(one.blue(), two.blue())};
}

/// For text on a base that can't be changed now but is meant to be read. The styles' own colour for that is so pale
/// that a value can't be made out.
inline QColor PaleText(const QPalette& palette) {
    constexpr double kPaleness = 0.4;
    return Between(palette.color(QPalette::Active, QPalette::Text), palette.color(QPalette::Active, QPalette::Base),
                   kPaleness);
}
