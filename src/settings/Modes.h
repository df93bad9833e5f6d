#pragma once

#include <string>
#include <vector>

class cPart;
class PartFile;

// Both write into the device's own part file: modes, named snapshots of registers, references and pins, and the
// device settings as they stand when the user leaves a device. Each write is one replacement of the file.

/// The frequencies shown in the reference boxes, in the order of the PLLs: what is stored is the text on the screen, or
/// the PLL's reference where that text is no frequency.
using ReferenceTexts = std::vector<std::string>;

/// Makes a menu entry for each mode of the part file.
void ReadModes(cPart& part, PartFile& file);

/// Reports modes that RestoreMode would refuse.
void CheckModes(cPart& part, PartFile& file);

/// Stores the device's present state as a new mode and returns its number. `error` is empty, or tells why the
/// file couldn't be written; then there is no new mode.
int AddMode(cPart& part, const std::string& appPath, const std::string& name, const ReferenceTexts& references,
            std::string& error);

/// Gives the device the state of a mode, counted from 0, and redraws. Nothing is loaded. LookupError for a mode that
/// the file doesn't have, ConversionError for one whose numbers don't convert; nothing is changed then.
void RestoreMode(cPart& part, const std::string& appPath, int index);

/// Makes the present port lines, pins, registers and references the device's defaults. A value of the file that
/// couldn't be read stays as it is until it is changed here, and a device without a part file gets none. Empty, or why
/// it failed.
std::string SaveDeviceSettings(cPart& part, const std::string& appPath, const ReferenceTexts& references);
