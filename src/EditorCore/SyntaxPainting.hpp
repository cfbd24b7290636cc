#pragma once

#include "EditorCore/DynamicColor.hpp"
#include "EditorCore/EditorFont.hpp"
#include "EditorCore/EditorTheme.hpp"
#include "EditorCore/SyntaxSpan.hpp"
#include "EditorCore/SyntaxToken.hpp"
#include "EditorCore/TextStorage.hpp"

#include <array>
#include <cstdint>
#include <span>

namespace corvanta {

/// One colouring of an attributed text, piece by piece; what it painted is seen once it is gone.
class SyntaxPainting {
public:
    /// `textStorage` outlives the painting, and its text does not change meanwhile.
    SyntaxPainting(TextStorage& textStorage, const EditorTheme& theme, const EditorFont& font,
                   const DynamicColor& baseColor);
    ~SyntaxPainting();
    SyntaxPainting(const SyntaxPainting&) = delete;
    SyntaxPainting& operator=(const SyntaxPainting&) = delete;

    /// Gives the text in `range` these colours: font and base colour everywhere, and the theme's colour on
    /// `spans`, which lie inside the range. A span beyond the text's end is passed over.
    void paint(TextRange range, std::span<const SyntaxSpan> spans);

private:
    TextStorage& textStorage_;
    EditorFont font_;
    DynamicColor baseColor_;
    /// By the span's kind: looked up once a kind, not once a span.
    std::array<DynamicColor, allCases.size()> colors_;
    std::int64_t length_;
};

} // namespace corvanta
