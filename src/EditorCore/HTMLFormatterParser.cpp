#include "EditorCore/HTMLFormatterParser.hpp"

#include "EditorCore/ASCII.hpp"
#include "EditorCore/HTMLFormatterSpace.hpp"

#include <algorithm>
#include <span>

namespace corvanta {

namespace {

using Elements = HTMLFormatterElements;

constexpr std::string_view commentStart = "<!--";
constexpr std::string_view phpStart = "<?";

/// How many pieces are collected, at least, before they are printed.
constexpr std::size_t batchSize = 512;

bool needsCollapsing(std::string_view text) {
    return HTMLFormatterSpace::nextToCollapse(text, 0) < text.size();
}

} // namespace

void HTMLFormatterParser::parse(std::string_view text, HTMLFormatterPrinter& printer) {
    HTMLFormatterParser(text, printer).run();
}

HTMLFormatterParser::HTMLFormatterParser(std::string_view text, HTMLFormatterPrinter& printer)
    : text_(text), printer_(printer) {
    openCounts_.resize(names_.count());
}

void HTMLFormatterParser::run() {
    std::size_t position = 0;
    while ((position = text_.find('<', position)) != none) {
        position = readMarkup(position);
        if (pieces_.size() >= batchSize) {
            if (const std::size_t settled = settledPieces(); settled >= batchSize)
                handOver(settled);
        }
        if (printer_.isTooLong())
            return;
    }

    flushText(text_.size());
    while (!openNames_.empty())
        close(text_.size(), text_.size());
    handOver(pieces_.size());
    printer_.finish();
}

std::size_t HTMLFormatterParser::readMarkup(std::size_t position) {
    const std::string_view rest = text_.substr(position);
    if (rest.starts_with("</"))
        return readClosingTag(position);
    if (HTMLFormatterNames::startsAt(text_, position + 1))
        return readOpeningTag(position);
    if (rest.starts_with(commentStart))
        return readPiece(position, endAfter("-->", position + commentStart.size()), Kind::comment);
    if (rest.starts_with("<!"))
        return readPiece(position, endAfter(">", position), Kind::doctype);
    if (rest.starts_with(phpStart))
        return readPiece(position, endAfter("?>", position + phpStart.size()), Kind::php);
    return position + 1;
}

std::size_t HTMLFormatterParser::readPiece(std::size_t position, std::size_t end, Kind kind) {
    flushText(position);
    const HTMLFormatterPiece& piece = append(kind, position, end);
    if (kind != Kind::php || piece.text.find('\n') != none)
        makeParentCascade();
    return end;
}

std::size_t HTMLFormatterParser::readClosingTag(std::size_t position) {
    const std::size_t lastByte = findPlainTagEnd(position);
    if (lastByte == none)
        return position + 1;
    const std::size_t tagEnd = lastByte + 1;
    const std::size_t nameStart = position + 2;
    const std::size_t nameEnd = HTMLFormatterNames::end(text_, nameStart);
    if (nameEnd == nameStart)
        return tagEnd;

    const std::size_t name = names_.of(text_.substr(nameStart, nameEnd - nameStart)).number;
    if (name >= openCounts_.size() || openCounts_[name] == 0)
        return tagEnd;
    flushText(position);
    while (openNames_.back() != name)
        close(position, position);
    close(position, tagEnd);
    return tagEnd;
}

std::size_t HTMLFormatterParser::readOpeningTag(std::size_t position) {
    const std::size_t lastByte = findTagEnd(position);
    if (lastByte == none)
        return position + 1;
    const std::size_t tagEnd = lastByte + 1;
    const bool isSelfClosed = text_[lastByte - 1] == '/';
    const std::size_t nameEnd = HTMLFormatterNames::end(text_, position + 1);
    const HTMLFormatterNames::Name name = names_.of(text_.substr(position + 1, nameEnd - position - 1));

    flushText(position);
    if ((name.traits & Elements::rawText) != 0 && !isSelfClosed) {
        const std::size_t elementEnd = readRawElement(position, tagEnd, name);
        if (elementEnd != position)
            return elementEnd;
    }
    const bool isInline = (name.traits & Elements::inlineElement) != 0;
    if (!isInline)
        makeParentCascade();
    if (isSelfClosed || (name.traits & Elements::voidElement) != 0)
        append(Kind::single, position, tagEnd).isInline = isInline;
    else
        open(position, tagEnd, name);
    return tagEnd;
}

std::size_t HTMLFormatterParser::readRawElement(std::size_t position, std::size_t tagEnd,
                                                const HTMLFormatterNames::Name& name) {
    const std::size_t closingTag = findClosingTag(tagEnd, name.number);
    const std::size_t lastByte = closingTag == none ? none : findPlainTagEnd(closingTag);
    if (lastByte == none)
        return position;
    const std::size_t elementEnd = lastByte + 1;
    makeParentCascade();
    append(Kind::rawOpening, position, tagEnd).isLiteral = (name.traits & Elements::literalWhitespace) != 0;
    append(Kind::rawContent, tagEnd, closingTag);
    append(Kind::rawClosing, closingTag, elementEnd);
    return elementEnd;
}

std::size_t HTMLFormatterParser::findPlainTagEnd(std::size_t position) {
    if (position >= noTagEndFrom_)
        return none;
    const std::size_t found = text_.find('>', position);
    if (found == none)
        noTagEndFrom_ = position;
    return found;
}

std::size_t HTMLFormatterParser::findTagEnd(std::size_t position) {
    for (TagWalk& hopeless : hopelessWalks_) {
        walk(hopeless, position);
        if (hopeless.quote == 0)
            return none;
    }
    TagWalk tagWalk{position, 0};
    walk(tagWalk, text_.size());
    if (tagWalk.position < text_.size())
        return tagWalk.position;
    hopelessWalks_.push_back({position, 0});
    return none;
}

/// Goes on to the end of the tag, at most to `limit`.
void HTMLFormatterParser::walk(TagWalk& tagWalk, std::size_t limit) const {
    const std::string_view text = text_.substr(0, limit);
    while (tagWalk.position < limit) {
        if (tagWalk.quote == 0) {
            tagWalk.position = ByteSearch::next(text, tagWalk.position, '>', '"', '\'');
            if (tagWalk.position == limit || text[tagWalk.position] == '>')
                return;
            tagWalk.quote = text[tagWalk.position];
        } else {
            tagWalk.position = ByteSearch::next(text, tagWalk.position, tagWalk.quote);
            if (tagWalk.position == limit)
                return;
            tagWalk.quote = 0;
        }
        ++tagWalk.position;
    }
}

std::size_t HTMLFormatterParser::findClosingTag(std::size_t from, std::size_t rawElement) {
    ClosingTagSearch& search = closingTagSearches_[rawElement];
    if (search.from != none && search.from <= from && from <= search.position)
        return search.position;

    const std::string_view name = Elements::elements[rawElement].name;
    std::size_t position = text_.find('<', from);
    while (position != none && !isClosingTag(position, name))
        position = text_.find('<', position + 1);
    search = {from, position};
    return position;
}

bool HTMLFormatterParser::isClosingTag(std::size_t position, std::string_view name) const {
    const std::size_t nameStart = position + 2;
    const std::size_t nameEnd = nameStart + name.size();
    if (nameEnd >= text_.size() || text_[position + 1] != '/')
        return false;
    const char after = text_[nameEnd];
    return (after == '>' || after == '/' || HTMLFormatterSpace::contains(after)) &&
           ASCII::equals(text_.substr(nameStart, name.size()), name);
}

void HTMLFormatterParser::flushText(std::size_t position) {
    if (textStart_ < position)
        append(Kind::text, textStart_, position);
}

HTMLFormatterPiece& HTMLFormatterParser::append(Kind kind, std::size_t start, std::size_t end) {
    textStart_ = end;
    const std::string_view text = text_.substr(start, end - start);
    if (isInsideInlineElement_)
        return appendInline(text, kind == Kind::text && needsCollapsing(text));
    HTMLFormatterPiece& piece = pieces_.emplace_back();
    piece.text = text;
    piece.kind = kind;
    return piece;
}

HTMLFormatterPiece& HTMLFormatterParser::appendInline(std::string_view text, bool collapses) {
    HTMLFormatterPiece& last = pieces_.back();
    if (last.kind == Kind::verbatim && !last.isCollapsed && !collapses) {
        last.text = {last.text.data(), last.text.size() + text.size()};
        return last;
    }
    if (last.kind != Kind::verbatim || !last.isCollapsed) {
        pieces_.emplace_back().kind = Kind::verbatim;
        pieces_.back().isCollapsed = collapses;
        if (!collapses) {
            pieces_.back().text = text;
            return pieces_.back();
        }
        collapsed_.emplace_back();
    }
    std::string& collapsed = collapsed_.back();
    if (collapses)
        HTMLFormatterSpace::appendCollapsed(text, collapsed);
    else
        collapsed += text;
    pieces_.back().text = collapsed;
    return pieces_.back();
}

void HTMLFormatterParser::open(std::size_t start, std::size_t end, const HTMLFormatterNames::Name& name) {
    if (openCounts_.size() < names_.count())
        openCounts_.resize(names_.count());
    ++openCounts_[name.number];
    openNames_.push_back(static_cast<std::uint32_t>(name.number));

    if (isInsideInlineElement_) {
        append(Kind::verbatim, start, end);
        return;
    }
    openPieces_.push_back(printedPieces_ + pieces_.size());
    HTMLFormatterPiece& piece = append(Kind::opening, start, end);
    piece.isInline = (name.traits & Elements::inlineElement) != 0;
    piece.cascades = (name.traits & Elements::blockContainer) != 0;
    if (!piece.cascades)
        ++unsettledElements_;
    isInsideInlineElement_ = piece.isInline;
}

/// Ends the innermost open element with the closing tag between `start` and `end`, which may be empty.
void HTMLFormatterParser::close(std::size_t start, std::size_t end) {
    --openCounts_[openNames_.back()];
    openNames_.pop_back();
    if (openNames_.size() >= openPieces_.size()) {
        append(Kind::verbatim, start, end);
        return;
    }
    isInsideInlineElement_ = false;
    HTMLFormatterPiece* opening = innermostOpening();
    openPieces_.pop_back();
    const bool isInline = opening != nullptr && opening->isInline;
    if (opening != nullptr) {
        opening->closing = pieces_.size();
        if (!opening->cascades)
            --unsettledElements_;
        // Without a closing tag there is nothing that could hold the children on the tag's line.
        opening->cascades = opening->cascades || start == end;
    }
    append(Kind::closing, start, end).isInline = isInline;
}

void HTMLFormatterParser::makeParentCascade() {
    HTMLFormatterPiece* parent = innermostOpening();
    if (parent == nullptr || parent->isInline || parent->cascades)
        return;
    parent->cascades = true;
    --unsettledElements_;
}

HTMLFormatterPiece* HTMLFormatterParser::innermostOpening() {
    if (openPieces_.empty() || openPieces_.back() < printedPieces_)
        return nullptr;
    return &pieces_[openPieces_.back() - printedPieces_];
}

std::size_t HTMLFormatterParser::settledPieces() const {
    std::size_t settled = pieces_.size();
    if (unsettledElements_ > 0)
        settled = openPieces_[openPieces_.size() - unsettledElements_] - printedPieces_;
    if (settled > 0 && pieces_[settled - 1].kind == Kind::text)
        --settled;
    return settled;
}

void HTMLFormatterParser::handOver(std::size_t count) {
    const auto end = pieces_.begin() + static_cast<std::ptrdiff_t>(count);
    printer_.print(std::span(pieces_.begin(), end));
    printedPieces_ += count;
    const auto collapsed =
        std::count_if(pieces_.begin(), end, [](const auto& piece) { return piece.isCollapsed; });
    collapsed_.erase(collapsed_.begin(), collapsed_.begin() + collapsed);
    pieces_.erase(pieces_.begin(), end);
    for (HTMLFormatterPiece& piece : pieces_) {
        if (piece.closing != 0)
            piece.closing -= count;
    }
}

} // namespace corvanta
