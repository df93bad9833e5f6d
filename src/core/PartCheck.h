#pragma once

class cPart;
class PartFile;

/// Reports what can't be as it was meant in the registers and bit fields that were read: names that stand for
/// nothing, fields beyond their register, fields with controls on the same bits, lists too short for their bits,
/// names that close into circles.
void CheckRegistersAndFields(cPart& part, PartFile& file);
