#pragma once

#include <string_view>

namespace corvanta {

/// Whether `bytes` are well-formed UTF-8: no surrogates, no overlong forms, nothing above U+10FFFF.
bool isUtf8(std::string_view bytes);

} // namespace corvanta
