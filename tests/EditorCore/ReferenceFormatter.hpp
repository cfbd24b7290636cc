#pragma once

#include "EditorCore/Utf8.hpp"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvanta {

/// The formatter's rules once more, slow and plain: over an array of code points, with a tree of nodes and
/// recursion over it, and lists of lines that are joined at the end. The fast formatter must always agree
/// with it. For well-formed UTF-8 only, and for nesting that the stack can hold.
class ReferenceFormatter {
public:
    using Text = std::u32string;

    static std::string format(std::string_view utf8) {
        const Text text = decoded(utf8);
        Lines lines;
        render(Parser(text).parse(), 0, lines);
        while (!lines.empty() && lines.back().empty())
            lines.pop_back();
        Text result;
        for (std::size_t index = 0; index < lines.size(); ++index)
            result += (index == 0 ? U"" : U"\n") + lines[index];
        if (!text.empty() && text.back() == '\n' && !result.empty())
            result += '\n';
        return encoded(result);
    }

    /// The contents of the elements whose every blank counts, in the order of the text.
    static std::vector<std::string> literalContents(std::string_view utf8) {
        const Text text = decoded(utf8);
        std::vector<std::string> contents;
        collectLiteralContents(Parser(text).parse(), contents);
        return contents;
    }

private:
    using Lines = std::vector<Text>;
    using Names = std::set<Text>;

    enum class Kind { text, comment, doctype, php, rawElement, element };

    struct Node {
        Kind kind = Kind::text;
        /// Of text, comment, doctype and php.
        Text text;
        Text name;
        Text openTag;
        /// Of a raw element.
        Text content;
        std::optional<Text> closeTag;
        std::vector<Node> children;
    };
    using Nodes = std::vector<Node>;

    inline static const Names inlineElements{
        U"a",    U"abbr", U"acronym", U"b",   U"bdi",  U"bdo",   U"big",    U"br",       U"cite",
        U"code", U"data", U"del",     U"dfn", U"em",   U"font",  U"i",      U"img",      U"input",
        U"ins",  U"kbd",  U"label",   U"map", U"mark", U"meter", U"output", U"progress", U"q",
        U"rp",   U"rt",   U"ruby",    U"s",   U"samp", U"small", U"span",   U"strong",   U"sub",
        U"sup",  U"time", U"tt",      U"u",   U"var",  U"wbr"};
    inline static const Names alwaysBlockContainers{
        U"html",     U"head",       U"body",    U"div",    U"section",  U"article",  U"header",
        U"footer",   U"nav",        U"main",    U"aside",  U"form",     U"fieldset", U"table",
        U"thead",    U"tbody",      U"tfoot",   U"tr",     U"ul",       U"ol",       U"dl",
        U"figure",   U"blockquote", U"details", U"select", U"optgroup", U"colgroup", U"template",
        U"noscript", U"address",    U"hgroup",  U"menu",   U"dialog",   U"picture"};
    inline static const Names voidElements{U"area",  U"base", U"br",   U"col",   U"embed",  U"hr",    U"img",
                                           U"input", U"link", U"meta", U"param", U"source", U"track", U"wbr"};
    inline static const Names rawTextElements{U"script", U"style", U"pre", U"textarea"};
    inline static const Names literalWhitespaceElements{U"pre", U"textarea"};

    static Text decoded(std::string_view utf8) {
        const auto units =
            icu::UnicodeString::fromUTF8({utf8.data(), static_cast<std::int32_t>(utf8.size())});
        Text text;
        for (std::int32_t index = 0; index < units.length(); index = units.moveIndex32(index, 1))
            text += static_cast<char32_t>(units.char32At(index));
        return text;
    }

    static std::string encoded(const Text& text) {
        std::string utf8;
        for (const char32_t character : text)
            Utf8::append(utf8, character);
        return utf8;
    }

    static char32_t lower(char32_t character) {
        return static_cast<char32_t>(u_tolower(static_cast<UChar32>(character)));
    }
    static bool isLetter(char32_t character) { return u_isalpha(static_cast<UChar32>(character)) != 0; }
    static bool isDigit(char32_t character) { return u_isdigit(static_cast<UChar32>(character)) != 0; }
    static bool isSpace(char32_t character) { return Text(U"\t\n\f\r ").find(character) != Text::npos; }

