#pragma once

#include "EditorCore/HTMLFormatterLines.hpp"
#include "EditorCore/HTMLFormatterPiece.hpp"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace corvanta {

/// Lays out the pieces of a page.
class HTMLFormatterPrinter {
public:
    /// `pageSize` is that of the page, `limit` that of a formatted text which is still of use, in bytes.
    HTMLFormatterPrinter(std::size_t pageSize, std::size_t limit)
        : lines_(pageSize + pageSize / 4), limit_(limit) {}

    /// Prints the next pieces of the page. No element that does not cascade goes on in those after them; a
    /// run of text may, unless the last of them is text.
    void print(std::span<const HTMLFormatterPiece> pieces);

    /// Tells that there are no more pieces.
    void finish() { endRun(); }

    /// Whether the formatted text exceeds the limit already.
    bool isTooLong() const { return lines_.finalSize() > limit_; }

    /// The formatted text, without a line feed at its end.
    std::string take() && { return std::move(lines_).take(); }

private:
    using Kind = HTMLFormatterPiece::Kind;

    /// The index of the last piece of what starts at `index`.
    std::size_t lastOf(std::size_t index) const;

    /// Lays out the pieces before `end` that were collected to stand in lines of text.
    void printRun(std::size_t end);
    void endRun();

    /// Prints what starts at `index` and returns the index of the last piece that was printed.
    std::size_t printBlock(std::size_t index);
    std::size_t printRawElement(std::size_t index);
    std::size_t printOnOneLine(std::size_t index);
    void printLine(std::string_view text);

    /// The pieces from `start` to before `end`, with each run of white space in texts made one blank.
    void printInline(std::size_t start, std::size_t end);

    /// Text of a run, which keeps its line breaks.
    void printRunText(std::string_view text);
    void startRunLine();
    void endRunLine();

    std::span<const HTMLFormatterPiece> pieces_;
    HTMLFormatterLines lines_;
    std::size_t limit_;
    std::size_t depth_ = 0;
    std::size_t runStart_ = 0;
    /// Whether pieces of the run were printed already.
    bool isInRun_ = false;
    bool isInRunLine_ = false;
    /// Where the line of the run starts, in bytes.
    std::size_t runLineStart_ = 0;
};

} // namespace corvanta
