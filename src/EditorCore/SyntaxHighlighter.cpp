#include "EditorCore/SyntaxHighlighter.hpp"

#include "EditorCore/SyntaxTokenizer.hpp"

#include <array>

namespace corvanta {

void SyntaxHighlighter::highlight(TextStorage& textStorage, const EditorTheme& theme, const EditorFont& font,
                                  const DynamicColor& baseColor) {
    const std::vector<SyntaxSpan> spans = SyntaxTokenizer::tokenize(textStorage.text().string());
    paint(textStorage, {0, textStorage.length()}, spans, theme, font, baseColor);
}

void SyntaxHighlighter::paint(TextStorage& textStorage, TextRange range, std::span<const SyntaxSpan> spans,
                              const EditorTheme& theme, const EditorFont& font,
                              const DynamicColor& baseColor) {
    // Looked up once a kind, not once a span.
    std::array<DynamicColor, allCases.size()> colors;
    for (const SyntaxToken token : allCases)
        colors[index(token)] = theme.color(token);

    textStorage.beginEditing();
    textStorage.setAttributes(range, font, baseColor);
    const std::int64_t length = textStorage.length();
    for (const SyntaxSpan& span : spans) {
        if (span.range.end() <= length)
            textStorage.addForeground(span.range, span.token, colors[index(span.token)]);
    }
    textStorage.endEditing();
}

} // namespace corvanta
