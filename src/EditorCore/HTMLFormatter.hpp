#pragma once

#include <string>
#include <string_view>

namespace corvanta {

/// Lays out a whole page anew: one tab for each level, blocks on lines of their own, inline content on one
/// line, scripts, style sheets and longer PHP by the depth of their braces, preformatted text as it is.
struct HTMLFormatter {
    HTMLFormatter() = delete;

    /// The formatted text of a page, both in UTF-8. Never fails and loses nothing but white space: what is no
    /// markup, or is never closed, is carried through. White space is HTML's own (tab, line feed, form feed,
    /// carriage return, blank); a no-break space is text. Lines end with a line feed.
    ///
    /// Takes time and memory in proportion to the text and its result. The result of blocks nested n deep
    /// holds n tabs for the innermost line; a page whose result would be longer than both 64 MiB and 32 times
    /// the page comes back as it is.
    static std::string format(std::string_view text);
};

} // namespace corvanta
