#include "ui/bits/BitRow.h"

#include <algorithm>
#include <cstdint>

#include "core/Numbers.h"

bool BitRow::IsControl(int position) const {
    return BitAt(position) < control_;
}

int BitRow::BitAt(int position) const {
    const int place = position / kStep;
    return order_ == Order::HighFirst ? bits_ - 1 - place : place;
}

int BitRow::Left(int position) const {
    const int first = order_ == Order::HighFirst ? 0 : kStep * control_;
    return position > first ? position - kStep : position;
}

int BitRow::Right(int position) const {
    const int last = kStep * (bits_ - 1 - (order_ == Order::HighFirst ? control_ : 0));
    return position < last ? position + kStep : position;
}

int BitRow::Higher(int position) const {
    if (order_ == Order::HighFirst) {
        return std::max(0, position - kStep);
    }
    return position + kStep < Length() ? position + kStep : position;
}

/// A text with `digit(bit)` in the place of each bit.
template <class Digit>
QString BitRow::Built(Digit digit) const {
    QString text(Length(), QLatin1Char(' '));
    for (int position = 0; position < Length(); position += kStep) {
        text[position] = QLatin1Char(static_cast<char>('0' + digit(BitAt(position))));
    }
    return text;
}

QString BitRow::Text(double value) const {
    constexpr int kWordBits = 64;
    const std::uint64_t bits = WholeBits(value);
    return Built([bits](int bit) { return bit < kWordBits ? static_cast<int>(bits >> bit & 1U) : 0; });
}

QString BitRow::Ones() const {
    return Built([](int bit) { return bit % 10; });
}

QString BitRow::Tens() const {
    return Built([](int bit) { return bit / 10 % 10; });
}

std::string BitRow::Digits(const QString& text) const {
    std::string digits = text.toStdString();
    std::erase(digits, ' ');
    if (order_ == Order::LowFirst) {
        std::reverse(digits.begin(), digits.end());
    }
    return digits;
}
