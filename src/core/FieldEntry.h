#pragma once

#include <optional>
#include <string>
#include <string_view>

class cPrgmBits;

/// The number in a text that was typed for a field. Blanks round it don't matter, and the field's own units may stand
/// behind it. Nothing for any other text.
std::optional<double> ParseFieldEntry(const cPrgmBits& field, std::string_view text);

/// What a field takes, as "0 to 15 kHz in steps of 1 kHz" or "one of 10, 20, 40". Empty where that can't be told, as
/// with a field whose register is missing.
std::string FieldLimits(const cPrgmBits& field);

/// After an entry: "'STEP': asked 20 kHz, stored 15 kHz; it takes 0 to 15 kHz in steps of 1 kHz". Empty if the field
/// holds what was asked, to the 15 digits that are shown.
std::string FieldEntryNote(const cPrgmBits& field, double asked);
