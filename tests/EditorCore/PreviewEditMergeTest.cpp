#include "EditorCore/PreviewEditMerge.hpp"

#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <ctime>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvanta {

namespace {

/// An edit of the only text node with that content.
std::optional<std::string> merged(std::string_view before, std::string_view after, std::string_view source) {
    return PreviewEditMerge::applyTextEdit(before, after, 0, 1, source);
}

std::string repeated(std::string_view part, std::size_t count) {
    std::string text;
    for (; count > 0; --count)
        text += part;
    return text;
}

} // namespace

TEST(PreviewEditMerge, LeavesTheSourceAsItIsWhenNothingChanged) {
    EXPECT_EQ(merged("Hallo", "Hallo", "<p>Welt</p>"), "<p>Welt</p>");
    EXPECT_EQ(merged(" ", " ", "<p>Welt</p>"), "<p>Welt</p>");
    EXPECT_EQ(merged("", "", ""), "");
}

TEST(PreviewEditMerge, TakesEquivalentCharactersForNoChange) {
    EXPECT_EQ(merged("\u00FC", "u\u0308", "<p>Welt</p>"), "<p>Welt</p>");
}

TEST(PreviewEditMerge, InsertsAtTheEndOfATextBeforeTheClosingTag) {
    EXPECT_EQ(merged("Hallo", "Hallo Welt", "<p>Hallo</p>"), "<p>Hallo Welt</p>");
}

TEST(PreviewEditMerge, InsertsAtTheStartOfATextBehindTheOpeningTag) {
    EXPECT_EQ(merged("Welt", "Hallo Welt", "<p>Welt</p>"), "<p>Hallo Welt</p>");
}

TEST(PreviewEditMerge, InsertsInTheMiddle) {
    EXPECT_EQ(merged("Hllo", "Hallo", "<p>Hllo</p>"), "<p>Hallo</p>");
}

TEST(PreviewEditMerge, ReplacesOnlyWhatDiffers) {
    EXPECT_EQ(merged("eins zwei drei", "eins vier drei", "<p>eins zwei drei</p>"), "<p>eins vier drei</p>");
}

TEST(PreviewEditMerge, DeletesAWholeText) {
    EXPECT_EQ(merged("Hallo", "", "<p>Hallo</p>"), "<p></p>");
}

TEST(PreviewEditMerge, DeletesOneOfTwoLikeLetters) {
    EXPECT_EQ(merged("Fluss", "Flus", "<p>Fluss</p>"), "<p>Flus</p>");
    EXPECT_EQ(merged("aaa", "aaaa", "<p>aaa</p>"), "<p>aaaa</p>");
}

TEST(PreviewEditMerge, EditsASourceThatIsNothingButText) {
    EXPECT_EQ(merged("ab", "aXb", "ab"), "aXb");
    EXPECT_EQ(merged("ab", "a", "ab"), "a");
    EXPECT_EQ(merged("ab", "Xab", "ab"), "Xab");
    EXPECT_EQ(merged("ab", "abX", "ab"), "abX");
    EXPECT_EQ(merged("ab", "", "ab"), "");
}

TEST(PreviewEditMerge, KeepsReferencesThatTheEditLeftAlone) {
    EXPECT_EQ(merged("Brot & Butter", "Brot & Butter frisch", "<p>Brot &amp; Butter</p>"),
              "<p>Brot &amp; Butter frisch</p>");
    EXPECT_EQ(merged("\u00FCber", "\u00FCbers", "<p>&uuml;ber</p>"), "<p>&uuml;bers</p>");
    EXPECT_EQ(merged("\u00FCber", "\u00FCbers", "<p>&#252;ber</p>"), "<p>&#252;bers</p>");
    EXPECT_EQ(merged("\u00FCber", "\u00FCbers", "<p>&#xFC;ber</p>"), "<p>&#xFC;bers</p>");
    EXPECT_EQ(merged("\u00FCber", "\u00FCbers", "<p>&#XfC;ber</p>"), "<p>&#XfC;bers</p>");
}

