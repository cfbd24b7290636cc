#include "EditorCore/SyntaxHighlighter.hpp"

#include "EditorCore/SyntaxPainting.hpp"
#include "EditorCore/SyntaxTokenizer.hpp"

namespace corvanta {

void SyntaxHighlighter::highlight(TextStorage& textStorage, const EditorTheme& theme, const EditorFont& font,
                                  const DynamicColor& baseColor) {
    SyntaxPainting(textStorage, theme, font, baseColor)
        .paint({0, textStorage.length()}, SyntaxTokenizer::tokenize(textStorage.text().string()));
}

} // namespace corvanta
