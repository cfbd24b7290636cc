#include "EditorCore/SyntaxTokenizer.hpp"

#include "EditorCore/ReferenceTokenizer.hpp"
#include "EditorCore/SpanProperties.hpp"
#include "EditorCore/Utf8.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::array<std::string_view, 6> tokenNames{"tag",     "attribute", "string",
                                                     "comment", "keyword",   "number"};

/// The coloured stretches of `text`, each as its kind and what it covers.
std::vector<std::string> coloured(const std::string& text) {
    const icu::UnicodeString units = icu::UnicodeString::fromUTF8(text);
    std::vector<std::string> stretches;
    for (const SyntaxSpan& span : SyntaxTokenizer::tokenize(text)) {
        std::string stretch(tokenNames[index(span.token)]);
        stretch += ' ';
        units
            .tempSubString(static_cast<std::int32_t>(span.range.location),
                           static_cast<std::int32_t>(span.range.length))
            .toUTF8String(stretch);
        stretches.push_back(stretch);
    }
    return stretches;
}

/// The same for text inside a script, a style sheet and a PHP block that are never closed.
std::vector<std::string> colouredInside(const std::string& opener, const std::string& text) {
    std::vector<std::string> all = coloured(opener + text);
    const std::size_t ofOpener = SyntaxTokenizer::tokenize(opener).size();
    return {all.begin() + static_cast<std::ptrdiff_t>(ofOpener), all.end()};
}

std::vector<std::string> script(const std::string& text) {
    return colouredInside("<script>", text);
}
std::vector<std::string> style(const std::string& text) {
    return colouredInside("<style>", text);
}
std::vector<std::string> php(const std::string& text) {
    return colouredInside("<?php ", text);
}

std::string repeated(std::string_view part, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += part;
    return text;
}

/// A text of the fragments that mean something to one of the languages, and of some that mean nothing.
std::string randomText(std::mt19937& random) {
    static constexpr auto fragments = std::to_array<std::string_view>(
        {"<",       ">",        "</",        "/>",         "<!",
         "<!--",    "-->",      "--",        "<!-->",      "<!--->",
         "<?",      "<?php",    "<?PHP",     "<?=",        "?>",
         "<?xml",   "<script",  "<SCRIPT>",  "</script",   "</Script>",
         "<style>", "<style/>", "</style>",  "</STYLE",    "<scripts>",
         "<p",      "<a href=", "</p>",      "<br/>",      "class",
         "data-x",  "xml:lang", "=",         "\"",         "'",
         "`",       "\\",       "\\\"",      "\\\\",       "//",
         "/*",      "*/",       "/",         "*",          "#",
         "#fff",    "#ab",      "#12345g",   "$",          "$x1",
         "$_",      "0",        "10px",      "1.5em",      "0x1F",
         "1_000",   "50%",      "if",        "IF",         "Return",
         "echo",    "elseif",   "undefined", "instanceof", "require_once",
         "color",   "-moz-x",   ":",         " ",          "\t",
         "\n",      "\r\n",     "\r",        "\f",         "{",
         "}",       ";",        "(",         ")",          ",",
         ".",       "_",        "-",         "!",          "&amp;",
         "ä",       "ſ",        "İ",         "€",          "漢",
         "😀",       "e\u0301",  "\u00A0",    "\uFEFF",     std::string_view("\0", 1),
         "K",       "abcdefgh", "abcdefghi"});
    std::uniform_int_distribution<std::size_t> length(0, 40);
    std::uniform_int_distribution<std::size_t> fragment(0, fragments.size() - 1);
    std::string text;
    for (std::size_t i = length(random); i > 0; --i)
        text += fragments[fragment(random)];
    return text;
}

} // namespace

TEST(SyntaxTokenizer, FindsNothingInTheEmptyText) {
    EXPECT_THAT(SyntaxTokenizer::tokenize(""), IsEmpty());
}