TEST(PreviewEditMerge, ReplacesReferencesThatTheEditTouched) {
    EXPECT_EQ(merged("A & B", "A und B", "<p>A &amp; B</p>"), "<p>A und B</p>");
    EXPECT_EQ(merged("a\u00FC\u00DFb", "ab", "<p>a&uuml;&szlig;b</p>"), "<p>ab</p>");
    EXPECT_EQ(merged("x<y>z", "x y>z", "<p>x&lt;y&gt;z</p>"), "<p>x y&gt;z</p>");
}

TEST(PreviewEditMerge, KeepsEveryKnownReferenceBesideAnEdit) {
    constexpr std::array<std::pair<std::string_view, char32_t>, 58> references{
        {{"amp", 0x26},      {"lt", 0x3C},      {"gt", 0x3E},       {"quot", 0x22},     {"apos", 0x27},
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
         {"harr", 0x2194},   {"uarr", 0x2191},  {"darr", 0x2193}}};
    for (const auto& [name, character] : references) {
        std::string shown = "a";
        Utf8::append(shown, character);
        const std::string written = "<p>a&" + std::string(name) + ";b";
        EXPECT_EQ(merged(shown + "b", shown + "b c", written + "</p>"), written + " c</p>") << name;
    }
}

TEST(PreviewEditMerge, TakesUnknownReferencesForText) {
    EXPECT_EQ(merged("a &zwj; b", "a &zwj; c", "<p>a &zwj; b</p>"), "<p>a &zwj; c</p>");
    EXPECT_EQ(merged("a &#xD800; b", "a &#xD800; c", "<p>a &#xD800; b</p>"), "<p>a &#xD800; c</p>");
    EXPECT_EQ(merged("a &; b", "a &; c", "<p>a &; b</p>"), "<p>a &; c</p>");
    EXPECT_EQ(merged("a & b", "a & c", "<p>a & b</p>"), "<p>a & c</p>");
    EXPECT_EQ(merged("Ende &", "Ende & Aus", "Ende &"), "Ende & Aus");
    EXPECT_EQ(merged("Ende &am", "Ende &a", "Ende &am"), "Ende &a");
}

TEST(PreviewEditMerge, DecodesReferencesOfAtMostTwelveCharacters) {
    EXPECT_EQ(merged("aA", "aAb", "<p>a&#000000065;</p>"), "<p>a&#000000065;b</p>");
    EXPECT_EQ(merged("aA", "aAb", "<p>a&#0000000065;</p>"), std::nullopt);
    EXPECT_EQ(merged("a&#0000000065;", "b&#0000000065;", "<p>a&#0000000065;</p>"), "<p>b&#0000000065;</p>");
}

TEST(PreviewEditMerge, DecodesAReferenceOnlyOnce) {
    EXPECT_EQ(merged("&lt;", "&lt;!", "<p>&amp;lt;</p>"), "<p>&amp;lt;!</p>");
}

TEST(PreviewEditMerge, DecodesTheReferenceBehindAPlainAmpersand) {
    EXPECT_EQ(merged("&&", "&&!", "<p>&&amp;</p>"), "<p>&&amp;!</p>");
}

TEST(PreviewEditMerge, TreatsBlanksAndNoBreakSpacesAlikeWhenItSearches) {
    EXPECT_EQ(merged("a b", "a bc", "<p>a&nbsp;b</p>"), "<p>a&nbsp;bc</p>");
    EXPECT_EQ(merged("a\u00A0b", "a\u00A0bc", "<p>a b</p>"), "<p>a bc</p>");
    EXPECT_EQ(merged("a b", "a bc", "<p>a\u00A0b</p>"), "<p>a\u00A0bc</p>");
    EXPECT_EQ(merged("a \u1100", "b", "<p>a\u00A0\u1100</p>"), "<p>b</p>") << "before what may be joined";
}

