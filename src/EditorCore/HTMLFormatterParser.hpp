#pragma once

#include "EditorCore/ByteSearch.hpp"
#include "EditorCore/HTMLFormatterElements.hpp"
#include "EditorCore/HTMLFormatterNames.hpp"
#include "EditorCore/HTMLFormatterPiece.hpp"
#include "EditorCore/HTMLFormatterPrinter.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// Takes a page apart. One pass, in time proportional to the text whatever it holds: a search that found
/// nothing is not made again, and closing tags look only for elements that are open.
class HTMLFormatterParser {
public:
    /// Hands the pieces of `text` (UTF-8) to `printer`.
    static void parse(std::string_view text, HTMLFormatterPrinter& printer);

private:
    using Kind = HTMLFormatterPiece::Kind;
    using Traits = HTMLFormatterElements::Traits;
    static constexpr std::size_t none = std::string_view::npos;

    /// A walk through a tag that minds quotes.
    struct TagWalk {
        std::size_t position = 0;
        /// The mark that ends the value which the walk is in; 0 outside values.
        char quote = 0;
    };

    /// What is known about the closing tags of a raw element: the first one after `from` is at `position`.
    struct ClosingTagSearch {
        std::size_t from = none;
        std::size_t position = none;
    };

    HTMLFormatterParser(std::string_view text, HTMLFormatterPrinter& printer);

    void run();

    /// These read what starts with the "<" at `position` and return the position after it; a "<" that starts
    /// nothing is left to the text.
    std::size_t readMarkup(std::size_t position);
    /// `end` is the position after it.
    std::size_t readPiece(std::size_t position, std::size_t end, Kind kind);
    std::size_t readClosingTag(std::size_t position);
    std::size_t readOpeningTag(std::size_t position);
    /// `position` itself when the element is not closed.
    std::size_t readRawElement(std::size_t position, std::size_t tagEnd,
                               const HTMLFormatterNames::Name& name);

    /// The position after the next `sign`, or the end of the text.
    std::size_t endAfter(std::string_view sign, std::size_t position) const {
        return ByteSearch::endAfter(sign, text_, position);
    }
    /// The position of the first ">" after `position`, where a closing tag starts; quotes mean nothing there.
    std::size_t findPlainTagEnd(std::size_t position);
    /// The same for an opening tag: the first one that is not in quotes.
    std::size_t findTagEnd(std::size_t position);
    void walk(TagWalk& tagWalk, std::size_t limit) const;
    std::size_t findClosingTag(std::size_t from, std::size_t rawElement);
    bool isClosingTag(std::size_t position, std::string_view name) const;

    /// Ends the text before `position`, where other markup starts.
    void flushText(std::size_t position);
    HTMLFormatterPiece& append(Kind kind, std::size_t start, std::size_t end);
    /// The same inside an inline element, where few pieces are made of however much there is.
    HTMLFormatterPiece& appendInline(std::string_view text, bool collapses);
    void open(std::size_t start, std::size_t end, const HTMLFormatterNames::Name& name);
    void close(std::size_t start, std::size_t end);
    /// The innermost open element has a child that needs a line of its own.
    void makeParentCascade();
    /// The opening of the innermost open element that is inside no inline one; none when it is printed.
    HTMLFormatterPiece* innermostOpening();

    /// How many of the pieces can be printed already: it is known how each is, and the last is no text, which
    /// means something else if it is all of a run.
    std::size_t settledPieces() const;
    /// Hands the first `count` pieces over.
    void handOver(std::size_t count);

    std::string_view text_;
    /// From here on there is no ">", as far as is known.
    std::size_t noTagEndFrom_ = none;
    std::size_t textStart_ = 0;
    HTMLFormatterPrinter& printer_;
    /// Those that are not printed yet. They are printed while the processor still has them at hand.
    std::vector<HTMLFormatterPiece> pieces_;
    /// The texts of those of them that are collapsed.
    std::deque<std::string> collapsed_;
    std::size_t printedPieces_ = 0;
    /// How many open elements may yet turn out to fit on one line, the outermost inline one included: the
    /// innermost of `openPieces_`.
    std::size_t unsettledElements_ = 0;
    bool isInsideInlineElement_ = false;
    /// The numbers of the names of the open elements; the innermost one is the last. There may be millions.
    std::vector<std::uint32_t> openNames_;
    /// The openings of the first of them, those that are inside no inline one, counted from the page's start.
    std::vector<std::size_t> openPieces_;
    HTMLFormatterNames names_;
    /// How many elements of each name are open.
    std::vector<std::size_t> openCounts_;
    /// Walks that met no end of a tag. Every later walk that stands where one of them does, outside values,
    /// ends as it did. As there are two kinds of quotes, there are never more than three of them.
    std::vector<TagWalk> hopelessWalks_;
    std::array<ClosingTagSearch, HTMLFormatterElements::elements.size()> closingTagSearches_{};
};

} // namespace corvanta