TEST(SyntaxTokenizer, LeavesPlainTextAlone) {
    EXPECT_THAT(coloured("Nur Text & sonst nichts: if return 12 \"x\" #fff // /* */"), IsEmpty());
}

TEST(SyntaxTokenizer, GivesPlaceAndLengthInCodeUnits) {
    EXPECT_THAT(SyntaxTokenizer::tokenize("<p>ä</p>"),
                ElementsAre(SyntaxSpan{{0, 2}, SyntaxToken::tag}, SyntaxSpan{{2, 1}, SyntaxToken::tag},
                            SyntaxSpan{{4, 3}, SyntaxToken::tag}, SyntaxSpan{{7, 1}, SyntaxToken::tag}));
}

TEST(SyntaxTokenizer, CountsACharacterBeyondTheBasicPlaneAsTwoUnits) {
    EXPECT_THAT(SyntaxTokenizer::tokenize("😀<b>𝄞"),
                ElementsAre(SyntaxSpan{{2, 2}, SyntaxToken::tag}, SyntaxSpan{{4, 1}, SyntaxToken::tag}));
    EXPECT_THAT(SyntaxTokenizer::tokenize("<!--😀漢-->"),
                ElementsAre(SyntaxSpan{{0, 10}, SyntaxToken::comment}));
}

TEST(SyntaxTokenizer, HandsOutTheSameSpansSomeAtATime) {
    for (const std::string& text : {std::string(), std::string("<p"), repeated("<b a='1'>ä</b>", 5000)}) {
        std::vector<SyntaxSpan> spans;
        std::size_t most = 0;
        SyntaxTokenizer::tokenize(text, [&](std::span<const SyntaxSpan> some) {
            spans.insert(spans.end(), some.begin(), some.end());
            most = std::max(most, some.size());
        });
        EXPECT_EQ(spans, SyntaxTokenizer::tokenize(text));
        EXPECT_LT(most, 5000);
    }
}

// Markup

TEST(SyntaxTokenizer, ColoursTheBracketsAndTheNameOfATag) {
    EXPECT_THAT(coloured("<p>x</p>"), ElementsAre("tag <p", "tag >", "tag </p", "tag >"));
}

TEST(SyntaxTokenizer, TakesHyphensColonsAndUnderscoresIntoNames) {
    EXPECT_THAT(coloured("<my-tag_1:x data-a_b:c9>"),
                ElementsAre("tag <my-tag_1:x", "attribute data-a_b:c9", "tag >"));
}

TEST(SyntaxTokenizer, ReadsNamesOfAnyLength) {
    for (std::size_t length = 1; length < 30; ++length) {
        const std::string name(length, 'n');
        EXPECT_THAT(coloured("<" + name + " " + name + ">"),
                    ElementsAre("tag <" + name, "attribute " + name, "tag >"));
        EXPECT_THAT(coloured("<" + name), ElementsAre("tag <" + name));
    }
}

TEST(SyntaxTokenizer, ANameEndsBeforeALetterThatIsNotASCII) {
    EXPECT_THAT(coloured("<straße>"), ElementsAre("tag <stra", "attribute e", "tag >"));
}

TEST(SyntaxTokenizer, ATagStartsOnlyBeforeALetterASlashOrAnExclamationMark) {
    EXPECT_THAT(coloured("< p> <1> <_a> <ä> <> <= <-"), IsEmpty());
    EXPECT_THAT(coloured("<"), IsEmpty());
    EXPECT_THAT(coloured("a <"), IsEmpty());
}

TEST(SyntaxTokenizer, TheLastOfSeveralBracketsStartsTheTag) {
    EXPECT_THAT(coloured("<<<p>"), ElementsAre("tag <p", "tag >"));
}

TEST(SyntaxTokenizer, AClosingTagMayHaveNoName) {
    EXPECT_THAT(coloured("</>"), ElementsAre("tag </", "tag >"));
    EXPECT_THAT(coloured("</ p>"), ElementsAre("tag </", "attribute p", "tag >"));
    EXPECT_THAT(coloured("</"), ElementsAre("tag </"));
}