TEST(PreviewEditMerge, WritesNoBreakSpacesOnlyWhereTheEditIs) {
    EXPECT_EQ(merged("eins zwei", "eins\u00A0zwei\u00A0drei", "<p>eins zwei</p>"),
              "<p>eins zwei&nbsp;drei</p>");
    EXPECT_EQ(merged("eins zwei", "eins\u00A0zwei", "<p>eins zwei</p>"), "<p>eins zwei</p>");
    EXPECT_EQ(merged("Ende", "Ende\u00A0", "<p>Ende</p>"), "<p>Ende&nbsp;</p>");
}

TEST(PreviewEditMerge, WritesMarkupThatWasTypedAsText) {
    EXPECT_EQ(merged("a", "a<b>", "<p>a</p>"), "<p>a&lt;b&gt;</p>");
    EXPECT_EQ(merged("a", "a & &lt;", "<p>a</p>"), "<p>a &amp; &amp;lt;</p>");
    EXPECT_EQ(merged("a", "a\"'", "<p>a</p>"), "<p>a\"'</p>");
}

TEST(PreviewEditMerge, WritesALessThanSignWithAnAccentAsTextToo) {
    EXPECT_EQ(merged("a", "a<\u0338b", "<p>a</p>"), "<p>a&lt;\u0338b</p>");
}

TEST(PreviewEditMerge, RefusesTextsOfNothingButWhiteSpace) {
    for (const auto* blank : {"", " ", "\n\t \n", "\r\n", "\u00A0", "\u2003", "\u3000", "\u2028", "\u0085",
                              " \u1680\u202F\u205F\f\v"})
        EXPECT_EQ(merged(blank, "Wort", "<p>" + std::string(blank) + "</p>"), std::nullopt) << blank;
}

TEST(PreviewEditMerge, MergesTextsWithInvisibleCharactersThatAreNoWhiteSpace) {
    EXPECT_EQ(merged("\u200B", "\u200BWort", "<p>\u200B</p>"), "<p>\u200BWort</p>");
}

TEST(PreviewEditMerge, KeepsTheWhiteSpaceAroundAText) {
    EXPECT_EQ(merged("\n\t\tWort\n\t", "\n\t\tWorte\n\t", "<p>\n\t\tWort\n\t</p>"), "<p>\n\t\tWorte\n\t</p>");
}

TEST(PreviewEditMerge, RefusesATextThatIsNotThere) {
    EXPECT_EQ(merged("Hallo", "Welt", "<p>Guten Tag</p>"), std::nullopt);
    EXPECT_EQ(merged("Hallo", "Welt", ""), std::nullopt);
    EXPECT_EQ(merged("Hallo", "Welt", "Hall"), std::nullopt);
    EXPECT_EQ(PreviewEditMerge::applyTextEdit("Hallo", "Welt", 0, 0, "<p>x</p>"), std::nullopt);
}

TEST(PreviewEditMerge, FindsTheOnlyPartOfAText) {
    EXPECT_EQ(merged("Welt", "Leute", "<p>Hallo Welt!</p>"), "<p>Hallo Leute!</p>");
    EXPECT_EQ(PreviewEditMerge::applyTextEdit("Welt", "Leute", -1, 7, "<p>Hallo Welt!</p>"),
              "<p>Hallo Leute!</p>");
}

TEST(PreviewEditMerge, FindsAPartOfATextBehindALessThanSignThatIsAReference) {
    EXPECT_EQ(merged("Wort", "x", "<p>1 &lt; 2 &#60; 3 Wort.</p>"), "<p>1 &lt; 2 &#60; 3 x.</p>");
    EXPECT_EQ(merged("< Wort", "x", "<p>1 &lt; Wort.</p>"), "<p>1 x.</p>");
}