    static Text trimmed(const Text& text, const Text& characters) {
        const std::size_t start = text.find_first_not_of(characters);
        return start == Text::npos ? Text()
                                   : text.substr(start, text.find_last_not_of(characters) + 1 - start);
    }
    static Text trimmedOfSpace(const Text& text) { return trimmed(text, U"\t\n\f\r "); }

    static std::vector<Text> split(const Text& text) {
        std::vector<Text> pieces(1);
        for (const char32_t character : text) {
            if (character == '\n')
                pieces.emplace_back();
            else
                pieces.back() += character;
        }
        return pieces;
    }

    class Parser {
    public:
        explicit Parser(const Text& text) : text_(text) { stack_.emplace_back(); }

        Nodes parse() {
            std::size_t position = 0;
            while (position < text_.size())
                position = step(position);
            flush();
            while (stack_.size() > 1)
                pop();
            return stack_.front().children;
        }

    private:
        std::size_t step(std::size_t i) {
            if (text_[i] != '<')
                return keep(i);
            if (matches(i, U"<!--"))
                return construct(Kind::comment, i, find(U"-->", i + 4), 3);
            if (matches(i, U"<!"))
                return construct(Kind::doctype, i, find(U">", i), 1);
            if (matches(i, U"<?"))
                return construct(Kind::php, i, find(U"?>", i + 2), 2);
            if (matches(i, U"</"))
                return closingTag(i);
            if (i + 1 < text_.size() && (isLetter(text_[i + 1]) || text_[i + 1] == '_'))
                return openingTag(i);
            return keep(i);
        }

        std::size_t keep(std::size_t i) {
            buffer_ += text_[i];
            return i + 1;
        }

        std::size_t construct(Kind kind, std::size_t i, std::optional<std::size_t> found,
                              std::size_t length) {
            const std::size_t end = found ? *found + length : text_.size();
            Node node;
            node.kind = kind;
            node.text = text_.substr(i, end - i);
            append(node);
            return end;
        }

        std::size_t closingTag(std::size_t i) {
            const auto found = find(U">", i);
            if (!found)
                return keep(i);
            const Text tag = text_.substr(i, *found + 1 - i);
            const Text name = tagName(i + 2);
            std::size_t level = stack_.size() - 1;
            while (level > 0 && stack_[level].name != name)
                --level;
            if (level == 0) {
                Node node;
                node.text = tag;
                append(node);
                return *found + 1;
            }
            flush();
            while (stack_.size() - 1 > level)
                pop();
            stack_.back().closeTag = tag;
            pop();
            return *found + 1;
        }

        std::size_t openingTag(std::size_t i) {
            const auto end = scanOpenTag(i);
            if (!end)
                return keep(i);
            const bool isSelfClosed = text_[*end - 1] == '/' && *end - 1 > i;
            Node node;
            node.kind = Kind::element;
            node.name = tagName(i + 1);
            node.openTag = text_.substr(i, *end + 1 - i);
            if (rawTextElements.contains(node.name) && !isSelfClosed) {
                const auto close = findCloseTag(*end + 1, node.name);
                const auto closeEnd = close ? find(U">", *close) : std::nullopt;
                if (closeEnd) {
                    node.kind = Kind::rawElement;
                    node.content = text_.substr(*end + 1, *close - *end - 1);
                    node.closeTag = text_.substr(*close, *closeEnd + 1 - *close);
                    append(node);
                    return *closeEnd + 1;
                }
            }
            if (isSelfClosed || voidElements.contains(node.name)) {
                append(node);
            } else {
                flush();
                stack_.push_back(node);
            }
            return *end + 1;
        }

        void flush() {
            if (buffer_.empty())
                return;
            Node node;
            node.text = buffer_;
            buffer_.clear();
            stack_.back().children.push_back(node);
        }

        void append(const Node& node) {
            flush();
            stack_.back().children.push_back(node);
        }

        void pop() {
            Node node = std::move(stack_.back());
            stack_.pop_back();
            stack_.back().children.push_back(std::move(node));
        }