TEST(SyntaxTokenizer, ColoursAttributesAndTheirQuotedValues) {
    EXPECT_THAT(coloured("<a href=\"x y\" title='it\"s' hidden>"),
                ElementsAre("tag <a", "attribute href", "string \"x y\"", "attribute title", "string 'it\"s'",
                            "attribute hidden", "tag >"));
}

TEST(SyntaxTokenizer, TakesAnUnquotedValueForAnAttribute) {
    EXPECT_THAT(coloured("<a b=c d=1x>"),
                ElementsAre("tag <a", "attribute b", "attribute c", "attribute d", "attribute x", "tag >"));
    EXPECT_THAT(coloured("<a b=12>"), ElementsAre("tag <a", "attribute b", "tag >"));
}

TEST(SyntaxTokenizer, KnowsNoEscapesInAttributeValues) {
    EXPECT_THAT(coloured("<a b=\"\\\">"), ElementsAre("tag <a", "attribute b", "string \"\\\"", "tag >"));
}

TEST(SyntaxTokenizer, AValueMayHoldBracketsAndLineBreaks) {
    EXPECT_THAT(coloured("<a b=\"<p>\n-->\">"),
                ElementsAre("tag <a", "attribute b", "string \"<p>\n-->\"", "tag >"));
}

TEST(SyntaxTokenizer, APHPBlockInsideATagIsNotAPart) {
    EXPECT_THAT(coloured("<a <?php echo 1 ?> b>c"),
                ElementsAre("tag <a", "attribute php", "attribute echo", "tag >"));
    EXPECT_THAT(coloured("<a b=\"<?= 1 ?>\">"),
                ElementsAre("tag <a", "attribute b", "string \"<?= 1 ?>\"", "tag >"));
}

TEST(SyntaxTokenizer, AnUnclosedValueRunsToTheEnd) {
    EXPECT_THAT(coloured("<a b=\"c>d</a>"), ElementsAre("tag <a", "attribute b", "string \"c>d</a>"));
    EXPECT_THAT(coloured("<a '"), ElementsAre("tag <a", "string '"));
}

TEST(SyntaxTokenizer, AnUnclosedTagRunsToTheEnd) {
    EXPECT_THAT(coloured("<p id\n<b>"), ElementsAre("tag <p", "attribute id", "attribute b", "tag >"));
    EXPECT_THAT(coloured("<p "), ElementsAre("tag <p"));
}

TEST(SyntaxTokenizer, ColoursTheEndOfASelfClosedTagAsOne) {
    EXPECT_THAT(coloured("<br/><br />"), ElementsAre("tag <br", "tag />", "tag <br", "tag />"));
}

TEST(SyntaxTokenizer, PassesOverASlashThatClosesNothing) {
    EXPECT_THAT(coloured("<a / b/ >"), ElementsAre("tag <a", "attribute b", "tag >"));
    EXPECT_THAT(coloured("<a/"), ElementsAre("tag <a"));
}

TEST(SyntaxTokenizer, ColoursADeclarationAsOneTag) {
    EXPECT_THAT(coloured("<!DOCTYPE html PUBLIC \"a>b\">"), ElementsAre("tag <!DOCTYPE html PUBLIC \"a>"));
    EXPECT_THAT(coloured("<!>x"), ElementsAre("tag <!>"));
    EXPECT_THAT(coloured("<!-x>y"), ElementsAre("tag <!-x>"));
}

TEST(SyntaxTokenizer, AnUnclosedDeclarationRunsToTheEnd) {
    EXPECT_THAT(coloured("<!DOCTYPE html"), ElementsAre("tag <!DOCTYPE html"));
    EXPECT_THAT(coloured("<!"), ElementsAre("tag <!"));
}

