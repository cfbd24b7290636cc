#include "EditorCore/CharacterReferences.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace corvanta {

TEST(CharacterReferences, DecodeTheKnownNames) {
    const std::map<std::string, char32_t> names{
        {"amp", 0x26},      {"lt", 0x3C},      {"gt", 0x3E},       {"quot", 0x22},     {"apos", 0x27},
        {"nbsp", 0xA0},     {"shy", 0xAD},     {"ndash", 0x2013},  {"mdash", 0x2014},  {"hellip", 0x2026},
        {"middot", 0xB7},   {"bull", 0x2022},  {"laquo", 0xAB},    {"raquo", 0xBB},    {"lsaquo", 0x2039},
        {"rsaquo", 0x203A}, {"bdquo", 0x201E}, {"ldquo", 0x201C},  {"rdquo", 0x201D},  {"sbquo", 0x201A},
        {"lsquo", 0x2018},  {"rsquo", 0x2019}, {"auml", 0xE4},     {"ouml", 0xF6},     {"uuml", 0xFC},
        {"Auml", 0xC4},     {"Ouml", 0xD6},    {"Uuml", 0xDC},     {"szlig", 0xDF},    {"eacute", 0xE9},
        {"egrave", 0xE8},   {"agrave", 0xE0},  {"ccedil", 0xE7},   {"euro", 0x20AC},   {"pound", 0xA3},
        {"yen", 0xA5},      {"cent", 0xA2},    {"copy", 0xA9},     {"reg", 0xAE},      {"trade", 0x2122},
        {"deg", 0xB0},      {"plusmn", 0xB1},  {"times", 0xD7},    {"divide", 0xF7},   {"frac12", 0xBD},
        {"frac14", 0xBC},   {"sup2", 0xB2},    {"sup3", 0xB3},     {"dagger", 0x2020}, {"sect", 0xA7},
        {"para", 0xB6},     {"micro", 0xB5},   {"permil", 0x2030}, {"larr", 0x2190},   {"rarr", 0x2192},
        {"harr", 0x2194},   {"uarr", 0x2191},  {"darr", 0x2193}};
    EXPECT_EQ(names.size(), 58U);
    for (const auto& [name, character] : names)
        EXPECT_EQ(CharacterReferences::decoded(name), character) << name;
}

TEST(CharacterReferences, KnowNoOtherNames) {
    for (const auto* name :
         {"", "AMP", "Amp", "am", "ampx", "Eacute", "frac34", "sup1", "zwj", "amp ", " amp"})
        EXPECT_EQ(CharacterReferences::decoded(name), std::nullopt) << name;
}

TEST(CharacterReferences, DecodeDecimalNumbers) {
    EXPECT_EQ(CharacterReferences::decoded("#65"), U'A');
    EXPECT_EQ(CharacterReferences::decoded("#0000065"), U'A');
    EXPECT_EQ(CharacterReferences::decoded("#1114111"), 0x10FFFF);
    EXPECT_EQ(CharacterReferences::decoded("#0"), U'\0');
}

TEST(CharacterReferences, DecodeHexadecimalNumbersWithEitherSign) {
    EXPECT_EQ(CharacterReferences::decoded("#x41"), U'A');
    EXPECT_EQ(CharacterReferences::decoded("#X41"), U'A');
    EXPECT_EQ(CharacterReferences::decoded("#xFc"), U'\u00FC');
    EXPECT_EQ(CharacterReferences::decoded("#x10FFFF"), 0x10FFFF);
}

TEST(CharacterReferences, DecodeOnlyScalarValues) {
    EXPECT_EQ(CharacterReferences::decoded("#xD7FF"), 0xD7FF);
    EXPECT_EQ(CharacterReferences::decoded("#xD800"), std::nullopt);
    EXPECT_EQ(CharacterReferences::decoded("#xDFFF"), std::nullopt);
    EXPECT_EQ(CharacterReferences::decoded("#xE000"), 0xE000);
    EXPECT_EQ(CharacterReferences::decoded("#x110000"), std::nullopt);
    EXPECT_EQ(CharacterReferences::decoded("#4294967361"), std::nullopt);
    EXPECT_EQ(CharacterReferences::decoded("#x100000041"), std::nullopt);
    EXPECT_EQ(CharacterReferences::decoded("#99999999999999999999"), std::nullopt);
}

TEST(CharacterReferences, AskForDigitsAndNothingElse) {
    for (const auto* name : {"#", "#x", "#X", "#+65", "#-65", "#x-41", "#x+41", "# 65", "#65 ", "#6a", "#xg",
                             "#0x41", "#xx41", "#1.0", "x41"})
        EXPECT_EQ(CharacterReferences::decoded(name), std::nullopt) << name;
}

} // namespace corvanta
