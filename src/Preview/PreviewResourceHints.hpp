#pragma once

#include <string_view>

namespace corvanta {

/// What the text of a page tells about the files that it needs.
struct PreviewResourceHints {
    PreviewResourceHints() = delete;

    /// Whether the page (UTF-8) links at least one local file. Judged from the text, without parsing it: a
    /// link inside a script or a comment counts as well.
    static bool referencesLocalFiles(std::string_view html);
};

} // namespace corvanta