TEST(SyntaxTokenizer, ColoursACommentAsOne) {
    EXPECT_THAT(coloured("a<!-- <p> -- > -->b<i>"),
                ElementsAre("comment <!-- <p> -- > -->", "tag <i", "tag >"));
}

TEST(SyntaxTokenizer, LooksForTheEndOfACommentOnlyAfterItsStart) {
    EXPECT_THAT(coloured("<!-->x-->y"), ElementsAre("comment <!-->x-->"));
    EXPECT_THAT(coloured("<!--->x-->y"), ElementsAre("comment <!--->x-->"));
    EXPECT_THAT(coloured("<!---->y"), ElementsAre("comment <!---->"));
    EXPECT_THAT(coloured("<!-- --->y"), ElementsAre("comment <!-- --->"));
}

TEST(SyntaxTokenizer, AnUnclosedCommentRunsToTheEnd) {
    EXPECT_THAT(coloured("<!-- a <b> ->"), ElementsAre("comment <!-- a <b> ->"));
    EXPECT_THAT(coloured("<!--"), ElementsAre("comment <!--"));
}

TEST(SyntaxTokenizer, AnXMLDeclarationIsNotColoured) {
    EXPECT_THAT(coloured("<?xml version=\"1.0\"?><p>"), ElementsAre("tag <p", "tag >"));
    EXPECT_THAT(coloured("<? echo 1 ?>"), IsEmpty());
    EXPECT_THAT(coloured("<?"), IsEmpty());
    EXPECT_THAT(coloured("<?ph"), IsEmpty());
}

// Changing the language

TEST(SyntaxTokenizer, AnUpperCaseScriptTagOpensAScriptAndAMixedCaseOneClosesIt) {
    EXPECT_THAT(coloured("<SCRIPT>if</ScRiPt >if"),
                ElementsAre("tag <SCRIPT", "tag >", "keyword if", "tag </ScRiPt", "tag >"));
}

TEST(SyntaxTokenizer, AScriptTagWithAttributesOpensAScript) {
    EXPECT_THAT(coloured("<script src='x'>if"),
                ElementsAre("tag <script", "attribute src", "string 'x'", "tag >", "keyword if"));
}

TEST(SyntaxTokenizer, ASelfClosedScriptTagOpensNothing) {
    EXPECT_THAT(coloured("<script/>if<b>"), ElementsAre("tag <script", "tag />", "tag <b", "tag >"));
    EXPECT_THAT(coloured("<style />a:b"), ElementsAre("tag <style", "tag />"));
}

TEST(SyntaxTokenizer, OnlyTheWholeNameOpensAScript) {
    EXPECT_THAT(coloured("<scripts>if"), ElementsAre("tag <scripts", "tag >"));
    EXPECT_THAT(coloured("<my-script>if"), ElementsAre("tag <my-script", "tag >"));
    EXPECT_THAT(coloured("<script-x>if"), ElementsAre("tag <script-x", "tag >"));
    EXPECT_THAT(coloured("</script>if"), ElementsAre("tag </script", "tag >"));
}

TEST(SyntaxTokenizer, AnyClosingTagThatStartsLikeTheScriptsEndsIt) {
    EXPECT_THAT(coloured("<script></scripts>if"),
                ElementsAre("tag <script", "tag >", "tag </scripts", "tag >"));
}

TEST(SyntaxTokenizer, OtherTagsMeanNothingInAScript) {
    EXPECT_THAT(script("a < b </p> <!-- x --> <?php"), IsEmpty());
    EXPECT_THAT(style("</script><b>"), IsEmpty());
}

TEST(SyntaxTokenizer, AScriptEndsEvenInTheMiddleOfALineButNotInsideAString) {
    EXPECT_THAT(script("'</script>'1</script>1"),
                ElementsAre("string '</script>'", "number 1", "tag </script", "tag >"));
    EXPECT_THAT(script("// </script>\n1"), ElementsAre("comment // </script>", "number 1"));
}

