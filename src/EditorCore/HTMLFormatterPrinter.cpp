#include "EditorCore/HTMLFormatterPrinter.hpp"

#include "EditorCore/HTMLFormatterCode.hpp"
#include "EditorCore/HTMLFormatterSpace.hpp"

namespace corvanta {

namespace {

using Space = HTMLFormatterSpace;

constexpr std::string_view blanksAndTabs = " \t";
constexpr std::size_t none = std::string_view::npos;

} // namespace

void HTMLFormatterPrinter::print(std::span<const HTMLFormatterPiece> pieces) {
    pieces_ = pieces;
    runStart_ = 0;
    for (std::size_t index = 0; index < pieces_.size(); ++index) {
        if (pieces_[index].joinsRun()) {
            index = lastOf(index);
            continue;
        }
        printRun(index);
        endRun();
        index = printBlock(index);
        runStart_ = index + 1;
    }
    printRun(pieces_.size());
}

std::size_t HTMLFormatterPrinter::lastOf(std::size_t index) const {
    return pieces_[index].kind == Kind::opening ? pieces_[index].closing : index;
}

void HTMLFormatterPrinter::printRun(std::size_t end) {
    if (runStart_ == end)
        return;
    // A line always holds something else than white space, so that a run of nothing else makes none.
    const HTMLFormatterPiece& first = pieces_[runStart_];
    if (!isInRun_ && end - runStart_ == 1 && first.kind == Kind::text && Space::fills(first.text)) {
        const std::size_t lineEnd = first.text.find('\n');
        if (lineEnd != none && first.text.find('\n', lineEnd + 1) != none)
            lines_.leaveEmpty(1);
        return;
    }
    isInRun_ = true;
    for (std::size_t index = runStart_; index < end; ++index) {
        if (pieces_[index].kind == Kind::text) {
            printRunText(pieces_[index].text);
            continue;
        }
        startRunLine();
        const std::size_t last = lastOf(index);
        printInline(index, last + 1);
        index = last;
    }
}

void HTMLFormatterPrinter::endRun() {
    endRunLine();
    isInRun_ = false;
}

std::size_t HTMLFormatterPrinter::printBlock(std::size_t index) {
    const HTMLFormatterPiece& piece = pieces_[index];
    switch (piece.kind) {
    case Kind::php:
        HTMLFormatterCode::print(piece.text, depth_, lines_);
        return index;
    case Kind::rawOpening:
        return printRawElement(index);
    case Kind::opening:
        if (!piece.cascades)
            return printOnOneLine(index);
        printLine(piece.text);
        ++depth_;
        return index;
    case Kind::closing:
        --depth_;
        if (!piece.text.empty())
            printLine(piece.text);
        return index;
    default:
        printLine(piece.text);
        return index;
    }
}

std::size_t HTMLFormatterPrinter::printRawElement(std::size_t index) {
    const HTMLFormatterPiece& opening = pieces_[index];
    const std::string_view content = pieces_[index + 1].text;
    const std::size_t closing = index + 2;

    printLine(opening.text);
    if (opening.isLiteral) {
        lines_.append(content);
    } else if (!Space::fills(content)) {
        HTMLFormatterCode::print(content, depth_ + 1, lines_);
        lines_.start(depth_);
    }
    lines_.append(pieces_[closing].text);
    return closing;
}

std::size_t HTMLFormatterPrinter::printOnOneLine(std::size_t index) {
    const std::size_t closing = pieces_[index].closing;
    printLine(pieces_[index].text);
    const std::size_t contentStart = lines_.size();

    std::size_t child = index + 1;
    if (pieces_[child].kind == Kind::text) {
        const std::string_view text = pieces_[child].text;
        Space::appendCollapsed(text.substr(Space::skip(text, 0)), lines_);
        ++child;
    }
    printInline(child, closing);
    lines_.trimEnd(Space::characters, contentStart);
    lines_.append(pieces_[closing].text);
    return closing;
}

void HTMLFormatterPrinter::printLine(std::string_view text) {
    lines_.start(depth_);
    lines_.append(text);
}

void HTMLFormatterPrinter::printInline(std::size_t start, std::size_t end) {
    for (std::size_t index = start; index < end; ++index) {
        if (pieces_[index].kind == Kind::text)
            Space::appendCollapsed(pieces_[index].text, lines_);
        else
            lines_.append(pieces_[index].text);
    }
}

void HTMLFormatterPrinter::printRunText(std::string_view text) {
    std::size_t position = isInRunLine_ ? 0 : Space::skip(text, 0);
    while (position < text.size()) {
        const std::size_t end = Space::endOfCopy(text, position);
        if (position < end) {
            startRunLine();
            lines_.append(text.substr(position, end - position));
        }
        position = Space::skip(text, end);
        const std::string_view space = text.substr(end, position - end);
        if (space.find('\n') != none)
            endRunLine();
        else if (!space.empty())
            lines_.append(" ");
    }
}

void HTMLFormatterPrinter::startRunLine() {
    if (isInRunLine_)
        return;
    isInRunLine_ = true;
    lines_.start(depth_);
    runLineStart_ = lines_.size();
}

void HTMLFormatterPrinter::endRunLine() {
    if (isInRunLine_)
        lines_.trimEnd(blanksAndTabs, runLineStart_);
    isInRunLine_ = false;
}

} // namespace corvanta
