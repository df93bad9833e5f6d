#pragma once

#include <string>
#include <string_view>

#include "files/ProfileFile.h"

/// Replaces the contents of a file so that a kill or a crash at any moment leaves the old or the new contents:
/// written to a new file beside it, flushed to the disk, renamed over it, and the folder flushed. Owner and mode
/// of the old file are kept, and a symbolic link is followed. An empty string on success, else "cannot write", the
/// file and the system's reason; the file is then as it was. (In a file system without hard links there is one
/// exception: the new contents stand if all went well up to the flush of the folder.)
/// A file that the user may not write, or that isn't a regular one, is not replaced. An owner that can't be kept is no
/// failure. What a killed process left beside the file is removed by the next call for it.
/// With `seen`, the state of the file that the new contents were made from, a file that isn't in that state any more
/// is not replaced either: what another program has just written would be lost.
std::string ReplaceFile(const std::string& path, std::string_view contents, const FileStamp* seen = nullptr);
