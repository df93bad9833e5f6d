#pragma once

#include <QFont>

/// The face in which digits and waveforms stand under each other: the system's fixed-width one, or any other where
/// the system's choice turns out to have letters of different widths.
QFont FixedFace();
