#include <algorithm>
#include <cmath>
#include <numeric>

#include "core/FieldVisit.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "core/cPrgmBits.h"

// What a change of a field does beyond its bits: steps, limits, and the linked, mirror and greater fields.

double cPrgmBits::PlainMaximum() const {
    return (std::ldexp(1.0, std::max<int>(0, length_)) - 1) * EffectiveStepValue() + zeroValue_;
}

double cPrgmBits::Maximum() const {
    const Visit visit(*this, Visit::Limit);
    if (!visit) {
        return 0;
    }
    if (HasList()) {
        const std::vector<double> numbers = ListNumbers();
        return std::accumulate(numbers.begin(), numbers.end(), 0.0, [](double a, double b) { return std::max(a, b); });
    }
    return PlainMaximum() + (linkedBits_.empty() ? 0 : Other(linkedBits_).Maximum());
}

std::int32_t cPrgmBits::Minimum() const {
    return polarity_ ? RoundToLong(-Maximum()) : 0;
}

std::int16_t cPrgmBits::TotalLength() const {
    const Visit visit(*this, Visit::Width);
    if (!visit) {
        return 0;
    }
    const int linked = linkedBits_.empty() ? 0 : Other(linkedBits_).TotalLength();
    return RoundToShort(length_ + linked);
}

/// v, or the value of the greater field if v lies on the wrong side of it.
double cPrgmBits::ApplyGreaterRule(double v) const {
    if (greaterBitName_.empty()) {
        return v;
    }
    const double limit = Other(greaterBitName_).Value();
    return greaterEqual_ ? std::max(v, limit) : std::min(v, limit);
}

/// The end of every step: the mirror makes the same step, then the greater rule corrects the new value.
void cPrgmBits::FollowUp(void (cPrgmBits::*operation)()) {
    if (!mirrorBits_.empty()) {
        (Other(mirrorBits_).*operation)();
    }
    if (!greaterBitName_.empty()) {
        const double value = Value();
        const double allowed = ApplyGreaterRule(value);
        if (allowed != value) {
            Value(allowed);
        }
    }
}

/// To the next code of the list in that direction, round its ends; nothing if the bits hold none of its codes.
void cPrgmBits::StepCode(Direction direction) {
    const auto at = CodeIndex(BitValue());
    if (!at) {
        return;
    }
    const std::size_t count = strings_.size();
    if (const auto code = CodeAt((*at + (direction == Direction::Up ? 1 : count - 1)) % count)) {
        BitValue(*code);
    }
}

/// One count in a signed or unsigned number kept as magnitude and sign: zero is passed once in each direction.
void cPrgmBits::StepCount(Direction direction) {
    const double bits = BitValue();
    const bool positive = PolarityValue() > 0;
    if (direction == Direction::Up) {
        if (positive && bits > 0) {
            BitValue(bits + 1);
        } else if (bits == 0) {
            SetPositive();
            BitValue(1);
        } else if (polarity_) {
            BitValue(bits - 1);
        }
    } else if (positive && bits >= 1) {
        BitValue(bits - 1);
    } else if (polarity_) {
        if (bits == 0) {
            SetNegative();
        }
        BitValue(bits + 1);
    }
}

void cPrgmBits::Step(Direction direction) {
    const Visit visit(*this, direction == Direction::Up ? Visit::Up : Visit::Down);
    if (!visit || position_ < 0) {
        return;
    }
    if (IsCoded()) {
        StepCode(direction);
    } else {
        StepCount(direction);
    }
    FollowUp(direction == Direction::Up ? &cPrgmBits::Increment : &cPrgmBits::Decrement);
}

void cPrgmBits::Increment() {
    Step(Direction::Up);
}

void cPrgmBits::Decrement() {
    Step(Direction::Down);
}

void cPrgmBits::ToggleBit() {
    const Visit visit(*this, Visit::Toggle);
    if (!visit || position_ < 0) {
        return;
    }
    if (length_ == 1) {
        Written().ToggleBit(position_);
    } else if (IsCoded()) {
        StepCode(Direction::Up);
    } else {
        BitValue(BitValue() + 1);
    }
    FollowUp(&cPrgmBits::ToggleBit);
}
