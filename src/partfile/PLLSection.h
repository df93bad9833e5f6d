#pragma once

class cPart;
class PartFile;

/// Makes the PLLs of a device from the section PLLS of its part file. Registers and bit fields exist already.
void ReadPLLs(cPart& part, PartFile& file);

/// Reports PLLs that can't work as described: fields that don't exist, a numerator without a denominator.
void CheckPLLs(cPart& part, PartFile& file);

/// Reports PLLs whose frequencies can't be computed from the start values, or mean nothing: a counter or denominator
/// at 0, lists of words for counters.
void CheckPLLStarts(cPart& part, PartFile& file);
