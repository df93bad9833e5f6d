#pragma once

class cPart;

/// The program's one device object, made by whoever asks for it first. Only the program itself defines it: the
/// logic and the window are handed the object that they work on.
cPart& Part();
