#pragma once

#include "EditorCore/DynamicColor.hpp"
#include "EditorCore/EditorFont.hpp"
#include "EditorCore/EditorTheme.hpp"
#include "EditorCore/TextStorage.hpp"

namespace corvanta {

/// Paints the spans of the tokenizer into an attributed text.
struct SyntaxHighlighter {
    SyntaxHighlighter() = delete;

    /// Colours the whole of `textStorage` anew: `font` and `baseColor` everywhere, and the theme's colour on
    /// every span that lies inside the text.
    static void highlight(TextStorage& textStorage, const EditorTheme& theme, const EditorFont& font,
                          const DynamicColor& baseColor);
};

} // namespace corvanta