TEST(SyntaxTokenizer, AnUpperCaseStyleTagOpensAStyleSheet) {
    EXPECT_THAT(coloured("<STYLE>a:b</Style>a:b"),
                ElementsAre("tag <STYLE", "tag >", "attribute a", "tag </Style", "tag >"));
}

TEST(SyntaxTokenizer, AnUpperCaseOpenerOpensPHP) {
    EXPECT_THAT(coloured("<?PHP echo 1; ?>echo"),
                ElementsAre("keyword <?PHP", "keyword echo", "number 1", "keyword ?>"));
}

TEST(SyntaxTokenizer, TheShortOpenerOpensPHP) {
    EXPECT_THAT(coloured("<?=$a?><b>"),
                ElementsAre("keyword <?=", "attribute $a", "keyword ?>", "tag <b", "tag >"));
}

TEST(SyntaxTokenizer, TheOpenerNeedsNoBlankAfterIt) {
    EXPECT_THAT(coloured("<?phpx if"), ElementsAre("keyword <?php", "keyword if"));
}

TEST(SyntaxTokenizer, APHPBlockStaysOpenAcrossMarkupItHoldsAsText) {
    EXPECT_THAT(php("<p> </script> <!-- if"), ElementsAre("keyword if"));
}

// Scripts

TEST(SyntaxTokenizer, EveryKeywordOfScriptsIsColouredInAnyCase) {
    for (const std::string_view keyword : jsKeywords) {
        std::string word(keyword);
        EXPECT_THAT(script(word), ElementsAre("keyword " + word));
        word[0] = static_cast<char>(word[0] - 'a' + 'A');
        EXPECT_THAT(script(" " + word + "("), ElementsAre("keyword " + word));
    }
}

TEST(SyntaxTokenizer, IfAndReturnAreKeywordsInCapitalsToo) {
    EXPECT_THAT(script("IF Return NULL"), ElementsAre("keyword IF", "keyword Return", "keyword NULL"));
}

TEST(SyntaxTokenizer, OnlyWholeWordsAreKeywords) {
    EXPECT_THAT(script("iff xif if_ _if if1 echo foreach"), IsEmpty());
}

TEST(SyntaxTokenizer, LettersThatFoldToASCIIElsewhereDoNotHere) {
    EXPECT_THAT(script("thıs THİS \u212A"), IsEmpty());
    EXPECT_THAT(coloured("<ſcript>if"), IsEmpty());
}

TEST(SyntaxTokenizer, ADollarInAScriptIsNotPartOfAWord) {
    EXPECT_THAT(script("$el $if"), ElementsAre("keyword if"));
}

TEST(SyntaxTokenizer, ColoursNumbersInScripts) {
    EXPECT_THAT(script("1 2.5 1_000 3..4 x1"),
                ElementsAre("number 1", "number 2.5", "number 1_000", "number 3..4"));
    EXPECT_THAT(script("0x1F 5if"), ElementsAre("number 0", "number 5", "keyword if"));
    EXPECT_THAT(script(".5"), ElementsAre("number 5"));
}

TEST(SyntaxTokenizer, ColoursStringsOfThreeQuotesInScripts) {
    EXPECT_THAT(script("'a' \"b\" `c\n${d}`"), ElementsAre("string 'a'", "string \"b\"", "string `c\n${d}`"));
    EXPECT_THAT(script("''\"\""), ElementsAre("string ''", "string \"\""));
}

TEST(SyntaxTokenizer, ABackslashHidesTheNextCharacterOfAString) {
    EXPECT_THAT(script("'a\\'b' 1"), ElementsAre("string 'a\\'b'", "number 1"));
    EXPECT_THAT(script("'a\\\\' 1"), ElementsAre("string 'a\\\\'", "number 1"));
    EXPECT_THAT(script("'\\😀' 1"), ElementsAre("string '\\😀'", "number 1"));
    EXPECT_THAT(script("'\\ä' 1"), ElementsAre("string '\\ä'", "number 1"));
}

