#include "EditorCore/SyntaxPainting.hpp"

namespace corvanta {

SyntaxPainting::SyntaxPainting(TextStorage& textStorage, const EditorTheme& theme, const EditorFont& font,
                               const DynamicColor& baseColor)
    : textStorage_(textStorage), font_(font), baseColor_(baseColor), length_(textStorage.length()) {
    for (const SyntaxToken token : allCases)
        colors_[index(token)] = theme.color(token);
    textStorage_.beginEditing();
}

SyntaxPainting::~SyntaxPainting() {
    textStorage_.endEditing();
}

void SyntaxPainting::paint(TextRange range, std::span<const SyntaxSpan> spans) {
    textStorage_.setAttributes(range, font_, baseColor_);
    for (const SyntaxSpan& span : spans) {
        if (span.range.end() <= length_)
            textStorage_.addForeground(span.range, span.token, colors_[index(span.token)]);
    }
}

} // namespace corvanta
