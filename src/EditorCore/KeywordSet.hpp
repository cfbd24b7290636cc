#pragma once

#include "EditorCore/ASCII.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvanta {

/// A set of lower-case ASCII words that is asked for every word of a script. Made by the compiler: it looks
/// for a hash of length, first and last letter that gives every word a place of its own, so that a question
/// costs one look-up and at most one comparison.
class KeywordSet {
public:
    template <std::size_t count>
    explicit consteval KeywordSet(const std::array<std::string_view, count>& words) {
        while (!place(words))
            ++seed_;
    }

    /// Whether `word` is in the set. ASCII capitals count as their small letters.
    constexpr bool contains(std::string_view word) const {
        if (word.empty())
            return false;
        return ASCII::equals(word, words_[slot(word)]);
    }

private:
    static constexpr std::size_t slotCount = 256;

    /// False when two words share a slot.
    template <std::size_t count>
    constexpr bool place(const std::array<std::string_view, count>& words) {
        words_.fill({});
        return std::all_of(words.begin(), words.end(), [this](std::string_view word) {
            std::string_view& place = words_[slot(word)];
            const bool isFree = place.empty();
            place = word;
            return isFree;
        });
    }

    /// Only the low five bits of a letter count: they are the same for capitals and small letters.
    constexpr std::size_t slot(std::string_view word) const {
        const std::uint32_t first = static_cast<unsigned char>(word.front()) & 31U;
        const std::uint32_t last = static_cast<unsigned char>(word.back()) & 31U;
        const std::uint32_t key = (static_cast<std::uint32_t>(word.size()) << 10U) | (first << 5U) | last;
        return (key * seed_ >> 16U) % slotCount;
    }

    std::uint32_t seed_ = 0x9E3779B1U;
    std::array<std::string_view, slotCount> words_{};
};

} // namespace corvanta
