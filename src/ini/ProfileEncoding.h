#pragma once

#include <string>
#include <string_view>

/// How the text of an INI file stands in its bytes. Inside the program all text is UTF-8.
enum class ProfileEncoding { Utf8, MarkedUtf8, Utf16LE, Utf16BE, CodePage1252 };

/// A byte order mark decides. Without one, what is valid UTF-8 is UTF-8, and anything else code page 1252.
ProfileEncoding EncodingOf(std::string_view bytes) noexcept;

/// Bytes of the byte order mark.
std::size_t MarkSize(ProfileEncoding encoding) noexcept;

/// The text of a file's bytes, without the mark. In UTF-16 an odd byte at the end is left out, and half a surrogate
/// pair comes through and goes back.
std::string DecodedText(std::string_view bytes, ProfileEncoding encoding);

/// The bytes of a file with that text, with the mark. A text that the encoding can't hold, or that wouldn't be read in
/// it again, comes in UTF-8 with a mark.
std::string EncodedText(std::string_view text, ProfileEncoding encoding);
