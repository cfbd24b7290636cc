#pragma once

#include "EditorCore/TextRange.hpp"

#include <string>

namespace corvanta {

/// One change to a text, and what is selected after it.
struct TextReplacement {
    /// What is replaced, in the text before the change.
    TextRange range;

    /// What comes in its place, UTF-8.
    std::string text;

    /// In the text after the change.
    TextRange selection;

    friend bool operator==(const TextReplacement&, const TextReplacement&) = default;
};

} // namespace corvanta
