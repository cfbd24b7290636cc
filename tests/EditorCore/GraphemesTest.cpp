#include "EditorCore/Graphemes.hpp"

#include "EditorCore/ReferenceMerge.hpp"
#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <ios>
#include <random>
#include <string>
#include <vector>

namespace corvanta {

namespace {

std::vector<std::string> graphemes(std::string_view text) {
    std::vector<std::string> found;
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t end = Graphemes::end(text, position);
        found.emplace_back(text.substr(position, end - position));
        position = end;
    }
    return found;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(Graphemes, OfASCIIAreItsBytes) {
    EXPECT_EQ(graphemes("a b\t"), (Texts{"a", " ", "b", "\t"}));
}

TEST(Graphemes, TakeCarriageReturnAndLineFeedAsOne) {
    EXPECT_EQ(graphemes("\r\n\n\r\r\n"), (Texts{"\r\n", "\n", "\r", "\r\n"}));
}

TEST(Graphemes, JoinAccentsToTheLetterBeforeThem) {
    EXPECT_EQ(graphemes("ae\u0301\u0308b"), (Texts{"a", "e\u0301\u0308", "b"}));
}

TEST(Graphemes, LeaveAnAccentAfterALineEndAlone) {
    EXPECT_EQ(graphemes("\n\u0301"), (Texts{"\n", "\u0301"}));
}

TEST(Graphemes, JoinAFamilyOfEmoji) {
    EXPECT_EQ(graphemes("\U0001F469\u200D\U0001F469\u200D\U0001F467!"),
              (Texts{"\U0001F469\u200D\U0001F469\u200D\U0001F467", "!"}));
}

TEST(Graphemes, JoinNoEmojiWithoutAJoiner) {
    EXPECT_EQ(graphemes("\U0001F469\U0001F467"), (Texts{"\U0001F469", "\U0001F467"}));
}

TEST(Graphemes, PairTheLettersOfFlags) {
    EXPECT_EQ(graphemes("\U0001F1E9\U0001F1EA\U0001F1E6\U0001F1F9\U0001F1E8"),
              (Texts{"\U0001F1E9\U0001F1EA", "\U0001F1E6\U0001F1F9", "\U0001F1E8"}));
}

TEST(Graphemes, JoinTheLettersOfAHangulSyllable) {
    EXPECT_EQ(graphemes("\u1112\u1161\u11AB\u1100"), (Texts{"\u1112\u1161\u11AB", "\u1100"}));
}

TEST(Graphemes, JoinASignThatIsPutBeforeANumber) {
    EXPECT_EQ(graphemes("\u06001"), (Texts{"\u0600"
                                           "1"}));
}

TEST(Graphemes, CutIllFormedBytesIntoCharactersWithoutHarm) {
    const std::string bytes = "a\xFF\xC3\xE2\x82z\xF0\x9F";
    std::string together;
    for (const auto& grapheme : graphemes(bytes))
        together += grapheme;
    EXPECT_EQ(together, bytes);
}

TEST(Graphemes, KnowWhetherASignStandsAlone) {
    EXPECT_TRUE(Graphemes::isAlone("<", 0));
    EXPECT_TRUE(Graphemes::isAlone("a<b", 1));
    EXPECT_TRUE(Graphemes::isAlone("\u00FC<\u00FC", 2));
    EXPECT_FALSE(Graphemes::isAlone("<\u0338", 0));
    EXPECT_FALSE(Graphemes::isAlone("<\uFE0F", 0));
    EXPECT_FALSE(Graphemes::isAlone("\u0600<", 2));
}

TEST(Graphemes, AreCutAsUnicodesTablesSay) {
    static constexpr std::array<char32_t, 40> characters{
        U'a',    U'<',    U'\r',   U'\n',   U' ',    0x00AD,  0x00A9,  0x00FC,  0x0300,   0x0308,
        0x0600,  0x0903,  0x0915,  0x094D,  0x0BC6,  0x0E33,  0x1100,  0x1161,  0x11A8,   0xAC00,
        0xAC01,  0x200B,  0x200C,  0x200D,  0x2028,  0x2764,  0x4E00,  0xFE0F,  0xFEFF,   0xFFFD,
        0x110BD, 0x1F1E9, 0x1F1EA, 0x1F3FD, 0x1F469, 0x1F467, 0xE0061, 0xE007F, 0x10FFFF, 0x3099};
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (unsigned length = static_cast<unsigned>(random() % 12); length > 0; --length)
            Utf8::append(text, characters[random() % characters.size()]);
        ASSERT_EQ(graphemes(text), ReferenceMerge::characters(text)) << text;
    }
}

TEST(Graphemes, OfEveryKindOfCodePointJoinLettersAsUnicodesTablesSay) {
    for (char32_t character = 1; character < 0xE0200; ++character) {
        if (character == 0xD800)
            character = 0xE000;
        // The planes of ideographs and of nothing.
        if (character == 0x20000)
            character = 0xE0000;
        std::string text = "a";
        Utf8::append(text, character);
        text += 'b';
        if (graphemes(text) != ReferenceMerge::characters(text))
            ADD_FAILURE() << "U+" << std::hex << static_cast<unsigned>(character);
    }
}

TEST(Graphemes, ThatAreEquivalentHaveOneCanonicalForm) {
    EXPECT_EQ(Graphemes::canonical("e\u0301"), "\u00E9");
    EXPECT_EQ(Graphemes::canonical("\u00E9"), "\u00E9");
    EXPECT_EQ(Graphemes::canonical("a\u0323\u0307"), Graphemes::canonical("a\u0307\u0323"));
    EXPECT_EQ(Graphemes::canonical("\u212A"), "K");
}

TEST(Graphemes, OfMonstrousLengthAreLeftAsTheyAre) {
    std::string monster = "e";
    while (monster.size() <= Graphemes::longestNormalised)
        monster += "\u0301";
    EXPECT_EQ(Graphemes::canonical(monster), monster);
}

} // namespace corvanta
