#pragma once

#include <string>

class cPart;

/// The text of the burst list: of each command the Description, or with `vectors` the Pattern, and a CRLF. Waveforms
/// have three lines for a command.
std::string BurstText(cPart& part, bool vectors);