TEST(SyntaxTokenizer, AnUnclosedStringRunsToTheEnd) {
    EXPECT_THAT(script("'abc\n</script>"), ElementsAre("string 'abc\n</script>"));
    EXPECT_THAT(script("'"), ElementsAre("string '"));
    EXPECT_THAT(script("'\\"), ElementsAre("string '\\"));
    EXPECT_THAT(script("'\\'"), ElementsAre("string '\\'"));
}

TEST(SyntaxTokenizer, FindsTheEndOfStringsOfAnyLength) {
    for (std::size_t length = 0; length < 30; ++length) {
        const std::string content(length, 's');
        EXPECT_THAT(script("'" + content + "'1"), ElementsAre("string '" + content + "'", "number 1"));
        EXPECT_THAT(script("'" + content + "\\'" + content + "'1"),
                    ElementsAre("string '" + content + "\\'" + content + "'", "number 1"));
    }
}

TEST(SyntaxTokenizer, ALineCommentEndsBeforeTheLineFeed) {
    EXPECT_THAT(SyntaxTokenizer::tokenize("<script>//a\n1"),
                ElementsAre(SyntaxSpan{{0, 7}, SyntaxToken::tag}, SyntaxSpan{{7, 1}, SyntaxToken::tag},
                            SyntaxSpan{{8, 3}, SyntaxToken::comment},
                            SyntaxSpan{{12, 1}, SyntaxToken::number}));
    EXPECT_THAT(script("//a\r\n1"), ElementsAre("comment //a\r", "number 1"));
    EXPECT_THAT(script("// bis zum Ende"), ElementsAre("comment // bis zum Ende"));
    EXPECT_THAT(script("//"), ElementsAre("comment //"));
}

TEST(SyntaxTokenizer, ABlockCommentEndsAfterItsCloser) {
    EXPECT_THAT(script("/* a\n* / **/1"), ElementsAre("comment /* a\n* / **/", "number 1"));
    EXPECT_THAT(script("/*/ a */1"), ElementsAre("comment /*/ a */", "number 1"));
    EXPECT_THAT(script("/* offen"), ElementsAre("comment /* offen"));
}

TEST(SyntaxTokenizer, ADivisionIsNotColoured) {
    EXPECT_THAT(script("a / b /"), IsEmpty());
}

TEST(SyntaxTokenizer, AHashIsNoCommentInAScript) {
    EXPECT_THAT(script("# if"), ElementsAre("keyword if"));
}

TEST(SyntaxTokenizer, APHPCloserMeansNothingInAScript) {
    EXPECT_THAT(script("a ?> b"), IsEmpty());
}

// PHP

TEST(SyntaxTokenizer, EveryKeywordOfPHPIsColouredInAnyCase) {
    for (const std::string_view keyword : phpKeywords) {
        std::string word(keyword);
        EXPECT_THAT(php(word), ElementsAre("keyword " + word));
        word.back() = static_cast<char>(word.back() - 'a' + 'A');
        EXPECT_THAT(php(" " + word + ";"), ElementsAre("keyword " + word));
    }
}

TEST(SyntaxTokenizer, KeywordsOfScriptsAreNoneInPHP) {
    EXPECT_THAT(php("var let typeof"), IsEmpty());
}

TEST(SyntaxTokenizer, ColoursVariablesWithTheirDollar) {
    EXPECT_THAT(php("$x1 = $_GET;"), ElementsAre("attribute $x1", "attribute $_GET"));
    EXPECT_THAT(php("$if"), ElementsAre("attribute $if"));
    EXPECT_THAT(php("$1"), ElementsAre("attribute $1"));
}

TEST(SyntaxTokenizer, ALoneDollarIsNothing) {
    EXPECT_THAT(php("$ $"), IsEmpty());
    EXPECT_THAT(php("$$a"), ElementsAre("attribute $a"));
    EXPECT_THAT(php("$ä"), IsEmpty());
}

