#pragma once

#include "EditorCore/SharedText.hpp"
#include "EditorCore/TextRange.hpp"

#include <string_view>
#include <vector>

namespace corvanta {

/// Moves the lines of a selection one level to the right or back to the left. Ranges count UTF-16 code units.
///
/// A selection that ends at the start of a line leaves that line alone. Without a selection it is the line of
/// the caret.
struct LineShift {
    /// What is replaced, in the text before the change; ascending.
    std::vector<TextRange> ranges;

    /// What comes in the place of each.
    std::string_view text;

    /// What is selected afterwards: the same text as before.
    TextRange selection;

    /// Puts a tab before every line that is not empty.
    static LineShift toTheRight(const SharedText& text, TextRange selection);

    /// Takes from every line the tab that it starts with, or as many blanks as a tab is wide.
    static LineShift toTheLeft(const SharedText& text, TextRange selection);

    friend bool operator==(const LineShift&, const LineShift&) = default;
};

} // namespace corvanta
