#pragma once

#include "EditorCore/CharacterReferences.hpp"
#include "EditorCore/Graphemes.hpp"
#include "EditorCore/Utf8.hpp"

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvanta {

/// The merge written down rule by rule, one element for every character of the source, with no thought of
/// speed: what the real one is compared with. Characters are ICU's, texts are well-formed UTF-8.
class ReferenceMerge {
public:
    struct Element {
        std::string character;
        std::size_t sourceOffset = 0;
        bool isText = false;
    };

    /// A stretch of text elements between two of markup.
    struct TextRun {
        /// In a form that is equal for texts that the merge takes for equal.
        std::string comparable;
        std::string text;
        /// In bytes of the source.
        std::size_t end = 0;
    };

    static std::vector<std::string> characters(std::string_view text) {
        UErrorCode error = U_ZERO_ERROR;
        static const std::unique_ptr<icu::BreakIterator> boundaries(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), error));
        const auto units = icu::UnicodeString::fromUTF8(icu::StringPiece(text));
        boundaries->setText(units);
        std::vector<std::string> characters;
        for (std::int32_t start = boundaries->first(), end = boundaries->next();
             end != icu::BreakIterator::DONE; start = end, end = boundaries->next())
            units.tempSubStringBetween(start, end).toUTF8String(characters.emplace_back());
        return characters;
    }

    static std::vector<Element> decode(std::string_view source) {
        const auto page = characters(source);
        std::vector<Element> elements;
        std::size_t i = 0;
        std::size_t offset = 0;
        const auto append = [&](bool isText) {
            elements.push_back({page[i], offset, isText});
            offset += page[i].size();
            ++i;
        };
        const auto isAt = [&](std::string_view sign) {
            for (std::size_t k = 0; k < sign.size(); ++k) {
                if (i + k >= page.size() || page[i + k] != sign.substr(k, 1))
                    return false;
            }
            return true;
        };
        while (i < page.size()) {
            if (isAt("<!--")) {
                for (int k = 0; k < 4; ++k)
                    append(false);
                while (i < page.size() && !isAt("-->"))
                    append(false);
                for (int k = 0; k < 3 && i < page.size(); ++k)
                    append(false);
            } else if (isAt("<")) {
                std::string quote;
                bool isOpen = true;
                while (i < page.size() && isOpen) {
                    if (!quote.empty())
                        quote = page[i] == quote ? "" : quote;
                    else if (page[i] == "\"" || page[i] == "'")
                        quote = page[i];
                    else
                        isOpen = page[i] != ">";
                    append(false);
                }
            } else if (const auto reference = referenceAt(page, i)) {
                elements.push_back({reference->character, offset, true});
                for (std::size_t k = 0; k < reference->length; ++k)
                    offset += page[i++].size();
            } else {
                append(true);
            }
        }
        return elements;
    }

    static std::vector<TextRun> textRuns(std::string_view source) {
        const auto elements = decode(source);
        std::vector<TextRun> runs;
        bool isInside = false;
        for (const Element& element : elements) {
            if (element.isText && !isInside)
                runs.emplace_back();
            else if (!element.isText && isInside)
                runs.back().end = element.sourceOffset;
            if (element.isText) {
                runs.back().text += element.character;
                runs.back().comparable += comparable(element.character) + '\x1F';
            }
            isInside = element.isText;
        }
        if (isInside)
            runs.back().end = source.size();
        return runs;
    }

    static bool isWhiteSpace(std::string_view text) {
        const auto units = icu::UnicodeString::fromUTF8(icu::StringPiece(text));
        for (std::int32_t i = 0; i < units.length(); i = units.moveIndex32(i, 1)) {
            if (u_isUWhiteSpace(units.char32At(i)) == 0)
                return false;
        }
        return true;
    }

    static std::optional<std::string> applyTextEdit(std::string_view before, std::string_view after,
                                                    std::int64_t occurrence, std::int64_t total,
                                                    std::string_view source) {
        const auto old = characters(before);
        const auto edited = characters(after);
        if (isSame(old, edited))
            return std::string(source);
        if (isWhiteSpace(before))
            return std::nullopt;

        const auto elements = decode(source);
        const auto candidates = textContentMatches(elements, old);
        std::size_t candidate = 0;
        if (candidates.size() == 1) {
            candidate = candidates[0];
        } else {
            const auto count = static_cast<std::int64_t>(candidates.size());
            if (occurrence < 0 || occurrence >= count || count != total)
                return std::nullopt;
            candidate = candidates[static_cast<std::size_t>(occurrence)];
        }

        const std::size_t shorter = std::min(old.size(), edited.size());
        std::size_t prefix = 0;
        while (prefix < shorter && matchesInText(old[prefix], edited[prefix]))
            ++prefix;
        std::size_t suffix = 0;
        while (prefix + suffix < shorter &&
               matchesInText(old[old.size() - 1 - suffix], edited[edited.size() - 1 - suffix]))
            ++suffix;

        const auto offsetOf = [&](std::size_t element) {
            return element < elements.size() ? elements[element].sourceOffset : source.size();
        };
        const std::size_t begin = offsetOf(candidate + prefix);
        const std::size_t end = offsetOf(candidate + old.size() - suffix);
        std::string inserted;
        for (std::size_t i = prefix; i < edited.size() - suffix; ++i)
            inserted += edited[i];
        for (const auto& [plain, written] : std::vector<std::pair<std::string, std::string>>{
                 {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\u00A0", "&nbsp;"}})
            inserted = replaced(inserted, plain, written);
        return std::string(source.substr(0, begin)) + inserted + std::string(source.substr(end));
    }

private:
    struct Reference {
        std::string character;
        std::size_t length = 0;
    };

    static std::optional<Reference> referenceAt(const std::vector<std::string>& page, std::size_t i) {
        if (page[i] != "&")
            return std::nullopt;
        std::string name;
        for (std::size_t k = i + 1; k < page.size() && k <= i + 11; ++k) {
            if (page[k] == ";") {
                const auto character = CharacterReferences::decoded(name);
                if (!character)
                    return std::nullopt;
                std::string text;
                Utf8::append(text, *character);
                return Reference{text, k + 1 - i};
            }
            name += page[k];
        }
        return std::nullopt;
    }

    static std::vector<std::size_t> matches(const std::vector<Element>& elements,
                                            const std::vector<std::string>& needle) {
        std::vector<std::size_t> found;
        for (std::size_t m = 0; !needle.empty() && m + needle.size() <= elements.size(); ++m) {
            std::size_t k = 0;
            while (k < needle.size() && elements[m + k].isText &&
                   matchesInText(elements[m + k].character, needle[k]))
                ++k;
            if (k == needle.size())
                found.push_back(m);
        }
        return found;
    }

    static std::vector<std::size_t> textContentMatches(const std::vector<Element>& elements,
                                                       const std::vector<std::string>& needle) {
        const auto all = matches(elements, needle);
        std::vector<std::size_t> kept;
        for (const std::size_t m : all) {
            const bool isBoundedBefore = m == 0 || !elements[m - 1].isText;
            const std::size_t after = m + needle.size();
            if (isBoundedBefore && (after >= elements.size() || !elements[after].isText))
                kept.push_back(m);
        }
        return kept.empty() && all.size() == 1 ? all : kept;
    }

    static bool isSame(const std::vector<std::string>& a, const std::vector<std::string>& b) {
        if (a.size() != b.size())
            return false;
        for (std::size_t i = 0; i < a.size(); ++i) {
            if (canonical(a[i]) != canonical(b[i]))
                return false;
        }
        return true;
    }

    static bool matchesInText(const std::string& a, const std::string& b) {
        return a == b || comparable(a) == comparable(b);
    }

    static std::string comparable(const std::string& character) {
        return character == "\u00A0" ? " " : canonical(character);
    }

    /// The real one composes, this one decomposes: both are the same for what is canonically equivalent.
    static std::string canonical(const std::string& character) {
        if (character.size() > Graphemes::longestNormalised)
            return character;
        static std::map<std::string, std::string> known;
        const auto [entry, isNew] = known.try_emplace(character);
        if (isNew) {
            UErrorCode error = U_ZERO_ERROR;
            icu::StringByteSink<std::string> sink(&entry->second);
            icu::Normalizer2::getNFDInstance(error)->normalizeUTF8(0, icu::StringPiece(character), sink,
                                                                   nullptr, error);
        }
        return entry->second;
    }

    static std::string replaced(const std::string& text, std::string_view plain, std::string_view written) {
        std::string result;
        std::size_t position = 0;
        for (std::size_t found = text.find(plain); found != std::string::npos;
             found = text.find(plain, position)) {
            result.append(text, position, found - position).append(written);
            position = found + plain.size();
        }
        return result.append(text, position);
    }
};

} // namespace corvanta
