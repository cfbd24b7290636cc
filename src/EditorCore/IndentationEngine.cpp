#include "EditorCore/IndentationEngine.hpp"

#include "EditorCore/ASCII.hpp"
#include "EditorCore/HTMLFormatter.hpp"
#include "EditorCore/Utf8Character.hpp"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace corvanta {

namespace {

enum class Context : std::uint8_t { html, script, style, phpBlock };

/// Bytes to stop at. Everything between two of them is jumped over.
class ByteSet {
public:
    constexpr explicit ByteSet(std::string_view bytes) {
        for (const char byte : bytes)
            isMember_[static_cast<unsigned char>(byte)] = true;
    }

    constexpr bool contains(char byte) const { return isMember_[static_cast<unsigned char>(byte)]; }

    /// The position of the first member at or after `position`; the text's end when none comes.
    constexpr std::size_t next(std::string_view text, std::size_t position) const {
        while (position < text.size() && !contains(text[position]))
            ++position;
        return position;
    }

private:
    std::array<bool, 256> isMember_{};
};

constexpr ByteSet scriptMarks("\"'{}/<");
constexpr ByteSet styleMarks("\"'{}/<");
constexpr ByteSet phpMarks("\"'{}/#?");
constexpr ByteSet tagMarks(">\"'\n");
constexpr ByteSet doubleQuotedValueEnds("\"\n");
constexpr ByteSet singleQuotedValueEnds("'\n");
constexpr ByteSet doubleQuotedStringMarks("\"\\\n");
constexpr ByteSet singleQuotedStringMarks("'\\\n");
constexpr ByteSet nameCharacters("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-:");

/// What the name of an element means to the indentation.
enum class Element : std::uint8_t { container, empty, script, style };

/// A name of up to eight bytes as a number, ASCII letters lower-cased. The other characters of names have the
/// bit set that makes a letter a small one.
constexpr std::uint64_t nameKey(std::string_view name) {
    std::uint64_t key = 0;
    for (const char byte : name)
        key = key << 8U | static_cast<unsigned char>(byte) | 0x20U;
    return key;
}

constexpr std::size_t longestKnownName = 6;

/// The element called `name`, which is ASCII.
Element elementNamed(std::string_view name) {
    if (name.size() > longestKnownName)
        return Element::container;
    switch (nameKey(name)) {
    case nameKey("script"):
        return Element::script;
    case nameKey("style"):
        return Element::style;
    // The elements that HTML lets stand without an end tag because they have no content.
    case nameKey("area"):
    case nameKey("base"):
    case nameKey("br"):
    case nameKey("col"):
    case nameKey("embed"):
    case nameKey("hr"):
    case nameKey("img"):
    case nameKey("input"):
    case nameKey("link"):
    case nameKey("meta"):
    case nameKey("param"):
    case nameKey("source"):
    case nameKey("track"):
    case nameKey("wbr"):
        return Element::empty;
    default:
        return Element::container;
    }
}

/// The element called `name`, which holds other characters than ASCII. Of all these only the Kelvin sign is
/// an ASCII letter in lower case.
Element elementNamedInUnicode(std::string_view name) {
    constexpr std::string_view kelvinSign = "\u212A";
    std::string folded(name);
    for (std::size_t at = folded.find(kelvinSign); at != std::string::npos; at = folded.find(kelvinSign, at))
        folded.replace(at, kelvinSign.size(), 1, 'k');
    return std::ranges::all_of(folded, [](char byte) { return nameCharacters.contains(byte); })
               ? elementNamed(folded)
               : Element::container;
}

struct ParsedTag {
    Element element = Element::container;
    bool isClosing = false;
    bool isSelfClosed = false;
};

/// One way through the text. Every search either finds what it looks for or goes on behind the line, so that
/// no byte is looked at more than a few times.
class IndentationScan {
public:
    explicit IndentationScan(std::string_view text)
        : text_(text), lineEnd_(std::min(text.find('\n'), text.size())) {}

    /// The nesting level at the end of the text.
    std::size_t depth() {
        while (position_ < text_.size()) {
            if (context_ == Context::html)
                scanMarkup();
            else
                scanCode();
        }
        return depth_;
    }

private:
    void scanMarkup() {
        position_ = std::min(text_.find('<', position_), text_.size());
        if (position_ == text_.size())
            return;
        if (standsHere("<!--"))
            skipBehind("-->");
        else if (standsHere("<?php"))
            enterPhpBlock(5);
        else if (standsHere("<?="))
            enterPhpBlock(3);
        else if (const std::optional<ParsedTag> tag = readTag())
            apply(*tag);
    }

    void scanCode() {
        position_ = codeMarks().next(text_, position_);
        if (position_ == text_.size())
            return;
        switch (text_[position_]) {
        case '"':
            skipString(doubleQuotedStringMarks);
            break;
        case '\'':
            skipString(singleQuotedStringMarks);
            break;
        case '{':
            ++depth_;
            ++position_;
            break;
        case '}':
            closeLevel();
            ++position_;
            break;
        case '/':
            skipCommentOrSlash();
            break;
        case '#':
            position_ = lineEnd();
            break;
        case '?':
            leavePhpBlockOrPass();
            break;
        default:
            leaveElementOrPass();
        }
    }

    const ByteSet& codeMarks() const {
        if (context_ == Context::phpBlock)
            return phpMarks;
        return context_ == Context::script ? scriptMarks : styleMarks;
    }

