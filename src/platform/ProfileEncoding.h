#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// How the characters of an INI file stand in its bytes. Inside the program a character is one byte of code page
/// 1252, so that the n-th character is always the n-th unit after the byte order mark.
struct ProfileEncoding {
    std::size_t markSize = 0;   ///< Bytes of the byte order mark, 0 without one.
    std::size_t unitSize = 1;   ///< Bytes of a character: 2 in UTF-16 LE, else 1.

    /// Told by the byte order mark. Anything without one, UTF-8 too, is taken byte by byte.
    static ProfileEncoding Of(std::string_view bytes) noexcept;
};

/// Code page 1252 from UTF-16 LE; "?" for what it doesn't have. An odd byte at the end is left out.
std::string FromUtf16(std::string_view bytes);
std::string ToUtf16(std::string_view text);
