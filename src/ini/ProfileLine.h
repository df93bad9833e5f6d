#pragma once

#include <string_view>

/// A line of an INI file, cut into its parts. They are views into the text that it was cut from.
struct ProfileLine {
    enum class Kind {
        Header,   ///< "[name]"; the name ends at the first "]", or at the end of the line.
        Key,      ///< "name=value", cut at the first "=".
        Word,     ///< Without "=": reads as no key, but it stands before a later key of its name.
        Other     ///< An empty line, or a comment, which starts with ";".
    };

    explicit ProfileLine(std::string_view lineText);

    std::string_view text;    ///< The line without its end.
    std::string_view name;    ///< Without blanks around it.
    std::string_view value;   ///< Of a key, without blanks around it, with its quotation marks.
    std::string_view whole;   ///< The line with its end.
    Kind kind = Kind::Other;
    int number = 0;   ///< Counted from 1; 0 for a line that isn't in the file yet.
};

/// Cuts the first line off. CR, LF and CRLF end a line; `end` gets the length with the line end.
std::string_view FirstLine(std::string_view text, std::size_t& end) noexcept;
