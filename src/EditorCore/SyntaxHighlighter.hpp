#pragma once

#include "EditorCore/DynamicColor.hpp"
#include "EditorCore/EditorFont.hpp"
#include "EditorCore/EditorTheme.hpp"
#include "EditorCore/SyntaxSpan.hpp"
#include "EditorCore/TextStorage.hpp"

#include <span>

namespace corvanta {

/// Paints the spans of the tokenizer into an attributed text.
struct SyntaxHighlighter {
    SyntaxHighlighter() = delete;

    /// Colours the whole of `textStorage` anew: `font` and `baseColor` everywhere, and the theme's colour on
    /// every span that lies inside the text.
    static void highlight(TextStorage& textStorage, const EditorTheme& theme, const EditorFont& font,
                          const DynamicColor& baseColor);

    /// Gives the text in `range` these colours: `font` and `baseColor` everywhere, and the theme's colour on
    /// `spans`, which lie inside the range. A span beyond the text's end is passed over.
    static void paint(TextStorage& textStorage, TextRange range, std::span<const SyntaxSpan> spans,
                      const EditorTheme& theme, const EditorFont& font, const DynamicColor& baseColor);
};

} // namespace corvanta