TEST(PreviewEditMerge, RefusesPartsOfTextsThatOccurTwice) {
    EXPECT_EQ(PreviewEditMerge::applyTextEdit("Welt", "x", 0, 2, "<p>Hallo Welt, neue Welt!</p>"),
              std::nullopt);
    EXPECT_EQ(PreviewEditMerge::applyTextEdit("aa", "x", 0, 2, "<p>aaa</p>"), std::nullopt)
        << "matches that overlap are two";
}

TEST(PreviewEditMerge, PrefersAWholeTextToPartsOfOthers) {
    EXPECT_EQ(merged("Welt", "Erde", "<p>Weltall</p><b>Welt</b><p>Weltraum</p>"),
              "<p>Weltall</p><b>Erde</b><p>Weltraum</p>");
}

TEST(PreviewEditMerge, FindsNothingAcrossMarkup) {
    EXPECT_EQ(merged("Hallo", "x", "<p>Ha<b>llo</b></p>"), std::nullopt);
    EXPECT_EQ(merged("Hallo", "x", "<p>Ha<!-- -->llo</p>"), std::nullopt);
}

TEST(PreviewEditMerge, TakesTheStartAndTheEndOfTheSourceForBounds) {
    EXPECT_EQ(merged("Welt", "Erde", "Welt<p>Weltall</p>"), "Erde<p>Weltall</p>");
    EXPECT_EQ(merged("Welt", "Erde", "<p>Weltall</p>Welt"), "<p>Weltall</p>Erde");
}

TEST(PreviewEditMerge, TellsLikeTextsApartByTheirOccurrence) {
    const std::string source = "<nav>Start</nav><h1>Start</h1><!-- Start --><p>Start hier</p>";
    EXPECT_EQ(PreviewEditMerge::applyTextEdit("Start", "Ziel", 0, 2, source),
              "<nav>Ziel</nav><h1>Start</h1><!-- Start --><p>Start hier</p>");
    EXPECT_EQ(PreviewEditMerge::applyTextEdit("Start", "Ziel", 1, 2, source),
              "<nav>Start</nav><h1>Ziel</h1><!-- Start --><p>Start hier</p>");
}

TEST(PreviewEditMerge, RefusesWhenPageAndSourceDisagreeOnTheNumberOfLikeTexts) {
    const std::string source = "<nav>Start</nav><h1>Start</h1>";
    for (const std::int64_t total : {-2L, 0L, 1L, 3L, std::numeric_limits<std::int64_t>::max()})
        EXPECT_EQ(PreviewEditMerge::applyTextEdit("Start", "Ziel", 0, total, source), std::nullopt) << total;
    for (const std::int64_t occurrence : {std::numeric_limits<std::int64_t>::min(), -1L, 2L})
        EXPECT_EQ(PreviewEditMerge::applyTextEdit("Start", "Ziel", occurrence, 2, source), std::nullopt)
            << occurrence;
}

TEST(PreviewEditMerge, TakesTheOnlyCandidateWhateverThePageSays) {
    EXPECT_EQ(PreviewEditMerge::applyTextEdit("Start", "Ziel", -1, 5, "<p>Start</p>"), "<p>Ziel</p>");
    EXPECT_EQ(PreviewEditMerge::applyTextEdit("Start", "Ziel", 3, -1, "<p>Start</p>"), "<p>Ziel</p>");
}

TEST(PreviewEditMerge, CountsTextsThatDifferInTheirSpacesOrReferencesAsAlike) {
    const std::string source = "<p>a b</p><p>a&nbsp;b</p><p>&#97;\u00A0b</p>";
    EXPECT_EQ(PreviewEditMerge::applyTextEdit("a b", "a bc", 2, 3, source),
              "<p>a b</p><p>a&nbsp;b</p><p>&#97;\u00A0bc</p>");
}

