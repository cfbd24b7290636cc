#include "EditorCore/TextSearch.hpp"

#include "EditorCore/Utf8Character.hpp"

#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

#include <algorithm>
#include <array>
#include <utility>

namespace corvanta {

namespace {

using Clock = std::chrono::steady_clock;

/// How long one attempt to match may take: an expression can need more time than there is on a short text.
constexpr auto longestAttempt = std::chrono::milliseconds(50);

/// Memory for going back to earlier choices within one attempt, in bytes.
constexpr std::int32_t backtrackingMemory = 4 * 1024 * 1024;

char32_t folded(char32_t character) {
    if (character < 0x80)
        return character >= U'A' && character <= U'Z' ? character + 0x20 : character;
    return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(character), U_FOLD_CASE_DEFAULT));
}

/// A text of ICU's on our bytes, which it does not copy; its places are bytes.
class BytesAsText {
public:
    explicit BytesAsText(std::string_view bytes) {
        UErrorCode status = U_ZERO_ERROR;
        utext_openUTF8(&text_, bytes.data(), static_cast<std::int64_t>(bytes.size()), &status);
    }
    BytesAsText(const BytesAsText&) = delete;
    BytesAsText& operator=(const BytesAsText&) = delete;
    ~BytesAsText() { utext_close(&text_); }

    UText* get() { return &text_; }

private:
    UText text_ = UTEXT_INITIALIZER;
};

} // namespace

/// One way of searching a text.
class TextSearch::Searcher {
public:
    Searcher() = default;
    Searcher(const Searcher&) = delete;
    Searcher& operator=(const Searcher&) = delete;
    virtual ~Searcher() = default;

    virtual State search(Clock::time_point end, std::vector<FindMatch>& matches) = 0;
    virtual std::optional<std::string> replacement(const FindMatch& match,
                                                   const std::string& replacement) = 0;
};

class TextSearch::PlainSearcher final : public Searcher {
public:
    PlainSearcher(std::string_view text, const FindRequest& request)
        : text_(text), matchesCase_(request.matchesCase) {
        std::string_view rest = request.text;
        while (!rest.empty()) {
            const Utf8Character character = Utf8Character::first(rest);
            wanted_.push_back(comparable(character.value));
            rest.remove_prefix(character.size);
        }
        for (std::size_t byte = 0; byte < mightStart_.size(); ++byte) {
            mightStart_[byte] = byte >= 0x80 || (!wanted_.empty() &&
                                                 comparable(static_cast<char32_t>(byte)) == wanted_.front());
        }
    }

    State search(Clock::time_point end, std::vector<FindMatch>& matches) override {
        if (wanted_.empty())
            return State::complete;
        while (position_ < text_.size()) {
            if (!searchBlock(matches))
                return State::complete;
            if (Clock::now() >= end)
                return State::searching;
        }
        return State::complete;
    }

    std::optional<std::string> replacement(const FindMatch&, const std::string& replacement) override {
        return replacement;
    }

private:
    /// Bytes between two looks at the clock.
    static constexpr std::size_t blockSize = 65536;

    char32_t comparable(char32_t character) const { return matchesCase_ ? character : folded(character); }

    /// False when the end was reached.
    bool searchBlock(std::vector<FindMatch>& matches) {
        const std::size_t blockEnd = std::min(position_ + blockSize, text_.size());
        while (position_ < blockEnd) {
            if (!mightStart_[static_cast<unsigned char>(text_[position_])]) {
                ++position_;
                continue;
            }
            if (const std::size_t length = matchLength(text_.substr(position_)); length > 0) {
                matches.push_back(
                    {static_cast<std::int64_t>(position_), static_cast<std::int64_t>(position_ + length)});
                position_ += length;
            } else {
                position_ += Utf8Character::first(text_.substr(position_)).size;
            }
        }
        return position_ < text_.size();
    }

