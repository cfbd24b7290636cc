#include "EditorCore/Utf8Character.hpp"

#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {

TEST(Utf8Character, ReadsEveryCharacterFromBothEnds) {
    for (char32_t value = 0; value <= U'\U0010FFFF'; ++value) {
        if (value == 0xD800)
            value = 0xE000;
        std::string text;
        Utf8::append(text, value);
        const auto first = Utf8Character::first(text + "ü");
        const auto last = Utf8Character::last("ü" + text);
        ASSERT_EQ(first.value, value);
        ASSERT_EQ(first.size, text.size());
        ASSERT_EQ(last.value, value);
        ASSERT_EQ(last.size, text.size());
    }
}

TEST(Utf8Character, TakesAByteThatBelongsToNoCharacterForOneOfItsOwn) {
    for (const char* bytes :
         {"\x80", "\xC3", "\xC3x", "\xE2\x82", "\xF0\x9F\x98", "\xFF", "\xF8\x80\x80\x80"}) {
        EXPECT_EQ(Utf8Character::first(bytes).value, U'\uFFFD');
        EXPECT_EQ(Utf8Character::first(bytes).size, 1U);
    }
    for (const char* bytes : {"\x80", "\xC3", "\xE2\x82", "\x80\x80\x80\x80\x80", "a\x80"}) {
        EXPECT_EQ(Utf8Character::last(bytes).value, U'\uFFFD');
        EXPECT_EQ(Utf8Character::last(bytes).size, 1U);
    }
}

} // namespace corvanta
