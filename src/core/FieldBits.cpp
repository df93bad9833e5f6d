#include "core/FieldBits.h"

#include "core/cPrgmBits.h"

std::uint64_t FieldRun(int low, int length) {
    std::uint64_t bits = 0;
    for (int bit = low < 0 ? 0 : low; bit < low + length && bit < 64; ++bit) {
        bits |= std::uint64_t{1} << static_cast<unsigned>(bit);
    }
    return bits;
}

std::uint64_t BitsOf(const cPrgmBits& field) {
    return FieldRun(field.Position(), field.Length()) | (field.Polarity() ? FieldRun(field.PolarityPosition(), 1) : 0);
}
