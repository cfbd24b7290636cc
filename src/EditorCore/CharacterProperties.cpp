#include "EditorCore/CharacterProperties.hpp"

#include <unicode/uchar.h>

namespace corvanta {

constinit std::array<std::uint8_t, 0x110000> CharacterProperties::remembered_{};

CharacterProperties CharacterProperties::lookedUp(char32_t character) {
    const auto codePoint = static_cast<UChar32>(character);
    CharacterProperties properties(
        static_cast<std::uint8_t>(knownBit | u_getIntPropertyValue(codePoint, UCHAR_GRAPHEME_CLUSTER_BREAK)));
    if (u_hasBinaryProperty(codePoint, UCHAR_EXTENDED_PICTOGRAPHIC) != 0)
        properties.bits_ |= pictographBit;
    if (u_hasBinaryProperty(codePoint, UCHAR_FULL_COMPOSITION_EXCLUSION) != 0)
        properties.bits_ |= otherFormBit;
    return properties;
}

CharacterProperties CharacterProperties::remember(char32_t character) {
    const CharacterProperties properties = lookedUp(character);
    std::atomic_ref(remembered_[character]).store(properties.bits_, std::memory_order_relaxed);
    return properties;
}

} // namespace corvanta
