#pragma once

#include "EditorCore/SyntaxKeywords.hpp"
#include "EditorCore/SyntaxSpan.hpp"

#include <unicode/unistr.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// The tokenizer's rules once more, slow and plain: over an array of UTF-16 code units, one unit at a time,
/// with a stack of contexts. The fast tokenizer must always agree with it. For well-formed UTF-8 only.
class ReferenceTokenizer {
public:
    static std::vector<SyntaxSpan> tokenize(std::string_view utf8) {
        const auto text = icu::UnicodeString::fromUTF8({utf8.data(), static_cast<std::int32_t>(utf8.size())});
        ReferenceTokenizer tokenizer(
            std::u16string(text.getBuffer(), static_cast<std::size_t>(text.length())));
        tokenizer.run();
        return tokenizer.spans_;
    }

private:
    using Position = std::size_t;
    enum class Context { html, script, style, php };

    explicit ReferenceTokenizer(std::u16string units) : units_(std::move(units)), end_(units_.size()) {}

    void run() {
        Position p = 0;
        while (p < end_) {
            switch (contexts_.empty() ? Context::html : contexts_.back()) {
            case Context::html:
                p = html(p);
                break;
            case Context::script:
                p = script(p);
                break;
            case Context::style:
                p = style(p);
                break;
            case Context::php:
                p = php(p);
                break;
            }
        }
    }

    Position html(Position p) {
        if (matches(u"<!--", p))
            return comment(p, u"-->", 4);
        for (const std::u16string_view opener : {u"<?php", u"<?="}) {
            if (matches(opener, p)) {
                span(p, p + opener.size(), SyntaxToken::keyword);
                contexts_.push_back(Context::php);
                return p + opener.size();
            }
        }
        if (units_[p] == u'<' && p + 1 < end_ &&
            (isLetter(p + 1) || units_[p + 1] == u'/' || units_[p + 1] == u'!'))
            return tag(p);
        return p + 1;
    }

    Position script(Position p) {
        if (matches(u"</script", p)) {
            contexts_.pop_back();
            return p;
        }
        if (matches(u"/*", p))
            return comment(p, u"*/", 2);
        if (matches(u"//", p))
            return lineComment(p);
        if (units_[p] == u'\'' || units_[p] == u'"' || units_[p] == u'`')
            return escapedString(p);
        if (isDigit(p))
            return number(p);
        if (isLetter(p) || units_[p] == u'_')
            return word(p, jsKeywords);
        return p + 1;
    }

    Position php(Position p) {
        if (matches(u"?>", p)) {
            span(p, p + 2, SyntaxToken::keyword);
            contexts_.pop_back();
            return p + 2;
        }
        if (matches(u"/*", p))
            return comment(p, u"*/", 2);
        if (matches(u"//", p) || units_[p] == u'#')
            return lineComment(p);
        if (units_[p] == u'\'' || units_[p] == u'"' || units_[p] == u'`')
            return escapedString(p);
        if (units_[p] == u'$') {
            Position q = p + 1;
            while (q < end_ && isWordCharacter(q))
                ++q;
            if (q > p + 1)
                span(p, q, SyntaxToken::attribute);
            return q;
        }
        if (isDigit(p))
            return number(p);
        if (isLetter(p) || units_[p] == u'_')
            return word(p, phpKeywords);
        return p + 1;
    }

    Position tag(Position p) {
        if (units_[p + 1] == u'!') {
            const Position q = after(u">", p + 1);
            span(p, q, SyntaxToken::tag);
            return q;
        }
        const bool isClosing = units_[p + 1] == u'/';
        const Position nameStart = isClosing ? p + 2 : p + 1;
        Position q = nameStart;
        while (q < end_ && isNameCharacter(q))
            ++q;
        const std::string name = lowercasedASCII(nameStart, q);
        span(p, q, SyntaxToken::tag);

        while (q < end_) {
            if (units_[q] == u'>') {
                span(q, q + 1, SyntaxToken::tag);
                ++q;
                break;
            }
            if (matches(u"/>", q)) {
                span(q, q + 2, SyntaxToken::tag);
                return q + 2;
            }
            if (units_[q] == u'\'' || units_[q] == u'"') {
                q = plainString(q);
            } else if (isLetter(q)) {
                const Position start = q;
                while (q < end_ && isNameCharacter(q))
                    ++q;
                span(start, q, SyntaxToken::attribute);
            } else {
                ++q;
            }
        }
        if (!isClosing && name == "script")
            contexts_.push_back(Context::script);
        else if (!isClosing && name == "style")
            contexts_.push_back(Context::style);
        return q;
    }

