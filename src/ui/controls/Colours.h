#pragma once

#include <QColor>
#include <QPalette>
#include <algorithm>
#include <cmath>

/// A colour between two of the palette's, so that it suits a light theme and a dark one. Share 0 gives the first.
inline QColor Between(const QColor& one, const QColor& two, double share) {
    const auto mix = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {mix(one.red(), two.red()), mix(one.green(), two.green()), mix(one.blue(), two.blue())};
}

/// Relative luminance, 0 black to 1 white, as the accessibility guidelines for the Web reckon it.
inline double Luminance(const QColor& colour) {
    const auto linear = [](double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// How far two colours stand off from each other: 1 not at all, 21 black on white.
inline double Contrast(const QColor& one, const QColor& two) {
    const double a = Luminance(one);
    const double b = Luminance(two);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// A colour with a meaning of its own, as it is on a light background and lightened as far as it takes on a dark one.
inline QColor Legible(const QColor& colour, const QColor& background, double contrast = 4.5) {
    constexpr double kStep = 0.05;
    constexpr double kDark = 0.18;   // Middle grey.
    QColor shown = colour;
    if (Luminance(background) < kDark) {
        for (double share = 0; share < 1 && Contrast(shown, background) < contrast; share += kStep) {
            shown = Between(colour, Qt::white, share);
        }
    }
    return shown;
}

/// Of a frame that shows where the keyboard is.
inline QColor FocusColour(const QPalette& palette) {
    constexpr double kOfAShape = 3;
    return Legible(palette.color(QPalette::Active, QPalette::Highlight), palette.color(QPalette::Window), kOfAShape);
}

/// For text on a base that can't be changed now but is meant to be read. The styles' own colour for that is so pale
/// that a value can't be made out.
inline QColor PaleText(const QPalette& palette) {
    constexpr double kPaleness = 0.4;
    return Between(palette.color(QPalette::Active, QPalette::Text), palette.color(QPalette::Active, QPalette::Base),
                   kPaleness);
}
