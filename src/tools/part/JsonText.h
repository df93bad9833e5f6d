#pragma once

#include <string>
#include <string_view>

/// A JSON string with its quotation marks. Bytes that are no UTF-8 become the replacement character.
std::string JsonText(std::string_view text);