TEST(PreviewEditMerge, NeverEditsComments) {
    EXPECT_EQ(merged("Wort", "x", "<!-- Wort -->"), std::nullopt);
    EXPECT_EQ(merged("Wort", "x", "<!--Wort-->"), std::nullopt);
    EXPECT_EQ(merged("Wort", "x", "<!-- <p>Wort</p> --><p>Wort</p>"), "<!-- <p>Wort</p> --><p>x</p>");
    EXPECT_EQ(merged("Wort", "x", "<!-- > Wort"), std::nullopt) << "a comment that never ends";
    EXPECT_EQ(merged("Wort", "x", "<!-- \" -->Wort"), "<!-- \" -->x");
}

TEST(PreviewEditMerge, ReadsTheEndOfACommentOnlyBehindItsStart) {
    EXPECT_EQ(merged("Wort", "x", "<!-->Wort"), std::nullopt);
    EXPECT_EQ(merged("Wort", "x", "<!---->Wort"), "<!---->x");
    EXPECT_EQ(merged("Wort", "x", "<!----->Wort"), "<!----->x");
}

TEST(PreviewEditMerge, EndsACommentAtTheFirstTwoHyphensBeforeAGreaterThanSign) {
    for (const std::string inside :
         {"", ">", "->", "a", "ab", "-", "- -", "a-", "a->", "->>", "--a>", "-a->"})
        EXPECT_EQ(merged("Wort", "x", "<!--" + inside + "-->Wort"), "<!--" + inside + "-->x");
}

TEST(PreviewEditMerge, NeverEditsTags) {
    EXPECT_EQ(merged("Wort", "x", "<img alt=\"Wort\">"), std::nullopt);
    EXPECT_EQ(merged("Wort", "x", "<img alt='>Wort<'>"), std::nullopt);
    EXPECT_EQ(merged("Wort", "x", "<img alt=\"a > 'b\">Wort<br>"), "<img alt=\"a > 'b\">x<br>");
    EXPECT_EQ(merged("Wort", "x", "<img alt='a > \"b'>Wort<br>"), "<img alt='a > \"b'>x<br>");
    EXPECT_EQ(merged("Wort", "x", "<p Wort"), std::nullopt) << "a tag that never ends";
    EXPECT_EQ(merged("Wort", "x", "<p a=\"b>Wort"), std::nullopt) << "a value that never ends";
    EXPECT_EQ(merged("Wort", "x", "1 < 2 Wort"), std::nullopt) << "every less-than sign opens a tag";
    EXPECT_EQ(merged("1 > 2", "1 > 3", "<p>1 > 2</p>"), "<p>1 > 3</p>");
}

TEST(PreviewEditMerge, DoesNotTakeALessThanSignWithAnAccentForATag) {
    EXPECT_EQ(merged("a <\u0338 b", "a <\u0338 c", "<p>a <\u0338 b</p>"), "<p>a <\u0338 c</p>");
}

TEST(PreviewEditMerge, DoesNotEndMarkupAtASignWithAnAccent) {
    EXPECT_EQ(merged("Wort", "x", "<p>\u0338Wort"), std::nullopt);
    EXPECT_EQ(merged("Wort", "x", "<!-- -->\u0338 Wort --> <p>Wort</p>"), "<!-- -->\u0338 Wort --> <p>x</p>");
    EXPECT_EQ(merged("Wort", "x", "<p a=\"b\"\u0338>Wort\">Wort</p>"), "<p a=\"b\"\u0338>Wort\">x</p>");
}

TEST(PreviewEditMerge, DoesNotDecodeAReferenceWhoseSignsBearAccents) {
    EXPECT_EQ(merged("a&amp;\u0301", "b&amp;\u0301", "<p>a&amp;\u0301</p>"), "<p>b&amp;\u0301</p>");
    EXPECT_EQ(merged("a&\u0301lt;", "b&\u0301lt;", "<p>a&\u0301lt;</p>"), "<p>b&\u0301lt;</p>");
}

