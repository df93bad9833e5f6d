#pragma once

#include <string>
#include <string_view>

/// The part file that the bytes describe: registers, fields that name each other, lists of every form, constants, PLLs
/// over the fields, pins and modes. Names mostly stand for something, and numbers mostly fit, but not always.
std::string DescribedPartFile(std::string_view bytes);