TEST(SyntaxTokenizer, KnowsThreeKindsOfCommentsInPHP) {
    EXPECT_THAT(php("// a\n# b\n/* c */1"),
                ElementsAre("comment // a", "comment # b", "comment /* c */", "number 1"));
}

TEST(SyntaxTokenizer, ALineCommentHidesTheCloserOnItsLine) {
    EXPECT_THAT(php("# a ?>\n1?>"), ElementsAre("comment # a ?>", "number 1", "keyword ?>"));
    EXPECT_THAT(php("// a ?> <b>"), ElementsAre("comment // a ?> <b>"));
}

TEST(SyntaxTokenizer, AStringHidesTheCloser) {
    EXPECT_THAT(php("'?>' `?>` \"?>\"?>"),
                ElementsAre("string '?>'", "string `?>`", "string \"?>\"", "keyword ?>"));
}

TEST(SyntaxTokenizer, AQuestionMarkAloneClosesNothing) {
    EXPECT_THAT(php("$a ? 1 : 2 ?\?>"), ElementsAre("attribute $a", "number 1", "number 2", "keyword ?>"));
    EXPECT_THAT(php("?"), IsEmpty());
}

// Style sheets

TEST(SyntaxTokenizer, ColoursPropertyNames) {
    EXPECT_THAT(style("p { color: red; -moz-x_1:y }"), ElementsAre("attribute color", "attribute -moz-x_1"));
}

TEST(SyntaxTokenizer, BlanksAndTabsMayStandBeforeTheColon) {
    EXPECT_THAT(style("color \t : red"), ElementsAre("attribute color"));
    EXPECT_THAT(style("color\n: red"), IsEmpty());
    EXPECT_THAT(style("color\u00A0: red"), IsEmpty());
}

TEST(SyntaxTokenizer, TakesASelectorBeforeAPseudoClassForAProperty) {
    EXPECT_THAT(style("a:hover"), ElementsAre("attribute a"));
}

TEST(SyntaxTokenizer, ColoursHexColours) {
    EXPECT_THAT(style("#abc #336699 #FFF"), ElementsAre("number #abc", "number #336699", "number #FFF"));
    EXPECT_THAT(style("#ab # #a"), IsEmpty());
    EXPECT_THAT(style("#abcg"), ElementsAre("number #abc"));
}

TEST(SyntaxTokenizer, ReadsTheRestOfAnIdentifierAfterAHash) {
    EXPECT_THAT(style("#kopf:x"), ElementsAre("attribute kopf"));
    EXPECT_THAT(style("#abq:x"), ElementsAre("attribute q"));
}

TEST(SyntaxTokenizer, ColoursNumbersWithTheirUnit) {
    EXPECT_THAT(style("10px 1.5em 50% 2_x"),
                ElementsAre("number 10px", "number 1.5em", "number 50%", "number 2_x"));
    EXPECT_THAT(style(".5s"), ElementsAre("number 5s"));
}

TEST(SyntaxTokenizer, AHyphenStartsAWord) {
    EXPECT_THAT(style("-5px -:"), ElementsAre("attribute -"));
}

TEST(SyntaxTokenizer, AnUnderscoreStartsNoStyleWord) {
    EXPECT_THAT(style("_a:b"), ElementsAre("attribute a"));
}

TEST(SyntaxTokenizer, ColoursStringsInStyleSheetsWithoutEscapes) {
    EXPECT_THAT(style("'a' \"b\\\"1"), ElementsAre("string 'a'", "string \"b\\\"", "number 1"));
    EXPECT_THAT(style("`1`"), ElementsAre("number 1"));
    EXPECT_THAT(style("'offen </style>"), ElementsAre("string 'offen </style>"));
}

TEST(SyntaxTokenizer, ColoursCommentsInStyleSheets) {
    EXPECT_THAT(style("/* a:b */ // c:d"), ElementsAre("comment /* a:b */", "attribute c"));
    EXPECT_THAT(style("/*/ </style>"), ElementsAre("comment /*/ </style>"));
}