    /// In bytes; 0 when `text` does not start with what is wanted.
    std::size_t matchLength(std::string_view text) const {
        std::size_t length = 0;
        for (const char32_t character : wanted_) {
            if (length == text.size())
                return 0;
            const Utf8Character next = Utf8Character::first(text.substr(length));
            if (comparable(next.value) != character)
                return 0;
            length += next.size;
        }
        return length;
    }

    std::string_view text_;
    bool matchesCase_;
    std::u32string wanted_;
    std::array<bool, 256> mightStart_{};
    std::size_t position_ = 0;
};

class TextSearch::RegularSearcher final : public Searcher {
public:
    RegularSearcher(std::string_view text, const FindRequest& request) : text_(text), bytes_(text) {
        UErrorCode status = U_ZERO_ERROR;
        const std::uint32_t flags =
            UREGEX_MULTILINE | (request.matchesCase ? 0U : std::uint32_t{UREGEX_CASE_INSENSITIVE});
        BytesAsText pattern(request.text);
        UParseError where;
        pattern_.reset(icu::RegexPattern::compile(pattern.get(), flags, where, status));
        if (U_FAILURE(status))
            return;
        matcher_.reset(pattern_->matcher(status));
        if (U_FAILURE(status)) {
            matcher_.reset();
            return;
        }
        matcher_->reset(bytes_.get());
        matcher_->setStackLimit(backtrackingMemory, status);
        matcher_->setMatchCallback(&RegularSearcher::goesOnWithAttempt, this, status);
        matcher_->setFindProgressCallback(&RegularSearcher::goesOnToNextPlace, this, status);
    }

    State search(Clock::time_point end, std::vector<FindMatch>& matches) override {
        if (!matcher_)
            return State::invalid;
        sliceEnd_ = end;
        do {
            UErrorCode status = U_ZERO_ERROR;
            const bool found = findNext(status);
            if (status == U_REGEX_STOPPED_BY_CALLER && !isTooExpensive_)
                return State::searching;
            if (U_FAILURE(status))
                return State::tooExpensive;
            if (!found)
                return State::complete;
            const FindMatch match{matcher_->start64(status), matcher_->end64(status)};
            // An empty match marks nothing and could not be replaced visibly; the search goes on behind it.
            if (match.last > match.first)
                matches.push_back(match);
            next_ = match.last > match.first ? match.last : afterCharacter(match.last);
        } while (next_ <= static_cast<std::int64_t>(text_.size()) && Clock::now() < end);
        return next_ <= static_cast<std::int64_t>(text_.size()) ? State::searching : State::complete;
    }

    std::optional<std::string> replacement(const FindMatch& match, const std::string& replacement) override {
        UErrorCode status = U_ZERO_ERROR;
        isLooking_ = false;
        isTooExpensive_ = false;
        if (!matcher_ || !matcher_->find(match.first, status) || matcher_->start64(status) != match.first)
            return std::nullopt;
        std::string result;
        for (std::string_view rest = replacement; !rest.empty();) {
            if (rest.front() == '\\' && rest.size() > 1) {
                result += rest[1];
                rest.remove_prefix(2);
            } else if (rest.front() == '$') {
                const std::optional<std::int32_t> group = takeGroup(rest);
                if (!group || *group > matcher_->groupCount())
                    return std::nullopt;
                const std::int64_t first = matcher_->start64(*group, status);
                if (first >= 0)
                    result += text_.substr(static_cast<std::size_t>(first),
                                           static_cast<std::size_t>(matcher_->end64(*group, status) - first));
            } else {
                result += rest.front();
                rest.remove_prefix(1);
            }
        }
        return result;
    }

private:
    /// Takes "$1" or "${name}" from the start of `rest`.
    std::optional<std::int32_t> takeGroup(std::string_view& rest) const {
        rest.remove_prefix(1);
        if (rest.starts_with('{')) {
            const std::size_t end = rest.find('}');
            if (end == std::string_view::npos)
                return std::nullopt;
            UErrorCode status = U_ZERO_ERROR;
            const std::string name(rest.substr(1, end - 1));
            const std::int32_t group = pattern_->groupNumberFromName(name.c_str(), -1, status);
            rest.remove_prefix(end + 1);
            return U_SUCCESS(status) != 0 ? std::optional(group) : std::nullopt;
        }
        std::int32_t group = 0;
        std::size_t digits = 0;
        // As many digits as there are groups for.
        while (digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9') {
            const std::int32_t longer = group * 10 + (rest[digits] - '0');
            if (digits > 0 && longer > matcher_->groupCount())
                break;
            group = longer;
            ++digits;
        }
        rest.remove_prefix(digits);
        return digits > 0 ? std::optional(group) : std::nullopt;
    }

