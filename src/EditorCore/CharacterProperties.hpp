#pragma once

#include <unicode/uchar.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace corvanta {

/// What Unicode's tables, as ICU has them, say of a code point. It is remembered in a byte for each, once one
/// is asked for: to ask ICU for each character of a page takes longer than everything else that is done with
/// it. Any thread may ask.
class CharacterProperties {
public:
    static CharacterProperties of(char32_t character) {
        if (character >= remembered_.size())
            return lookedUp(character);
        const std::uint8_t bits = std::atomic_ref(remembered_[character]).load(std::memory_order_relaxed);
        return bits != 0 ? CharacterProperties(bits) : remember(character);
    }

    /// Whether it joins nothing before or after it with the same answer: letters without a peculiarity and
    /// whole syllables of Hangul. These are most characters of every text.
    bool isIndependent() const {
        constexpr unsigned independent = 1U << U_GCB_OTHER | 1U << U_GCB_LV | 1U << U_GCB_LVT;
        return (independent >> static_cast<unsigned>(graphemeBreak()) & 1U) != 0;
    }

    /// The property Grapheme_Cluster_Break, as one of ICU's constants.
    int graphemeBreak() const { return bits_ & graphemeBreakBits; }

    /// Whether emoji are made of it.
    bool isPictograph() const { return (bits_ & pictographBit) != 0; }

    /// Whether Normalization Form C may hold it: it is no other way to write something else.
    bool isCanonical() const { return (bits_ & otherFormBit) == 0; }

private:
    static constexpr std::uint8_t graphemeBreakBits = 0x1F;
    static constexpr std::uint8_t pictographBit = 0x20;
    static constexpr std::uint8_t otherFormBit = 0x40;
    static constexpr std::uint8_t knownBit = 0x80;

    explicit CharacterProperties(std::uint8_t bits) : bits_(bits) {}

    static CharacterProperties lookedUp(char32_t character);
    static CharacterProperties remember(char32_t character);

    /// 0 for what nobody has asked for. Memory is taken for the scripts that pages are written in, no more:
    /// the system gives it when it is first written to.
    static constinit std::array<std::uint8_t, 0x110000> remembered_;

    std::uint8_t bits_;
};

} // namespace corvanta
