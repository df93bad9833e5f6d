#pragma once

class cPart;
class PartFile;

/// Reports what can't be as it was meant in the registers and bit fields that were read: names that stand for
/// nothing, fields beyond their register, fields with controls on the same bits and such that can't be reached, lists
/// too short for their bits, links to constants, names that close into circles.
void CheckRegistersAndFields(cPart& part, PartFile& file);

/// Reports where the file and what is read from it part: keys and sections that the program doesn't know, that stand
/// twice or in the wrong place, items and list entries beyond their COUNT or missing below it.
void CheckKeys(cPart& part, PartFile& file);

/// Reports start values that can't be what was meant: registers that hold no number of their width, fields that start
/// with a value that their own limits, lists and rules would refuse, registers at one address.
void CheckStartValues(cPart& part, PartFile& file);

/// Reports bits that no field covers, bits that a field covers though they are protected, and numbers of several
/// fields whose steps don't join.
void CheckCoverage(cPart& part, PartFile& file);

/// Reports lines of the port that can't do what they should: no line, or one for two jobs.
void CheckWiring(cPart& part, PartFile& file);
