#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace corvanta {

/// What Unicode's tables, as ICU has them, say of a code point. For those of the basic plane and for emoji it
/// is collected when one is first asked for, into a byte each: to ask ICU for each character of a page takes
/// longer than everything else that is done with it.
class CharacterProperties {
public:
    static CharacterProperties of(char32_t character) {
        static const Table<0, 0x10000> basicPlane;
        static const Table<0x1F000, 0x1000> emoji;
        if (basicPlane.holds(character))
            return basicPlane.of(character);
        return emoji.holds(character) ? emoji.of(character) : lookedUp(character);
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

    template <char32_t first, std::size_t size>
    class Table {
    public:
        Table() {
            for (std::size_t index = 0; index < size; ++index)
                bits_[index] = lookedUp(static_cast<char32_t>(first + index)).bits_;
        }

        bool holds(char32_t character) const { return character - first < size; }
        CharacterProperties of(char32_t character) const {
            return CharacterProperties(bits_[character - first]);
        }

    private:
        std::array<std::uint8_t, size> bits_{};
    };

    explicit CharacterProperties(std::uint8_t bits) : bits_(bits) {}

    static CharacterProperties lookedUp(char32_t character);

    std::uint8_t bits_;
};

} // namespace corvanta
