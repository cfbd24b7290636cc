#pragma once

#include "EditorCore/SharedText.hpp"
#include "EditorCore/TextRange.hpp"
#include "EditorCore/TextReplacement.hpp"

namespace corvanta {

/// Turns a selection into a comment of HTML, or such a comment back into text. It is HTML's also in scripts
/// and style sheets.
struct CommentToggle {
    CommentToggle() = delete;

    /// What becomes of the part of `text` that is selected.
    ///
    /// A selection that is one comment, white space around it ignored, is replaced by the comment's content
    /// without the blanks at its ends; the white space around it goes, too. Any other one is put between
    /// comment marks as it is. Afterwards the caret stands behind the new text; after a bare caret between
    /// the two marks.
    ///
    /// What of `selection` lies outside the text is ignored. A selection that cuts a surrogate pair in two is
    /// widened to hold all of it; a caret inside one stands before it.
    static TextReplacement toggled(const SharedText& text, TextRange selection);
};

} // namespace corvanta