    /// Looks from where the last look ended.
    bool findNext(UErrorCode& status) {
        isLooking_ = true;
        isTooExpensive_ = false;
        return matcher_->find(next_, status) != 0;
    }

    std::int64_t afterCharacter(std::int64_t byte) const {
        const std::string_view rest = text_.substr(static_cast<std::size_t>(byte));
        return byte + (rest.empty() ? 1 : static_cast<std::int64_t>(Utf8Character::first(rest).size));
    }

    /// The library hands back as constant what was given to it.
    static RegularSearcher* searcherFrom(const void* self) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
        return static_cast<RegularSearcher*>(const_cast<void*>(self));
    }

    /// Is asked now and then during an attempt to match at one place.
    static UBool U_CALLCONV goesOnWithAttempt(const void* self, std::int32_t) {
        auto* searcher = searcherFrom(self);
        const Clock::time_point now = Clock::now();
        if (std::exchange(searcher->isNewAttempt_, false))
            searcher->attemptEnd_ = now + longestAttempt;
        searcher->placesUntilClock_ = 0;
        searcher->isTooExpensive_ = now > searcher->attemptEnd_;
        return static_cast<UBool>(!searcher->isTooExpensive_);
    }

    /// Is asked before each place; looking at the clock every time would take longer than the matching.
    static UBool U_CALLCONV goesOnToNextPlace(const void* self, std::int64_t place) {
        auto* searcher = searcherFrom(self);
        searcher->isNewAttempt_ = true;
        if (!searcher->isLooking_ || --searcher->placesUntilClock_ > 0)
            return 1;
        searcher->placesUntilClock_ = placesBetweenClocks;
        if (Clock::now() < searcher->sliceEnd_)
            return 1;
        searcher->next_ = place;
        return 0;
    }

    static constexpr int placesBetweenClocks = 1024;

    std::string_view text_;
    BytesAsText bytes_;
    std::unique_ptr<icu::RegexPattern> pattern_;
    std::unique_ptr<icu::RegexMatcher> matcher_;
    std::int64_t next_ = 0;
    Clock::time_point sliceEnd_;
    Clock::time_point attemptEnd_;
    int placesUntilClock_ = placesBetweenClocks;
    bool isNewAttempt_ = true;
    bool isLooking_ = false;
    bool isTooExpensive_ = false;
};

TextSearch::TextSearch(std::string text, const FindRequest& request)
    : text_(std::make_unique<std::string>(std::move(text))) {
    if (request.isRegularExpression && !request.text.empty())
        searcher_ = std::make_unique<RegularSearcher>(*text_, request);
    else
        searcher_ = std::make_unique<PlainSearcher>(*text_, request);
}

TextSearch::TextSearch(TextSearch&&) noexcept = default;
TextSearch& TextSearch::operator=(TextSearch&&) noexcept = default;
TextSearch::~TextSearch() = default;

void TextSearch::advance(std::chrono::microseconds slice) {
    if (state_ == State::searching)
        state_ = searcher_->search(Clock::now() + slice, matches_);
}

std::optional<std::string> TextSearch::replacement(const FindMatch& match, const std::string& replacement) {
    return searcher_->replacement(match, replacement);
}

} // namespace corvanta
