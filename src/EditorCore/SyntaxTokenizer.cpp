#include "EditorCore/SyntaxTokenizer.hpp"

#include "EditorCore/ASCII.hpp"
#include "EditorCore/ByteSearch.hpp"
#include "EditorCore/ByteWord.hpp"
#include "EditorCore/CharacterTable.hpp"
#include "EditorCore/CodeUnitCursor.hpp"
#include "EditorCore/KeywordSet.hpp"
#include "EditorCore/SyntaxKeywords.hpp"

#include <algorithm>
#include <cstring>

namespace corvanta {

namespace {

constexpr KeywordSet jsKeywordSet(jsKeywords);
constexpr KeywordSet phpKeywordSet(phpKeywords);

/// One run over a text. Every `read…` takes the position of the first byte of what it reads and returns the
/// position after it. All positions count bytes: the languages' own characters are ASCII, and the bytes of
/// any other character are passed over one by one without harm.
class Scan {
public:
    /// Appends to `spans` what stands behind `start`. If `consume` is given, it is shown the spans whenever
    /// there is no room for more, and they are removed.
    Scan(std::string_view text, const SyntaxCheckpoint& start, std::vector<SyntaxSpan>& spans,
         const SyntaxTokenizer::Consume* consume = nullptr)
        : text_(text),
          cursor_(text, static_cast<std::size_t>(start.byte), start.codeUnit),
          start_(static_cast<std::size_t>(start.byte)),
          context_(start.context),
          spans_(spans),
          consume_(consume) {}

    void run() {
        for (std::size_t position = start_; position < text_.size();)
            position = read(position);
    }

    void run(const SyntaxTokenizer::Visit& visit) {
        std::int64_t nextVisit = 0;
        for (std::size_t position = start_; position < text_.size(); position = read(position)) {
            if (static_cast<std::int64_t>(position) < nextVisit || !isCheckpoint(position))
                continue;
            nextVisit = visit(spans_, checkpoint(position));
            if (nextVisit == SyntaxTokenizer::stop)
                return;
            spans_.clear();
        }
        visit(spans_, checkpoint(text_.size()));
    }

private:
    /// Whether what was read before `position` would have been read the same whatever stands more than
    /// `SyntaxTokenizer::lookAhead` bytes behind it. A style sheet's word depends on what follows the blanks
    /// after it.
    bool isCheckpoint(std::size_t position) const {
        return context_ != SyntaxContext::style || (text_[position] != ' ' && text_[position] != '\t');
    }

    SyntaxCheckpoint checkpoint(std::size_t position) {
        return {static_cast<std::int64_t>(position), cursor_.codeUnits(position, position).location,
                context_};
    }

    std::size_t read(std::size_t position) {
        switch (context_) {
        case SyntaxContext::html:
            return readMarkup(position);
        case SyntaxContext::script:
            return readScript(position);
        case SyntaxContext::style:
            return readStyle(position);
        case SyntaxContext::php:
            return readPHP(position);
        }
        return text_.size();
    }

    std::size_t readMarkup(std::size_t position) {
        if (text_[position] != '<')
            position = find('<', position);
        const std::size_t next = position + 1;
        if (next >= text_.size())
            return text_.size();
        if (isA(CharacterTable::letter, next))
            return readOpeningTag(position);
        switch (text_[next]) {
        case '/':
            return readRestOfTag(emit(position, endOfName(position + 2), SyntaxToken::tag)).end;
        case '!':
            return readDeclaration(position);
        case '?':
            return readOpenerOfPHP(position);
        default:
            return next;
        }
    }

    std::size_t readDeclaration(std::size_t position) {
        if (matches("<!--", position))
            return emit(position, endAfter("-->", position + 4), SyntaxToken::comment);
        return emit(position, endAfter('>', position + 1), SyntaxToken::tag);
    }

    std::size_t readOpenerOfPHP(std::size_t position) {
        for (const std::string_view opener : {"<?php", "<?="}) {
            if (matches(opener, position)) {
                context_ = SyntaxContext::php;
                return emit(position, position + opener.size(), SyntaxToken::keyword);
            }
        }
        return position + 1;
    }

    std::size_t readOpeningTag(std::size_t position) {
        const std::size_t nameStart = position + 1;
        const std::size_t nameEnd = emit(position, endOfName(nameStart), SyntaxToken::tag);
        const RestOfTag rest = readRestOfTag(nameEnd);
        if (!rest.isSelfClosed)
            context_ = contextInside(text_.substr(nameStart, nameEnd - nameStart));
        return rest.end;
    }

    struct RestOfTag {
        std::size_t end = 0;
        bool isSelfClosed = false;
    };

    /// What comes after the name.
    RestOfTag readRestOfTag(std::size_t position) {
        while (position < text_.size()) {
            const char character = text_[position];
            if (isA(CharacterTable::letter, position)) {
                position = emit(position, endOfName(position), SyntaxToken::attribute);
                continue;
            }
            switch (character) {
            case '>':
                return {emit(position, position + 1, SyntaxToken::tag)};
            case '"':
            case '\'':
                position = emit(position, endAfter(character, position + 1), SyntaxToken::string);
                break;
            case '/':
                if (isAt('>', position + 1))
                    return {emit(position, position + 2, SyntaxToken::tag), true};
                ++position;
                break;
            default:
                ++position;
            }
        }
        return {position};
    }

