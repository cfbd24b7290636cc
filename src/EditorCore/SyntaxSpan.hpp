#pragma once

#include "EditorCore/SyntaxToken.hpp"
#include "EditorCore/TextRange.hpp"

namespace corvanta {

/// A stretch of text of one kind; at least one code unit long.
struct SyntaxSpan {
    TextRange range;
    SyntaxToken token{};

    friend constexpr bool operator==(const SyntaxSpan&, const SyntaxSpan&) = default;
};

} // namespace corvanta
