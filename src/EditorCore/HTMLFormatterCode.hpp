#pragma once

#include "EditorCore/HTMLFormatterLines.hpp"

#include <cstddef>
#include <string_view>

namespace corvanta {

/// Scripts, style sheets and PHP, indented by the depth of their braces.
struct HTMLFormatterCode {
    HTMLFormatterCode() = delete;

    /// Adds the lines of `code`, at least `depth` tabs deep. Empty lines stay, but not at the start and the
    /// end.
    static void print(std::string_view code, std::size_t depth, HTMLFormatterLines& lines);
};

} // namespace corvanta