        bool matches(std::size_t at, const Text& literal) const {
            if (at + literal.size() > text_.size())
                return false;
            for (std::size_t index = 0; index < literal.size(); ++index) {
                if (lower(text_[at + index]) != literal[index])
                    return false;
            }
            return true;
        }

        std::optional<std::size_t> find(const Text& literal, std::size_t from) const {
            for (std::size_t at = from; at + literal.size() <= text_.size(); ++at) {
                if (matches(at, literal))
                    return at;
            }
            return std::nullopt;
        }

        Text tagName(std::size_t from) const {
            Text name;
            for (std::size_t at = from; at < text_.size(); ++at) {
                const char32_t character = text_[at];
                if (!isLetter(character) && !isDigit(character) &&
                    Text(U"-:_.").find(character) == Text::npos)
                    break;
                name += lower(character);
            }
            return name;
        }

        std::optional<std::size_t> scanOpenTag(std::size_t from) const {
            char32_t quote = 0;
            for (std::size_t at = from; at < text_.size(); ++at) {
                const char32_t character = text_[at];
                if (quote != 0) {
                    if (character == quote)
                        quote = 0;
                } else if (character == '"' || character == '\'') {
                    quote = character;
                } else if (character == '>') {
                    return at;
                }
            }
            return std::nullopt;
        }

        std::optional<std::size_t> findCloseTag(std::size_t from, const Text& name) const {
            for (auto at = find(U"</" + name, from); at; at = find(U"</" + name, *at + 1)) {
                const std::size_t after = *at + 2 + name.size();
                if (after == text_.size())
                    return std::nullopt;
                if (text_[after] == '>' || text_[after] == '/' || isSpace(text_[after]))
                    return at;
            }
            return std::nullopt;
        }

        const Text& text_;
        Text buffer_;
        Nodes stack_;
    };

    static Text indent(std::size_t depth) { return Text(depth, '\t'); }

    static void render(const Nodes& nodes, std::size_t depth, Lines& lines) {
        Nodes run;
        for (const Node& node : nodes) {
            const bool joins = node.kind == Kind::text ||
                               (node.kind == Kind::php && node.text.find('\n') == Text::npos) ||
                               (node.kind == Kind::element && inlineElements.contains(node.name));
            if (joins) {
                run.push_back(node);
                continue;
            }
            flushRun(run, depth, lines);
            renderBlock(node, depth, lines);
        }
        flushRun(run, depth, lines);
    }

    static void flushRun(Nodes& run, std::size_t depth, Lines& lines) {
        const Nodes nodes = std::exchange(run, {});
        if (nodes.empty())
            return;
        Text whole;
        for (const Node& node : nodes)
            whole += node.kind == Kind::text ? node.text : renderInline(node);
        if (trimmedOfSpace(whole).empty()) {
            if (std::count(whole.begin(), whole.end(), '\n') >= 2 && !lines.empty() && !lines.back().empty())
                lines.emplace_back();
            return;
        }
        Lines laidOut(1);
        for (const Node& node : nodes) {
            if (node.kind != Kind::text) {
                laidOut.back() += renderInline(node);
                continue;
            }
            const auto pieces = split(collapseSpacesKeepNewlines(node.text));
            laidOut.back() += pieces.front();
            laidOut.insert(laidOut.end(), pieces.begin() + 1, pieces.end());
        }
        for (const Text& line : laidOut) {
            if (!trimmed(line, U" \t").empty())
                lines.push_back(indent(depth) + trimmed(line, U" \t"));
        }
    }

    static Text renderInline(const Node& node) {
        switch (node.kind) {
        case Kind::text:
            return collapse(node.text);
        case Kind::rawElement:
            return node.openTag + node.content + *node.closeTag;
        case Kind::element:
            return node.openTag + renderInline(node.children) + node.closeTag.value_or(Text());
        default:
            return node.text;
        }
    }

    static Text renderInline(const Nodes& nodes) {
        Text text;
        for (const Node& node : nodes)
            text += renderInline(node);
        return text;
    }