TEST(PreviewEditMerge, ReplacesWholeCharacters) {
    EXPECT_EQ(merged("ae\u0301b", "aeb", "<p>ae\u0301b</p>"), "<p>aeb</p>");
    EXPECT_EQ(merged("ae", "ae\u0301", "<p>ae</p>"), "<p>ae\u0301</p>");
    EXPECT_EQ(merged("\U0001F468\u200D\U0001F469", "\U0001F468\u200D\U0001F467",
                     "<p>\U0001F468\u200D\U0001F469</p>"),
              "<p>\U0001F468\u200D\U0001F467</p>");
    EXPECT_EQ(merged("\U0001F1E9\U0001F1EA", "\U0001F1E9\U0001F1F0", "<p>\U0001F1E9\U0001F1EA</p>"),
              "<p>\U0001F1E9\U0001F1F0</p>");
}

TEST(PreviewEditMerge, FindsNoPartOfACharacter) {
    EXPECT_EQ(merged("e", "x", "<p>ae\u0301b</p>"), std::nullopt);
    EXPECT_EQ(merged("\U0001F467", "x", "<p>\U0001F469\u200D\U0001F467</p>"), std::nullopt);
    EXPECT_EQ(merged("\U0001F1EA", "x", "<p>\U0001F1E9\U0001F1EA</p>"), std::nullopt);
}

TEST(PreviewEditMerge, FindsCharactersHoweverTheyAreComposed) {
    EXPECT_EQ(merged("Z\u00FCge", "Z\u00FCgel", "<p>Zu\u0308ge</p>"), "<p>Zu\u0308gel</p>");
    EXPECT_EQ(merged("Zu\u0308ge", "Zu\u0308gel", "<p>Z&uuml;ge</p>"), "<p>Z&uuml;gel</p>");
    EXPECT_EQ(merged("Z\u00FCge", "Zu\u0308gel", "<p>Z\u00FCge</p>"), "<p>Z\u00FCgel</p>");
}

TEST(PreviewEditMerge, DecodesAReferenceAsACharacterOfItsOwn) {
    EXPECT_EQ(merged("e\u0301", "x", "<p>e&#x301;</p>"), std::nullopt);
}

TEST(PreviewEditMerge, TakesCarriageReturnAndLineFeedForOneCharacter) {
    EXPECT_EQ(merged("a\r\nb", "a\r\nc", "<p>a\r\nb</p>\r\n"), "<p>a\r\nc</p>\r\n");
    EXPECT_EQ(merged("a\r\nb", "a\nb", "<p>a\r\nb</p>"), "<p>a\nb</p>");
    EXPECT_EQ(merged("a\nb", "a\nc", "<p>a\r\nb</p>"), std::nullopt);
}

TEST(PreviewEditMerge, TakesAnyBytesWithoutHarm) {
    EXPECT_EQ(merged("a\xFF", "b\xFF", "<p>a\xFF</p>"), "<p>b\xFF</p>");
    EXPECT_EQ(merged("a", "\xE2\x82", "<p>a</p>"), "<p>\xE2\x82</p>");
    EXPECT_EQ(merged("\xF4\xBF\xBF\xBF", "b", "<p>\xF4\xBF\xBF\xBF</p>"), "<p>b</p>") << "no code point";
}

TEST(PreviewEditMerge, IsDoneInTimeWithHostilePages) {
    constexpr std::size_t count = 200'000;
    const std::string letters = repeated("a", count);
    const std::clock_t start = std::clock();
    for (const auto& source :
         {repeated("&", count), repeated("&#", count), repeated("<!--", count), repeated("<a b=\"", count),
          repeated("<\u0338", count), repeated("<!---->\u0338", count), letters, letters + "b" + letters,
          repeated("<b>" + repeated("a", 100), count / 100), "e" + repeated("\u0301\u0316", count)})
        merged(repeated("a", count / 2) + "b", "x", source);
    const std::string monster = "e" + repeated("\u0301\u0316", count);
    EXPECT_EQ(merged(monster + "a", monster + "b", "<p>" + monster + "a</p>"), "<p>" + monster + "b</p>");
    // Nowhere near: what takes quadratic time takes minutes of the processor's time.
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 20);
}

} // namespace corvanta
