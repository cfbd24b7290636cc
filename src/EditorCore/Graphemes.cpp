#include "EditorCore/Graphemes.hpp"

#include "EditorCore/CharacterProperties.hpp"
#include "EditorCore/Utf8Character.hpp"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <cstdint>

namespace corvanta {

namespace {

bool isControl(int property) {
    return property == U_GCB_CONTROL || property == U_GCB_CR || property == U_GCB_LF;
}

/// Whether a character with this property joins whatever is before it, control characters excepted.
bool joinsPrevious(int property) {
    return property == U_GCB_EXTEND || property == U_GCB_ZWJ || property == U_GCB_SPACING_MARK;
}

bool isHangulSequence(int first, int second) {
    if (first == U_GCB_L)
        return second == U_GCB_L || second == U_GCB_V || second == U_GCB_LV || second == U_GCB_LVT;
    if (first == U_GCB_LV || first == U_GCB_V)
        return second == U_GCB_V || second == U_GCB_T;
    return (first == U_GCB_LVT || first == U_GCB_T) && second == U_GCB_T;
}

/// The end of the characters from `position` on that join whatever is before them.
std::size_t endOfJoined(std::string_view text, std::size_t position) {
    while (position < text.size()) {
        const auto next = Utf8Character::first(text.substr(position));
        if (!joinsPrevious(CharacterProperties::of(next.value).graphemeBreak()))
            break;
        position += next.size;
    }
    return position;
}

/// A cluster while it grows; other than a CR LF.
class Cluster {
public:
    explicit Cluster(CharacterProperties first) { append(first); }

    /// Takes `next` in if it belongs to the cluster.
    bool takes(CharacterProperties next) {
        if (!joins(next))
            return false;
        append(next);
        return true;
    }

private:
    /// How far the start of a joined emoji has come: pictograph, extensions, joiner.
    enum class Emoji : std::uint8_t { none, pictograph, joiner };

    bool joins(CharacterProperties next) const {
        const int property = next.graphemeBreak();
        if (isControl(last_) || isControl(property))
            return false;
        return joinsPrevious(property) || last_ == U_GCB_PREPEND || isHangulSequence(last_, property) ||
               (unpairedFlagLetter_ && property == U_GCB_REGIONAL_INDICATOR) ||
               (emoji_ == Emoji::joiner && next.isPictograph());
    }

    void append(CharacterProperties character) {
        const int property = character.graphemeBreak();
        unpairedFlagLetter_ = property == U_GCB_REGIONAL_INDICATOR && !unpairedFlagLetter_;
        if (property == U_GCB_OTHER && character.isPictograph())
            emoji_ = Emoji::pictograph;
        else if (emoji_ == Emoji::pictograph && property == U_GCB_ZWJ)
            emoji_ = Emoji::joiner;
        else if (emoji_ != Emoji::pictograph || property != U_GCB_EXTEND)
            emoji_ = Emoji::none;
        last_ = property;
    }

    int last_ = U_GCB_OTHER;
    bool unpairedFlagLetter_ = false;
    Emoji emoji_ = Emoji::none;
};

} // namespace

std::size_t Graphemes::endOfAnyKind(std::string_view text, std::size_t position) {
    if (text.substr(position).starts_with("\r\n"))
        return position + 2;
    const auto first = Utf8Character::first(text.substr(position));
    const auto properties = CharacterProperties::of(first.value);
    position += first.size;
    // Most characters of every text: no emoji, no flags, no syllables of letters.
    if (properties.graphemeBreak() == U_GCB_OTHER && !properties.isPictograph())
        return endOfJoined(text, position);
    Cluster cluster(properties);
    while (position < text.size()) {
        const auto next = Utf8Character::first(text.substr(position));
        if (!cluster.takes(CharacterProperties::of(next.value)))
            break;
        position += next.size;
    }
    return position;
}

bool Graphemes::isAloneAmongOthers(std::string_view text, std::size_t position) {
    const std::size_t next = position + 1;
    if (endOfJoined(text, next) > next)
        return false;
    return position == 0 || isASCII(text[position - 1]) ||
           CharacterProperties::of(Utf8Character::last(text.substr(0, position)).value).graphemeBreak() !=
               U_GCB_PREPEND;
}

std::string Graphemes::canonical(std::string_view grapheme) {
    std::string canonical;
    if (grapheme.size() <= longestNormalised) {
        UErrorCode error = U_ZERO_ERROR;
        const icu::Normalizer2* normalizer = icu::Normalizer2::getNFCInstance(error);
        icu::StringByteSink<std::string> sink(&canonical);
        if (U_SUCCESS(error) != 0)
            normalizer->normalizeUTF8(0, icu::StringPiece(grapheme), sink, nullptr, error);
        if (U_SUCCESS(error) != 0)
            return canonical;
    }
    return std::string(grapheme);
}

} // namespace corvanta