    static SyntaxContext contextInside(std::string_view tagName) {
        if (ASCII::equals(tagName, "script"))
            return SyntaxContext::script;
        if (ASCII::equals(tagName, "style"))
            return SyntaxContext::style;
        return SyntaxContext::html;
    }

    std::size_t readScript(std::size_t position) {
        position = next(CharacterTable::codeStart, position);
        if (position == text_.size())
            return position;
        switch (text_[position]) {
        case '<':
            return readCloserOf("</script", position);
        case '#':
        case '$':
        case '?':
            return position + 1;
        default:
            return readCode(position, jsKeywordSet);
        }
    }

    std::size_t readPHP(std::size_t position) {
        position = next(CharacterTable::codeStart, position);
        if (position == text_.size())
            return position;
        switch (text_[position]) {
        case '?':
            return readCloserOfPHP(position);
        case '#':
            return readLineComment(position);
        case '$':
            return readVariable(position);
        case '<':
            return position + 1;
        default:
            return readCode(position, phpKeywordSet);
        }
    }

    /// What scripts and PHP have in common: `position` is at a word, a number, a quote or a slash.
    std::size_t readCode(std::size_t position, const KeywordSet& keywords) {
        if (isA(CharacterTable::wordStart, position))
            return readWord(position, keywords);
        if (isA(CharacterTable::digit, position))
            return emit(position, endOfRun(CharacterTable::numberCharacter, position), SyntaxToken::number);
        if (text_[position] != '/')
            return emit(position, endOfEscapedString(position), SyntaxToken::string);
        if (isAt('*', position + 1))
            return emit(position, endAfter("*/", position + 2), SyntaxToken::comment);
        if (isAt('/', position + 1))
            return readLineComment(position);
        return position + 1;
    }

    std::size_t readWord(std::size_t position, const KeywordSet& keywords) {
        const std::size_t end = endOfWord(position);
        if (keywords.contains(text_.substr(position, end - position)))
            emit(position, end, SyntaxToken::keyword);
        return end;
    }

    std::size_t readLineComment(std::size_t position) {
        return emit(position, find('\n', position), SyntaxToken::comment);
    }

    std::size_t readVariable(std::size_t position) {
        const std::size_t end = endOfWord(position + 1);
        if (end > position + 1)
            emit(position, end, SyntaxToken::attribute);
        return end;
    }

    /// Leaves the "<" to the markup when the element's closing tag starts with it.
    std::size_t readCloserOf(std::string_view closingTag, std::size_t position) {
        if (!matches(closingTag, position))
            return position + 1;
        context_ = SyntaxContext::html;
        return position;
    }

    std::size_t readCloserOfPHP(std::size_t position) {
        if (!isAt('>', position + 1))
            return position + 1;
        context_ = SyntaxContext::html;
        return emit(position, position + 2, SyntaxToken::keyword);
    }

    std::size_t readStyle(std::size_t position) {
        position = next(CharacterTable::styleStart, position);
        if (position == text_.size())
            return position;
        if (isA(CharacterTable::styleWordStart, position))
            return readStyleWord(position);
        if (isA(CharacterTable::digit, position)) {
            const std::size_t end = endOfRun(CharacterTable::styleNumberCharacter, position);
            return emit(position, end, SyntaxToken::number);
        }

        const char character = text_[position];
        switch (character) {
        case '<':
            return readCloserOf("</style", position);
        case '#':
            return readColor(position);
        case '"':
        case '\'':
            return emit(position, endAfter(character, position + 1), SyntaxToken::string);
        case '/':
            if (isAt('*', position + 1))
                return emit(position, endAfter("*/", position + 2), SyntaxToken::comment);
            return position + 1;
        default:
            return position + 1;
        }
    }

    /// The shortest colour is "#" and three digits.
    std::size_t readColor(std::size_t position) {
        const std::size_t end = endOfRun(CharacterTable::hexDigit, position + 1);
        if (end - position >= 4)
            emit(position, end, SyntaxToken::number);
        return end;
    }

    std::size_t readStyleWord(std::size_t position) {
        const std::size_t end = endOfRun(CharacterTable::styleWordCharacter, position);
        std::size_t next = end;
        while (next < text_.size() && (text_[next] == ' ' || text_[next] == '\t'))
            ++next;
        if (next < text_.size() && text_[next] == ':')
            emit(position, end, SyntaxToken::attribute);
        return end;
    }

    bool isA(CharacterTable::Classes classes, std::size_t position) const {
        return characterTable.is(text_[position], classes);
    }

    std::size_t endOfRun(CharacterTable::Classes classes, std::size_t position) const {
        return characterTable.endOfRun(classes, text_, position);
    }

