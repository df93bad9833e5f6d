#include "core/cRegister.h"

#include <cmath>

#include "core/BinaryString.h"
#include "core/Numbers.h"
#include "core/cPart.h"

namespace {

constexpr int kWordBits = 64;   // Wider than any register, so that plain integers give the exact result.

/// `length` ones at the low end.
std::uint64_t Ones(int length) {
    if (length <= 0) {
        return 0;
    }
    return length >= kWordBits ? ~std::uint64_t{0} : (std::uint64_t{1} << static_cast<unsigned>(length)) - 1;
}

/// Shifted up; what leaves the word lies beyond every register.
std::uint64_t Raised(std::uint64_t bits, int position) {
    return position >= kWordBits ? 0 : bits << static_cast<unsigned>(position);
}

std::uint64_t Reversed(std::uint64_t bits, int length) {
    std::uint64_t result = 0;
    for (int k = 0; k < length && k < kWordBits; ++k) {
        result |= Raised((bits >> static_cast<unsigned>(k)) & 1U, length - 1 - k);
    }
    return result;
}

/// Whether bits there have weights that a double holds.
bool HasWeights(int position, int length) {
    constexpr int kHighestExponent = 1023;
    return position >= 0 && length > 0 && length <= kHighestExponent && position + length - 1 <= kHighestExponent;
}

std::uint64_t Protected(std::int32_t mask) {
    return static_cast<std::uint32_t>(mask);
}

}   // namespace

void cRegister::SetBits(double bits, std::int16_t position, std::int16_t bitlength, bool inv) {
    if (!HasWeights(position, bitlength) || !(bits >= 0) || std::isinf(bits)) {
        return;
    }
    std::uint64_t field = WholeBits(bits);
    if (inv) {
        field = Reversed(field, bitlength);
    }
    const std::uint64_t writable = Raised(Ones(bitlength), position) & ~Protected(mask_);
    const std::uint64_t kept = WholeBits(value_) & ~writable;
    const std::uint64_t written = Raised(field & Ones(bitlength), position) & writable;
    value_ = static_cast<double>((kept | written) & Ones(parent_.RegisterLength()));
    change_ = true;
}

double cRegister::GetBits(std::int16_t position, std::int16_t bitlength, bool inv) const {
    if (!HasWeights(position, bitlength) || position >= kWordBits) {
        return 0;
    }
    const std::uint64_t field = (WholeBits(value_) >> static_cast<unsigned>(position)) & Ones(bitlength);
    return static_cast<double>(inv ? Reversed(field, bitlength) : field);
}

void cRegister::ClrBit(std::int16_t position) {
    if (!HasWeights(position, 1)) {
        return;
    }
    value_ = static_cast<double>(WholeBits(value_) & ~(Raised(1, position) & ~Protected(mask_)));
    change_ = true;
}

void cRegister::ToggleBit(std::int16_t position) {
    if (!HasWeights(position, 1)) {
        return;
    }
    value_ = static_cast<double>(WholeBits(value_) ^ Raised(1, position));
    change_ = true;
}

std::string cRegister::RegisterString() const {
    std::string text = ToBase(value_, "01");
    const auto length = static_cast<std::size_t>(std::max<int>(0, parent_.RegisterLength()));
    if (text.size() < length) {
        text.insert(0, length - text.size(), '0');
    }
    return text;
}