    Position style(Position p) {
        if (matches(u"</style", p)) {
            contexts_.pop_back();
            return p;
        }
        if (matches(u"/*", p))
            return comment(p, u"*/", 2);
        if (units_[p] == u'\'' || units_[p] == u'"')
            return plainString(p);
        if (units_[p] == u'#') {
            Position q = p + 1;
            while (q < end_ && isHexDigit(q))
                ++q;
            if (q - p >= 4)
                span(p, q, SyntaxToken::number);
            return q;
        }
        if (isDigit(p)) {
            Position q = p;
            while (q < end_ &&
                   (isDigit(q) || isLetter(q) || units_[q] == u'.' || units_[q] == u'_' || units_[q] == u'%'))
                ++q;
            span(p, q, SyntaxToken::number);
            return q;
        }
        if (isLetter(p) || units_[p] == u'-') {
            Position q = p;
            while (q < end_ && (isWordCharacter(q) || units_[q] == u'-'))
                ++q;
            Position next = q;
            while (next < end_ && (units_[next] == u' ' || units_[next] == u'\t'))
                ++next;
            if (next < end_ && units_[next] == u':')
                span(p, q, SyntaxToken::attribute);
            return q;
        }
        return p + 1;
    }

    Position comment(Position p, std::u16string_view closing, Position openerLength) {
        const Position q = after(closing, p + openerLength);
        span(p, q, SyntaxToken::comment);
        return q;
    }

    Position lineComment(Position p) {
        Position q = p;
        while (q < end_ && units_[q] != u'\n')
            ++q;
        span(p, q, SyntaxToken::comment);
        return q;
    }

    Position plainString(Position p) {
        Position q = p + 1;
        while (q < end_ && units_[q] != units_[p])
            ++q;
        q = std::min(q + 1, end_);
        span(p, q, SyntaxToken::string);
        return q;
    }

    Position escapedString(Position p) {
        Position q = p + 1;
        bool isClosed = false;
        while (q < end_ && !isClosed) {
            isClosed = units_[q] == units_[p];
            q += units_[q] == u'\\' ? 2U : 1U;
        }
        q = std::min(q, end_);
        span(p, q, SyntaxToken::string);
        return q;
    }

    Position number(Position p) {
        Position q = p;
        while (q < end_ && (isDigit(q) || units_[q] == u'.' || units_[q] == u'_'))
            ++q;
        span(p, q, SyntaxToken::number);
        return q;
    }

    Position word(Position p, const auto& keywords) {
        Position q = p;
        while (q < end_ && isWordCharacter(q))
            ++q;
        if (std::find(keywords.begin(), keywords.end(), lowercasedASCII(p, q)) != keywords.end())
            span(p, q, SyntaxToken::keyword);
        return q;
    }

    void span(Position start, Position end, SyntaxToken token) {
        if (end > start)
            spans_.push_back(
                {{static_cast<std::int64_t>(start), static_cast<std::int64_t>(end - start)}, token});
    }

    static char16_t folded(char16_t unit) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
    }

    bool matches(std::u16string_view literal, Position p) const {
        if (p + literal.size() > end_)
            return false;
        for (Position i = 0; i < literal.size(); ++i) {
            if (folded(units_[p + i]) != folded(literal[i]))
                return false;
        }
        return true;
    }

    /// The position after the next `literal`, or the end.
    Position after(std::u16string_view literal, Position p) const {
        for (; p < end_; ++p) {
            if (matches(literal, p))
                return p + literal.size();
        }
        return end_;
    }

    /// The ASCII text from `start` to `end`.
    std::string lowercasedASCII(Position start, Position end) const {
        std::string text;
        for (Position i = start; i < end; ++i)
            text += static_cast<char>(folded(units_[i]));
        return text;
    }

    bool isLetter(Position p) const { return folded(units_[p]) >= u'a' && folded(units_[p]) <= u'z'; }
    bool isDigit(Position p) const { return units_[p] >= u'0' && units_[p] <= u'9'; }
    bool isHexDigit(Position p) const {
        return isDigit(p) || (folded(units_[p]) >= u'a' && folded(units_[p]) <= u'f');
    }
    bool isWordCharacter(Position p) const { return isLetter(p) || isDigit(p) || units_[p] == u'_'; }
    bool isNameCharacter(Position p) const {
        return isWordCharacter(p) || units_[p] == u'-' || units_[p] == u':';
    }

    std::u16string units_;
    Position end_;
    std::vector<Context> contexts_{Context::html};
    std::vector<SyntaxSpan> spans_;
};

} // namespace corvanta
