#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvanta {

/// A piece of a page's markup. A page is a flat list of pieces in the order of the text: the tree of its
/// elements, written down so that no depth of nesting needs recursion. Put side by side, the texts of all
/// pieces are the page, but for white space.
struct HTMLFormatterPiece {
    enum class Kind : std::uint8_t {
        /// Everything between the others, white space, stray closing tags and lone "<" included.
        text,
        comment,
        /// Any other "<!" construct.
        doctype,
        php,
        /// The three pieces, one after another, of an element whose content is not markup.
        rawOpening,
        rawContent,
        rawClosing,
        /// What is inside an inline element, whose parts are all treated alike.
        verbatim,
        /// The tag of an element that has no content: a void or a self-closed one.
        single,
        /// The tag of an element whose children follow.
        opening,
        /// The end of an element; its text is empty when the element has no closing tag.
        closing,
    };

    /// As it stands in the page; but see `isCollapsed`.
    std::string_view text;
    /// Of `opening`: the index of its `closing` piece in the list.
    std::size_t closing = 0;
    Kind kind = Kind::text;
    /// Of `single`, `opening` and `closing`: whether the element belongs into a line of text.
    bool isInline = false;
    /// Of `rawOpening`: whether every blank of the content counts.
    bool isLiteral = false;
    /// Of `verbatim`: whether there were runs of white space in its text, each of which is one blank now.
    bool isCollapsed = false;
    /// Of `opening`: whether the children stand on lines of their own, one level deeper.
    bool cascades = false;

    /// Whether the piece, or the element that it opens, stands in a line of text; else it is a block.
    bool joinsRun() const {
        if (kind == Kind::php)
            return text.find('\n') == std::string_view::npos;
        return kind == Kind::text || isInline;
    }
};

} // namespace corvanta
