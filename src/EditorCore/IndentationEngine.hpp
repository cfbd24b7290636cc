#pragma once

#include <string>
#include <string_view>

namespace corvanta {

/// Answers how far a new line is indented. Reads the text line by line and remembers little between two
/// lines, on purpose: an answer must come at every press of Return and must not jump because of something far
/// above. A comment is known on its own line only, and a tag that a line end cuts in two counts as none.
struct IndentationEngine {
    IndentationEngine() = delete;

    /// The tabs that a line receives which is begun behind `precedingText` (UTF-8), the text from the
    /// document's start to the caret: one for each element and each brace of a script, style sheet or PHP
    /// block that is open there. Closing tags close whatever element is open last. Only LF ends a line.
    static std::string indentForNewLine(std::string_view precedingText);

    /// The whole `text` (UTF-8) laid out anew, as the formatter does it.
    static std::string reformat(std::string_view text);
};

} // namespace corvanta