    void enterPhpBlock(std::size_t openerLength) {
        context_ = Context::phpBlock;
        position_ += openerLength;
    }

    void leavePhpBlockOrPass() {
        if (standsHere("?>")) {
            context_ = Context::html;
            ++position_;
        }
        ++position_;
    }

    /// The element is left also when its end tag is cut off by the line end and counts as none.
    void leaveElementOrPass() {
        if (!standsHere(context_ == Context::script ? "</script" : "</style")) {
            ++position_;
            return;
        }
        if (const std::optional<ParsedTag> tag = readTag())
            apply(*tag);
        context_ = Context::html;
    }

    void skipCommentOrSlash() {
        if (standsHere("/*"))
            skipBehind("*/");
        else if (context_ != Context::style && standsHere("//"))
            position_ = lineEnd();
        else
            ++position_;
    }

    /// Goes behind the string that starts here, or to the line's end when it is not closed. `marks` are its
    /// quotation mark, the backslash and the line feed.
    void skipString(const ByteSet& marks) {
        position_ = marks.next(text_, position_ + 1);
        while (position_ < text_.size() && text_[position_] == '\\') {
            ++position_;
            const bool escapesCharacter = position_ < text_.size() && text_[position_] != '\n';
            position_ = marks.next(text_, position_ + (escapesCharacter ? 1 : 0));
        }
        position_ = std::min(position_ + 1, text_.size());
    }

    /// Reads the tag whose "<" stands here and goes on behind it; nothing, and on to the line's end, when it
    /// is not closed on this line. What has no name is no tag.
    std::optional<ParsedTag> readTag() {
        ParsedTag tag;
        tag.isClosing = position_ + 1 < text_.size() && text_[position_ + 1] == '/';
        const std::size_t nameStart = position_ + (tag.isClosing ? 2 : 1);
        const std::size_t asciiEnd = endOfASCIIName(nameStart);
        const std::size_t nameEnd = endOfName(asciiEnd);

        position_ = tagEnd(nameEnd);
        if (position_ == text_.size() || text_[position_] == '\n')
            return std::nullopt;
        tag.isSelfClosed = text_[position_ - 1] == '/';
        ++position_;
        if (nameEnd == nameStart)
            return std::nullopt;
        const std::string_view name = text_.substr(nameStart, nameEnd - nameStart);
        tag.element = asciiEnd == nameEnd ? elementNamed(name) : elementNamedInUnicode(name);
        return tag;
    }

    std::size_t endOfASCIIName(std::size_t position) const {
        while (position < text_.size() && nameCharacters.contains(text_[position]))
            ++position;
        return position;
    }

    /// The end of a name, from the first character of it on that is not one of ASCII's.
    std::size_t endOfName(std::size_t position) const {
        while (position < text_.size() && static_cast<unsigned char>(text_[position]) >= 0x80) {
            const Utf8Character character = Utf8Character::first(text_.substr(position));
            const auto codePoint = static_cast<UChar32>(character.value);
            if (u_isalpha(codePoint) == 0 && u_isdigit(codePoint) == 0)
                break;
            position = endOfASCIIName(position + character.size);
        }
        return position;
    }

    /// The position of the ">" that ends a tag, or else of the line's end.
    std::size_t tagEnd(std::size_t position) const {
        for (;;) {
            position = tagMarks.next(text_, position);
            if (position == text_.size() || text_[position] == '>' || text_[position] == '\n')
                return position;
            const ByteSet& ends = text_[position] == '"' ? doubleQuotedValueEnds : singleQuotedValueEnds;
            position = ends.next(text_, position + 1);
            if (position == text_.size() || text_[position] == '\n')
                return position;
            ++position;
        }
    }

    void apply(const ParsedTag& tag) {
        if (tag.isClosing) {
            closeLevel();
        } else if (!tag.isSelfClosed && tag.element != Element::empty) {
            ++depth_;
            if (tag.element == Element::script)
                context_ = Context::script;
            else if (tag.element == Element::style)
                context_ = Context::style;
        }
    }

    void closeLevel() { depth_ -= depth_ > 0 ? 1 : 0; }

    /// Whether `lowercase`, ASCII, stands here but for capitals.
    bool standsHere(std::string_view lowercase) const {
        return ASCII::equals(text_.substr(position_, lowercase.size()), lowercase);
    }

    /// Goes behind the next `end` on this line, which may share characters with what stands here, or to the
    /// line's end.
    void skipBehind(std::string_view end) {
        const std::size_t found = text_.substr(0, lineEnd()).find(end, position_);
        position_ = found == std::string_view::npos ? lineEnd() : found + end.size();
    }

    std::size_t lineEnd() {
        if (lineEnd_ < position_)
            lineEnd_ = std::min(text_.find('\n', position_), text_.size());
        return lineEnd_;
    }

    std::string_view text_;
    std::size_t position_ = 0;

    /// Of the last line that was asked for; the current line's when it is not before the position.
    std::size_t lineEnd_;

    std::size_t depth_ = 0;

    /// Only markup opens another context, and each one leads back to it.
    Context context_ = Context::html;
};

} // namespace

std::string IndentationEngine::indentForNewLine(std::string_view precedingText) {
    std::string tabs(IndentationScan(precedingText).depth(), '\t');
    return tabs;
}

std::string IndentationEngine::reformat(std::string_view text) {
    return HTMLFormatter::format(text);
}

} // namespace corvanta
