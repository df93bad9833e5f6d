#pragma once

#include <cstdint>

class cPrgmBits;

/// So many ones from bit `low` up, as far as 64 bits hold them; none for a length of 0 or less.
std::uint64_t FieldRun(int low, int length);

/// The bits of its register that a field stands in: its own run, and the sign bit. Not for a constant.
std::uint64_t BitsOf(const cPrgmBits& field);
