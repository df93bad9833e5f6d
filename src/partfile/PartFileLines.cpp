#include "partfile/PartFileLines.h"

#include "ini/ProfileCache.h"

PartFileLines::PartFileLines(const std::string& path) {
    const std::string& bytes = Profiles().Current(path).text->Bytes();
    text_ = DecodedText(bytes, EncodingOf(bytes));
    int number = 0;
    for (std::string_view rest = text_; !rest.empty();) {
        std::size_t end = 0;
        lines_.emplace_back(FirstLine(rest, end)).number = ++number;
        rest.remove_prefix(end);
    }
}