TEST(SyntaxTokenizer, StyleSheetsHaveNoKeywords) {
    EXPECT_THAT(style("if import $x @media"), IsEmpty());
}

// As a whole

TEST(SyntaxTokenizer, SeesAMixedPageInOnePass) {
    EXPECT_THAT(coloured("<style>b{c:1px}</style><?php if?><script>new X</script><b>"),
                ElementsAre("tag <style", "tag >", "attribute c", "number 1px", "tag </style", "tag >",
                            "keyword <?php", "keyword if", "keyword ?>", "tag <script", "tag >",
                            "keyword new", "tag </script", "tag >", "tag <b", "tag >"));
}

TEST(SyntaxTokenizer, CountsRightAcrossLongStretchesOfEveryAlphabet) {
    for (const char* filler : {"a", "ä", "漢", "😀", "aä漢😀"}) {
        for (const std::size_t count : {1U, 63U, 64U, 65U, 4095U, 4096U, 4097U, 20000U}) {
            const std::string text = repeated(filler, count) + "<b title='" + repeated(filler, count) + "'>" +
                                     repeated(filler, count) + "</b>";
            EXPECT_EQ(SyntaxTokenizer::tokenize(text), ReferenceTokenizer::tokenize(text)) << filler << count;
        }
    }
}

TEST(SyntaxTokenizer, AgreesWithThePlainRulesOnRandomTexts) {
    std::mt19937 random(20240229);
    for (int i = 0; i < 60000; ++i) {
        const std::string text = randomText(random);
        const auto spans = SyntaxTokenizer::tokenize(text);
        ASSERT_EQ(spans, ReferenceTokenizer::tokenize(text)) << text;
        ASSERT_EQ(complaintAbout(spans, Utf8::codeUnitCount(text)), "") << text;
    }
}

TEST(SyntaxTokenizer, EveryStartOfAPageHasAnAnswer) {
    const std::string page =
        "<!DOCTYPE html><!-- ä --><a b='c' d/><script>/*x*/ '\\'' 1 if //😀\n</script><style>a "
        ": #fff</style><?php $a # ?>\n?><?= \"b\" ?>";
    for (std::size_t length = 0; length <= page.size(); ++length) {
        const std::string text = Utf8::repaired(page.substr(0, length));
        EXPECT_EQ(SyntaxTokenizer::tokenize(text), ReferenceTokenizer::tokenize(text)) << text;
    }
}

TEST(SyntaxTokenizer, IllFormedTextHasAnAnswerToo) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int i = 0; i < 20000; ++i) {
        std::string text = randomText(random);
        for (char& character : text) {
            if (byte(random) < 16)
                character = static_cast<char>(byte(random));
        }
        ASSERT_EQ(complaintAbout(SyntaxTokenizer::tokenize(text), Utf8::codeUnitCount(text)), "");
    }
}

TEST(SyntaxTokenizer, DoesNotDependOnTheLocale) {
    const std::string text =
        "<SCRIPT>IF THIS Instanceof</SCRIPT><STYLE>COLOR:#ABC 1.5EM</STYLE><?PHP PRINT $ISSET";
    const auto expected = SyntaxTokenizer::tokenize(text);
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "C.UTF-8", "tr_TR.UTF-8", "tr_TR", "de_DE.ISO-8859-1"}) {
        if (std::setlocale(LC_ALL, locale) != nullptr) {
            EXPECT_EQ(SyntaxTokenizer::tokenize(text), expected) << locale;
        }
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(SyntaxTokenizer, ManySpansAfterFewAreAllThere) {
    const std::string text = std::string(100000, 'x') + repeated("<a>", 100000);
    EXPECT_EQ(SyntaxTokenizer::tokenize(text).size(), 200000U);
}

} // namespace corvanta
