#include "core/PartFileLines.h"

#include "platform/ProfileCache.h"

PartFileLines::PartFileLines(const std::string& path) {
    const std::string& bytes = Profiles().Current(path).text->Bytes();
    const ProfileEncoding encoding = ProfileEncoding::Of(bytes);
    text_ = bytes.substr(encoding.markSize);
    if (encoding.unitSize == 2) {
        text_ = FromUtf16(text_);
    }
    int number = 0;
    for (std::string_view rest = text_; !rest.empty();) {
        std::size_t end = 0;
        lines_.emplace_back(FirstLine(rest, end)).number = ++number;
        rest.remove_prefix(end);
    }
}
