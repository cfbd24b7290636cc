#include "EditorCore/CharacterProperties.hpp"

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <ios>

namespace corvanta {

TEST(CharacterProperties, AreThoseOfUnicodesTables) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        const auto codePoint = static_cast<UChar32>(character);
        const CharacterProperties properties = CharacterProperties::of(character);
        const bool areThose =
            properties.graphemeBreak() == u_getIntPropertyValue(codePoint, UCHAR_GRAPHEME_CLUSTER_BREAK) &&
            properties.isPictograph() == (u_hasBinaryProperty(codePoint, UCHAR_EXTENDED_PICTOGRAPHIC) != 0) &&
            properties.isCanonical() == (u_getIntPropertyValue(codePoint, UCHAR_NFC_QUICK_CHECK) != UNORM_NO);
        ASSERT_TRUE(areThose) << "U+" << std::hex << static_cast<unsigned>(character);
    }
}

TEST(CharacterProperties, OfWhatIsNoCodePointAreThoseOfALetter) {
    const CharacterProperties properties = CharacterProperties::of(0x110000);
    EXPECT_TRUE(properties.isIndependent());
    EXPECT_FALSE(properties.isPictograph());
    EXPECT_TRUE(properties.isCanonical());
}

} // namespace corvanta