    std::size_t next(CharacterTable::Classes classes, std::size_t position) const {
        return characterTable.next(classes, text_, position);
    }

    std::size_t endOfName(std::size_t position) const {
        if (text_.size() - position >= ByteWord::size) {
            const ByteWord bytes(text_.data() + position);
            const auto name =
                bytes.letters() | bytes.inRange('0', ':') | bytes.equalTo('-') | bytes.equalTo('_');
            position += ByteWord::first(ByteWord::others(name));
            if (ByteWord::others(name) != 0)
                return position;
        }
        return endOfRun(CharacterTable::nameCharacter, position);
    }

    std::size_t endOfWord(std::size_t position) const {
        if (text_.size() - position >= ByteWord::size) {
            const ByteWord bytes(text_.data() + position);
            const auto word = bytes.letters() | bytes.inRange('0', '9') | bytes.equalTo('_');
            position += ByteWord::first(ByteWord::others(word));
            if (ByteWord::others(word) != 0)
                return position;
        }
        return endOfRun(CharacterTable::wordCharacter, position);
    }

    bool isAt(char character, std::size_t position) const {
        return position < text_.size() && text_[position] == character;
    }

    /// Whether `lowercase` stands at `position`, in small letters or ASCII capitals.
    bool matches(std::string_view lowercase, std::size_t position) const {
        return position + lowercase.size() <= text_.size() &&
               ASCII::equals(text_.substr(position, lowercase.size()), lowercase);
    }

    /// The position of the next `character`, or the end of the text.
    std::size_t find(char character, std::size_t position) const {
        const void* found = std::memchr(text_.data() + position, character, text_.size() - position);
        return found == nullptr ? text_.size()
                                : static_cast<std::size_t>(static_cast<const char*>(found) - text_.data());
    }

    /// The position after the next `character`, or the end of the text.
    std::size_t endAfter(char character, std::size_t position) const {
        return std::min(find(character, position) + 1, text_.size());
    }

    /// The position after the next `closing`, or the end of the text.
    std::size_t endAfter(std::string_view closing, std::size_t position) const {
        return ByteSearch::endAfter(closing, text_, position);
    }

    /// The end of the string that starts with the quote at `position`; a backslash hides the character after
    /// it.
    std::size_t endOfEscapedString(std::size_t position) const {
        const char quote = text_[position];
        for (position = ByteSearch::next(text_, position + 1, quote, '\\'); position < text_.size();
             position = ByteSearch::next(text_, position + 2, quote, '\\')) {
            if (text_[position] == quote)
                return position + 1;
        }
        return text_.size();
    }

    /// Returns `end`.
    std::size_t emit(std::size_t start, std::size_t end, SyntaxToken token) {
        if (spans_.size() == spans_.capacity())
            makeRoom(end);
        spans_.push_back({cursor_.codeUnits(start, end), token});
        return end;
    }

    void makeRoom(std::size_t position) {
        if (consume_ == nullptr) {
            grow(position);
            return;
        }
        (*consume_)(spans_);
        spans_.clear();
    }

    /// Expects the rest of the text to be as dense in spans as the text before `position`, or somewhat
    /// denser: room that stays empty costs nothing. The list of a large page is larger than the page: writing
    /// it to fresh memory costs more than the scan, moving it as it grows twice that. The first few spans may
    /// mislead, so a list that is far too small grows in steps, of which none ends shortly before the last.
    void grow(std::size_t position) {
        constexpr std::size_t firstGuess = 1024;
        constexpr std::size_t step = 16;
        const double perByte = static_cast<double>(spans_.size()) / static_cast<double>(position);
        const auto expected = static_cast<std::size_t>(perByte * static_cast<double>(text_.size()) * 1.25);
        const std::size_t least = spans_.size() * 3 / 2 + firstGuess;
        const bool isFarTooSmall = expected > spans_.size() * step * 2;
        spans_.reserve(std::max(least, isFarTooSmall ? spans_.size() * step : expected));
    }

    std::string_view text_;
    CodeUnitCursor cursor_;
    std::size_t start_;
    SyntaxContext context_;
    std::vector<SyntaxSpan>& spans_;
    const SyntaxTokenizer::Consume* consume_;
};

} // namespace

std::vector<SyntaxSpan> SyntaxTokenizer::tokenize(std::string_view text) {
    std::vector<SyntaxSpan> spans;
    Scan(text, {}, spans).run();
    return spans;
}

void SyntaxTokenizer::tokenize(std::string_view text, const Consume& consume) {
    // What is read next stays in the processor's first cache.
    constexpr std::size_t atATime = 512;
    std::vector<SyntaxSpan> spans;
    spans.reserve(atATime);
    Scan(text, {}, spans, &consume).run();
    consume(spans);
}

void SyntaxTokenizer::resume(std::string_view text, const SyntaxCheckpoint& checkpoint, const Visit& visit) {
    std::vector<SyntaxSpan> spans;
    Scan(text, checkpoint, spans).run(visit);
}

} // namespace corvanta
