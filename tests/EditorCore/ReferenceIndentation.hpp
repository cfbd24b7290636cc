#pragma once

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// The rules of the indentation, one after another, without a thought of speed: line by line, code point by
/// code point. What the quick engine answers must be this.
class ReferenceIndentation {
public:
    /// `text` is valid UTF-8.
    static std::string indentForNewLine(std::string_view text) {
        ReferenceIndentation state;
        for (const std::u32string& line : linesOf(text))
            state.scan(line);
        return std::string(state.depth_, '\t');
    }

private:
    enum class Context : std::uint8_t { html, script, style, phpBlock };
    using Line = std::u32string;

    struct ParsedTag {
        std::string name;
        bool isClosing = false;
        bool isSelfClosed = false;
    };

    static std::vector<Line> linesOf(std::string_view text) {
        const auto unicode = icu::UnicodeString::fromUTF8(
            icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
        std::vector<Line> lines(1);
        for (std::int32_t at = 0; at < unicode.length(); at = unicode.moveIndex32(at, 1)) {
            if (unicode.char32At(at) == '\n')
                lines.emplace_back();
            else
                lines.back() += static_cast<char32_t>(unicode.char32At(at));
        }
        return lines;
    }

    static std::string lowercased(const Line& text) {
        std::string result;
        icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(text.data()),
                                      static_cast<std::int32_t>(text.size()))
            .toLower(icu::Locale::getRoot())
            .toUTF8String(result);
        return result;
    }

    static bool matches(const Line& line, std::size_t at, std::string_view literal) {
        // Every literal starts with a sign, which has no case.
        return at < line.size() && line[at] == static_cast<char32_t>(literal.front()) &&
               lowercased(line.substr(at, literal.size())) == literal;
    }

    /// The position just behind the literal.
    static std::optional<std::size_t> find(const Line& line, std::size_t from, std::string_view literal) {
        for (std::size_t at = from; at < line.size(); ++at) {
            if (matches(line, at, literal))
                return at + literal.size();
        }
        return std::nullopt;
    }

    void scan(const Line& line) {
        bool isInSingleQuotes = false;
        bool isInDoubleQuotes = false;
        std::size_t k = 0;
        while (k < line.size()) {
            if (isInSingleQuotes || isInDoubleQuotes) {
                const char32_t mark = isInSingleQuotes ? U'\'' : U'"';
                if (line[k] == U'\\') {
                    ++k;
                } else if (line[k] == mark) {
                    isInSingleQuotes = false;
                    isInDoubleQuotes = false;
                }
                ++k;
                continue;
            }
            const Context context = contexts_.empty() ? Context::html : contexts_.back();
            if (context == Context::html) {
                k = scanMarkup(line, k);
                continue;
            }
            if (context == Context::phpBlock && matches(line, k, "?>")) {
                contexts_.pop_back();
                k += 2;
            } else if (matches(line, k, "/*")) {
                k = find(line, k, "*/").value_or(line.size());
            } else if (context != Context::style && matches(line, k, "//")) {
                k = line.size();
            } else if (context == Context::phpBlock && line[k] == U'#') {
                k = line.size();
            } else if (line[k] == U'"' || line[k] == U'\'') {
                (line[k] == U'"' ? isInDoubleQuotes : isInSingleQuotes) = true;
                ++k;
            } else if (line[k] == U'{') {
                ++depth_;
                ++k;
            } else if (line[k] == U'}') {
                lowerDepth();
                ++k;
            } else if ((context == Context::script && matches(line, k, "</script")) ||
                       (context == Context::style && matches(line, k, "</style"))) {
                std::optional<ParsedTag> tag;
                k = consumeTag(line, k, tag);
                if (tag)
                    apply(*tag);
                contexts_.pop_back();
            } else {
                ++k;
            }
        }
    }

    std::size_t scanMarkup(const Line& line, std::size_t k) {
        if (matches(line, k, "<!--"))
            return find(line, k, "-->").value_or(line.size());
        if (matches(line, k, "<?php")) {
            contexts_.push_back(Context::phpBlock);
            return k + 5;
        }
        if (matches(line, k, "<?=")) {
            contexts_.push_back(Context::phpBlock);
            return k + 3;
        }
        if (line[k] != U'<')
            return k + 1;
        std::optional<ParsedTag> tag;
        k = consumeTag(line, k, tag);
        if (tag)
            apply(*tag);
        return k;
    }

    static std::size_t consumeTag(const Line& line, std::size_t less, std::optional<ParsedTag>& tag) {
        const bool isClosing = less + 1 < line.size() && line[less + 1] == U'/';
        const std::size_t start = less + (isClosing ? 2 : 1);
        char32_t quote = 0;
        bool isReadingName = true;
        Line name;
        for (std::size_t at = start; at < line.size(); ++at) {
            const char32_t character = line[at];
            if (quote != 0) {
                if (character == quote)
                    quote = 0;
                continue;
            }
            if (character == U'>') {
                if (!name.empty())
                    tag = ParsedTag{lowercased(name), isClosing, at - 1 > less && line[at - 1] == U'/'};
                return at;
            }
            if (character == U'"' || character == U'\'')
                quote = character;
            const auto point = static_cast<UChar32>(character);
            const bool isNameCharacter =
                u_isalpha(point) != 0 || u_isdigit(point) != 0 || character == U'-' || character == U':';
            isReadingName = isReadingName && isNameCharacter;
            if (isReadingName)
                name += character;
        }
        return std::max(start, line.size());
    }

    void apply(const ParsedTag& tag) {
        static const std::set<std::string> voidElements{"area",  "base",   "br",    "col",  "embed",
                                                        "hr",    "img",    "input", "link", "meta",
                                                        "param", "source", "track", "wbr"};
        if (tag.isClosing) {
            lowerDepth();
        } else if (!tag.isSelfClosed && !voidElements.contains(tag.name)) {
            ++depth_;
            if (tag.name == "script")
                contexts_.push_back(Context::script);
            else if (tag.name == "style")
                contexts_.push_back(Context::style);
        }
    }

    void lowerDepth() {
        if (depth_ > 0)
            --depth_;
    }

    std::size_t depth_ = 0;
    std::vector<Context> contexts_{Context::html};
};

} // namespace corvanta
