#pragma once

#include <QStringList>
#include <random>

/// What the robot throws its dice with: the same seed, the same steps.
class RobotRandom {
public:
    explicit RobotRandom(unsigned seed) : random_(seed) {}

    [[nodiscard]] int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

    /// One of them; there must be one.
    template <class List>
    [[nodiscard]] const auto& Of(const List& list) {
        return list[static_cast<typename List::size_type>(Below(static_cast<int>(std::size(list))))];
    }

    /// A text for a number box: mostly a number.
    [[nodiscard]] QString Number() {
        static const QStringList kTexts{"0",    "-1",  "1e300", "abc", "",     "12.5", "4294967296", "1000.06",
                                        "1e-9", "&H3", "65536", "100", "1000", "10",   "0.1",        "999999999999999"};
        return Below(2) == 0 ? QString::number(Below(100000)) : kTexts[Below(static_cast<int>(kTexts.size()))];
    }

private:
    std::mt19937 random_;
};