    static void renderBlock(const Node& node, std::size_t depth, Lines& lines) {
        switch (node.kind) {
        case Kind::php:
            reindentCode(node.text, depth, lines);
            break;
        case Kind::rawElement:
            renderRawElement(node, depth, lines);
            break;
        case Kind::element:
            renderElement(node, depth, lines);
            break;
        default:
            lines.push_back(indent(depth) + node.text);
            break;
        }
    }

    static void renderRawElement(const Node& node, std::size_t depth, Lines& lines) {
        if (literalWhitespaceElements.contains(node.name)) {
            lines.push_back(indent(depth) + node.openTag + node.content + *node.closeTag);
        } else if (trimmedOfSpace(node.content).empty()) {
            lines.push_back(indent(depth) + node.openTag + *node.closeTag);
        } else {
            lines.push_back(indent(depth) + node.openTag);
            reindentCode(node.content, depth + 1, lines);
            lines.push_back(indent(depth) + *node.closeTag);
        }
    }

    static void renderElement(const Node& node, std::size_t depth, Lines& lines) {
        if (!node.closeTag || shouldCascade(node)) {
            lines.push_back(indent(depth) + node.openTag);
            render(node.children, depth + 1, lines);
            if (node.closeTag)
                lines.push_back(indent(depth) + *node.closeTag);
            return;
        }
        lines.push_back(indent(depth) + node.openTag + trimmedOfSpace(renderInline(node.children)) +
                        *node.closeTag);
    }

    static bool shouldCascade(const Node& element) {
        if (alwaysBlockContainers.contains(element.name))
            return true;
        return std::any_of(element.children.begin(), element.children.end(), [](const Node& child) {
            switch (child.kind) {
            case Kind::text:
                return false;
            case Kind::php:
                return child.text.find('\n') != Text::npos;
            case Kind::element:
                return !inlineElements.contains(child.name);
            default:
                return true;
            }
        });
    }

    static void reindentCode(const Text& code, std::size_t baseDepth, Lines& lines) {
        Lines output;
        int relative = 0;
        for (const Text& codeLine : split(code)) {
            const Text line = trimmed(codeLine, U" \t\r");
            if (line.empty()) {
                output.emplace_back();
                continue;
            }
            const bool closes = Text(U"})]").find(line.front()) != Text::npos;
            const int level = closes ? std::max(relative - 1, 0) : relative;
            output.push_back(indent(baseDepth + static_cast<std::size_t>(level)) + line);
            relative = std::max(relative + braceDelta(line), 0);
        }
        while (!output.empty() && output.back().empty())
            output.pop_back();
        const auto first =
            std::find_if(output.begin(), output.end(), [](const Text& line) { return !line.empty(); });
        lines.insert(lines.end(), first, output.end());
    }

    static int braceDelta(const Text& line) {
        int delta = 0;
        char32_t quote = 0;
        for (std::size_t at = 0; at < line.size(); ++at) {
            const char32_t character = line[at];
            if (quote != 0) {
                if (character == '\\')
                    ++at;
                else if (character == quote)
                    quote = 0;
            } else if (character == '"' || character == '\'' || character == '`') {
                quote = character;
            } else if (character == '/' && at + 1 < line.size() && line[at + 1] == '/') {
                break;
            } else if (character == '{') {
                ++delta;
            } else if (character == '}') {
                --delta;
            }
        }
        return delta;
    }

    static Text collapse(const Text& text) {
        Text result;
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (!isSpace(text[at]))
                result += text[at];
            else if (at == 0 || !isSpace(text[at - 1]))
                result += ' ';
        }
        return result;
    }

    static Text collapseSpacesKeepNewlines(const Text& text) {
        const auto isBlank = [](char32_t character) { return isSpace(character) && character != '\n'; };
        Text result;
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (!isBlank(text[at]))
                result += text[at];
            else if (at == 0 || !isBlank(text[at - 1]))
                result += ' ';
        }
        return result;
    }

    static void collectLiteralContents(const Nodes& nodes, std::vector<std::string>& contents) {
        for (const Node& node : nodes) {
            if (node.kind == Kind::rawElement && literalWhitespaceElements.contains(node.name))
                contents.push_back(encoded(node.content));
            collectLiteralContents(node.children, contents);
        }
    }
};

} // namespace corvanta
