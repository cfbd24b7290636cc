#pragma once

#include "EditorCore/DynamicColor.hpp"
#include "EditorCore/EditorFont.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/SyntaxToken.hpp"
#include "EditorCore/TextRange.hpp"

#include <cstdint>

namespace corvanta {

/// The attributed text of a code pane, as the highlighter sees it. Attributes are changed between
/// `beginEditing` and `endEditing`; what they say is seen after the latter.
class TextStorage {
public:
    TextStorage() = default;
    TextStorage(const TextStorage&) = delete;
    TextStorage& operator=(const TextStorage&) = delete;
    virtual ~TextStorage() = default;

    /// The whole text.
    virtual SharedText text() const = 0;

    /// The text's length in UTF-16 code units.
    virtual std::int64_t length() const = 0;

    virtual void beginEditing() = 0;

    /// Replaces every attribute on `range` by these two.
    virtual void setAttributes(TextRange range, const EditorFont& font, const DynamicColor& foreground) = 0;

    /// Gives the text in `range`, which is of the kind `token`, another foreground colour.
    virtual void addForeground(TextRange range, SyntaxToken token, const DynamicColor& foreground) = 0;

    virtual void endEditing() = 0;
};

} // namespace corvanta
