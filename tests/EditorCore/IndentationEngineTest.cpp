#include "EditorCore/IndentationEngine.hpp"

#include "EditorCore/DocumentTemplate.hpp"
#include "EditorCore/HTMLFormatter.hpp"
#include "EditorCore/ReferenceIndentation.hpp"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

using namespace std::string_literals;

/// The number of tabs that a new line behind `text` receives.
std::size_t depthAfter(std::string_view text) {
    const std::string indent = IndentationEngine::indentForNewLine(text);
    EXPECT_EQ(indent.find_first_not_of('\t'), std::string::npos) << text;
    return indent.size();
}

} // namespace

TEST(IndentationEngine, IndentsNothingInAnEmptyText) {
    EXPECT_EQ(IndentationEngine::indentForNewLine(""), "");
    EXPECT_EQ(depthAfter("\n\n"), 0U);
    EXPECT_EQ(depthAfter("nur Text"), 0U);
}

TEST(IndentationEngine, GivesATabForEveryOpenElement) {
    EXPECT_EQ(IndentationEngine::indentForNewLine("<div>"), "\t");
    EXPECT_EQ(IndentationEngine::indentForNewLine("<div>\n<ul>\n<li>"), "\t\t\t");
    EXPECT_EQ(depthAfter("<div><ul><li>"), 3U);
    EXPECT_EQ(depthAfter("<div class=\"a\" id=b>Text"), 1U);
}

TEST(IndentationEngine, CountsNestingNotTheSpaceBeforeALine) {
    EXPECT_EQ(depthAfter("\t\t\tText"), 0U);
    EXPECT_EQ(depthAfter("    <div>"), 1U);
}

TEST(IndentationEngine, KeepsTheLevelOfALineThatOpensAndCloses) {
    EXPECT_EQ(depthAfter("<div></div>"), 0U);
    EXPECT_EQ(depthAfter("<body>\n<div>Text</div>"), 1U);
}

TEST(IndentationEngine, FindsTwoLevelsInTheBodyOfANewDocument) {
    const std::string_view page = DocumentTemplate::newHTML;
    const std::string_view body = "<body>";
    EXPECT_EQ(depthAfter(page.substr(0, page.find(body) + body.size())), 2U);
    EXPECT_EQ(depthAfter(page), 0U);
}

TEST(IndentationEngine, GivesVoidElementsNoLevel) {
    for (const char* name : {"area", "base", "br", "col", "embed", "hr", "img", "input", "link", "meta",
                             "param", "source", "track", "wbr"}) {
        EXPECT_EQ(depthAfter("<"s + name + ">"), 0U) << name;
        EXPECT_EQ(depthAfter("<"s + name + " a=b c=\"d\">"), 0U) << name;
        EXPECT_EQ(depthAfter("<"s + name + "x>"), 1U) << name;
    }
    EXPECT_EQ(depthAfter("<BR><Img src=a.png>"), 0U);
    EXPECT_EQ(depthAfter("<col-group><br:x><b><sourcecode>"), 4U);
}

TEST(IndentationEngine, TakesALevelAwayAlsoForTheEndTagOfAVoidElement) {
    EXPECT_EQ(depthAfter("<div></br>"), 0U);
}

TEST(IndentationEngine, GivesSelfClosedElementsNoLevel) {
    EXPECT_EQ(depthAfter("<br/><br />"), 0U);
    EXPECT_EQ(depthAfter("<eigenes-element/>"), 0U);
    EXPECT_EQ(depthAfter("<eigenes-element a=\"b\" />"), 0U);
    EXPECT_EQ(depthAfter("<a href=x/>"), 0U);
    EXPECT_EQ(depthAfter("<script src=a.js/>{"), 0U);
    EXPECT_EQ(depthAfter("<div / >"), 1U);
    EXPECT_EQ(depthAfter("<div a='/'>"), 1U);
}

TEST(IndentationEngine, ClosesWithASelfClosedEndTag) {
    EXPECT_EQ(depthAfter("<div></div/>"), 0U);
}

TEST(IndentationEngine, KeepsTheLevelOfAParagraphThatIsNeverClosed) {
    EXPECT_EQ(depthAfter("<p>eins\n<p>zwei\n"), 2U);
    EXPECT_EQ(depthAfter("<ul>\n<li>eins\n</ul>\n"), 1U);
}

TEST(IndentationEngine, ClosesTheLastLevelWhateverTheEndTagIsCalled) {
    EXPECT_EQ(depthAfter("<div><p></span>"), 1U);
}

TEST(IndentationEngine, NeverGoesBelowTheMargin) {
    EXPECT_EQ(depthAfter("</div></div>"), 0U);
    EXPECT_EQ(depthAfter("</div></div><p>"), 1U);
    EXPECT_EQ(depthAfter("<script></script></p>}"), 0U);
    EXPECT_EQ(depthAfter("<?php }}} {"), 1U);
}

TEST(IndentationEngine, SeesNoElementInADeclarationOrAnEmptyTag) {
    EXPECT_EQ(depthAfter("<!DOCTYPE html>"), 0U);
    EXPECT_EQ(depthAfter("<?xml version=\"1.0\"?>"), 0U);
    EXPECT_EQ(depthAfter("<div><></>< p></ div><//><_a>"), 1U);
}

TEST(IndentationEngine, PassesOverTheRestOfALineBehindALoneLessSign) {
    EXPECT_EQ(depthAfter("1 < 2 <div"), 0U);
    EXPECT_EQ(depthAfter("1 < 2 und <div> mehr <p>"), 1U);
    EXPECT_EQ(depthAfter("<"), 0U);
    EXPECT_EQ(depthAfter("<div>\n</"), 1U);
    EXPECT_EQ(depthAfter("<div>\n<\n</\n<p>"), 2U);
}

TEST(IndentationEngine, GivesATagThatIsCutByALineEndNoLevel) {
    EXPECT_EQ(depthAfter("<div\nclass=\"a\">"), 0U);
    EXPECT_EQ(depthAfter("<div class=\"a\nb\">"), 0U);
    EXPECT_EQ(depthAfter("<div class=\"a\n\"><p>"), 1U);
    EXPECT_EQ(depthAfter("<div>\n</div\n>"), 1U);
}

TEST(IndentationEngine, ReadsTheValuesOfATagAsAWhole) {
    EXPECT_EQ(depthAfter("<a title=\"1 > 0\">"), 1U);
    EXPECT_EQ(depthAfter("<a title='<b>'>"), 1U);
    EXPECT_EQ(depthAfter("<a title=\"it's\">"), 1U);
    EXPECT_EQ(depthAfter("<a title=\"offen>"), 0U);
    EXPECT_EQ(depthAfter("<a title=\"\\\">"), 1U);
}

TEST(IndentationEngine, EndsANameAtTheFirstOtherCharacter) {
    EXPECT_EQ(depthAfter("<br\"\">"), 0U);
    EXPECT_EQ(depthAfter("<b\"\"r>"), 1U);
    EXPECT_EQ(depthAfter("<script_a>{"), 2U);
    EXPECT_EQ(depthAfter("<svg:rect><h1><x-y>"), 3U);
}

TEST(IndentationEngine, KnowsTheLettersAndDigitsOfAllScripts) {
    EXPECT_EQ(depthAfter("<ü><größe><имя><n\u0661>"), 4U);
    EXPECT_EQ(depthAfter("<brü><br\u0661>"), 2U);
    // A character that is neither ends the name, which is then "br".
    EXPECT_EQ(depthAfter("<br→>"), 0U);
    EXPECT_EQ(depthAfter("<→br>"), 0U);
    EXPECT_EQ(depthAfter("<\U00020000>"), 1U);
    EXPECT_EQ(depthAfter("<😀>"), 0U);
}

TEST(IndentationEngine, LowersTheCaseOfNamesAsUnicodeDoes) {
    EXPECT_EQ(depthAfter("<lin\u212A>"), 0U) << "the Kelvin sign is a capital K";
    EXPECT_EQ(depthAfter("<\u0130mg>"), 1U) << "a dotted capital I keeps its dot";
    EXPECT_EQ(depthAfter("<\u017Fcript>{"), 1U) << "a long s is a small letter";
}

TEST(IndentationEngine, SkipsACommentOnItsLine) {
    EXPECT_EQ(depthAfter("<!-- <div> --><p>"), 1U);
    EXPECT_EQ(depthAfter("<!-- <div>"), 0U);
    EXPECT_EQ(depthAfter("<!--><div>"), 1U);
    EXPECT_EQ(depthAfter("<!---><div>"), 1U);
    EXPECT_EQ(depthAfter("<p><!-- a --><!-- b --><b>"), 2U);
}

TEST(IndentationEngine, ForgetsACommentAtTheLineEnd) {
    EXPECT_EQ(depthAfter("<!--\n<div>\n-->"), 1U);
}

TEST(IndentationEngine, IgnoresQuotationMarksAndBracesInMarkup) {
    EXPECT_EQ(depthAfter("it's { <b> \" <i>"), 2U);
    EXPECT_EQ(depthAfter("<div> }"), 1U);
    EXPECT_EQ(depthAfter("http://a /* <div>"), 1U);
}

TEST(IndentationEngine, GivesATabForEveryOpenBraceOfAScript) {
    EXPECT_EQ(depthAfter("<script>"), 1U);
    EXPECT_EQ(depthAfter("<script>\nif (a) {"), 2U);
    EXPECT_EQ(depthAfter("<script>\nif (a) {\n}"), 1U);
    EXPECT_EQ(depthAfter("<script>\nf({a: {"), 3U);
    EXPECT_EQ(depthAfter("<script>\nif (a < b) { '<div>'"), 2U);
}

TEST(IndentationEngine, SkipsStringsOfAScript) {
    EXPECT_EQ(depthAfter("<script>{ a = \"}\";"), 2U);
    EXPECT_EQ(depthAfter("<script>{ a = '}';"), 2U);
    EXPECT_EQ(depthAfter("<script>{ a = '\"}';"), 2U);
    EXPECT_EQ(depthAfter("<script>{ a = \"\\\"}\";"), 2U);
    EXPECT_EQ(depthAfter("<script>{ a = '\\\\'; }"), 1U);
    EXPECT_EQ(depthAfter("<script>{ a = '\\ü}'"), 2U);
    EXPECT_EQ(depthAfter("<script>a = `}`"), 0U) << "template strings are none";
    EXPECT_EQ(depthAfter("<script>'</script>'"), 1U);
}

TEST(IndentationEngine, EndsAStringAtTheLineEnd) {
    EXPECT_EQ(depthAfter("<script>{ a = 'offen\n}"), 1U);
    EXPECT_EQ(depthAfter("<script>{ a = 'offen\\\n}"), 1U);
    EXPECT_EQ(depthAfter("<script>{ a = 'offen\\"), 2U);
    EXPECT_EQ(depthAfter("<script>{ a = '"), 2U);
}

TEST(IndentationEngine, SkipsTheRestOfALineBehindTwoSlashesInAScript) {
    EXPECT_EQ(depthAfter("<script>{ // }"), 2U);
    EXPECT_EQ(depthAfter("<script>{ // }\n}"), 1U);
    EXPECT_EQ(depthAfter("<script>// </script>"), 1U);
    EXPECT_EQ(depthAfter("<script>a / b {"), 2U);
}

TEST(IndentationEngine, SkipsABlockCommentOnItsLine) {
    for (const char* start : {"<script>", "<style>", "<?php {"}) {
        EXPECT_EQ(depthAfter(start + "{ /* } */"s), 2U) << start;
        EXPECT_EQ(depthAfter(start + "{ /* } */ }"s), 1U) << start;
        EXPECT_EQ(depthAfter(start + "{ /* }"s), 2U) << start;
        EXPECT_EQ(depthAfter(start + "{ /*/ }"s), 1U) << start << ": the marks share their asterisk";
    }
}

TEST(IndentationEngine, ForgetsABlockCommentAtTheLineEnd) {
    EXPECT_EQ(depthAfter("<script>{ /*\n}\n*/"), 1U);
}

TEST(IndentationEngine, KnowsNoLineCommentInAStyleSheet) {
    EXPECT_EQ(depthAfter("<style>\na { // }"), 1U);
    EXPECT_EQ(depthAfter("<style>\na { //* }"), 2U);
    EXPECT_EQ(depthAfter("<style>\na {\n# }"), 1U);
    EXPECT_EQ(depthAfter("<style>\na {"), 2U);
    EXPECT_EQ(depthAfter("<style>\na { content: '}'"), 2U);
}

TEST(IndentationEngine, ReturnsToMarkupBehindAScriptOrAStyleSheet) {
    EXPECT_EQ(depthAfter("<script></script>{"), 0U);
    EXPECT_EQ(depthAfter("<style></style>{"), 0U);
    EXPECT_EQ(depthAfter("<SCRIPT>{}</ScRiPt><p>{"), 1U);
    EXPECT_EQ(depthAfter("<Style>{}</STYLE ><p>{"), 1U);
    EXPECT_EQ(depthAfter("<script></style>{"), 2U);
    EXPECT_EQ(depthAfter("<style></script>{"), 2U);
    EXPECT_EQ(depthAfter("<script></scriptum>{"), 0U);
}

TEST(IndentationEngine, LeavesAScriptWithoutALevelWhenItsEndTagIsCut) {
    EXPECT_EQ(depthAfter("<script>{\n</script"), 2U);
    EXPECT_EQ(depthAfter("<script>{\n</script\n>{ <p>"), 3U);
    EXPECT_EQ(depthAfter("<style>\n</style\n{"), 1U);
}

TEST(IndentationEngine, GivesATabForEveryOpenBraceOfAPhpBlock) {
    EXPECT_EQ(depthAfter("<?php if ($a) {"), 1U);
    EXPECT_EQ(depthAfter("<?php\nif ($a) {\n}"), 0U);
    EXPECT_EQ(depthAfter("<?= f() {"), 1U);
    EXPECT_EQ(depthAfter("<?PHP {"), 1U);
    EXPECT_EQ(depthAfter("<?phpx {"), 1U);
    EXPECT_EQ(depthAfter("<? {"), 0U);
    EXPECT_EQ(depthAfter("<?php <div>"), 0U);
}

TEST(IndentationEngine, SkipsStringsAndCommentsOfAPhpBlock) {
    EXPECT_EQ(depthAfter("<?php { '}'"), 1U);
    EXPECT_EQ(depthAfter("<?php { \"}\""), 1U);
    EXPECT_EQ(depthAfter("<?php { // }"), 1U);
    EXPECT_EQ(depthAfter("<?php { # }"), 1U);
    EXPECT_EQ(depthAfter("<?php { # ?> </div>"), 1U);
}

TEST(IndentationEngine, ReturnsToMarkupBehindAPhpBlock) {
    EXPECT_EQ(depthAfter("<?php { ?>}<div>"), 2U);
    EXPECT_EQ(depthAfter("<?php ? > ?><p>{"), 1U);
    EXPECT_EQ(depthAfter("<?= $a ?><p>"), 1U);
    EXPECT_EQ(depthAfter("<?php '?>'{"), 1U);
    EXPECT_EQ(depthAfter("<?php ?"), 0U);
}

TEST(IndentationEngine, KnowsNoPhpBlockInAScript) {
    EXPECT_EQ(depthAfter("<script><?php # }\n{"), 1U);
}

TEST(IndentationEngine, TakesACarriageReturnForAnOrdinaryCharacter) {
    EXPECT_EQ(depthAfter("<div>\r\n<p>\r\n"), 2U);
    EXPECT_EQ(depthAfter("<div\r>"), 1U);
    EXPECT_EQ(depthAfter("<br\r>"), 0U);
    EXPECT_EQ(depthAfter("<!--\r<div>"), 0U);
    EXPECT_EQ(depthAfter("<script>{ 'a\\\r\n}"), 1U);
}

TEST(IndentationEngine, ReadsATextWithNulToItsEnd) {
    EXPECT_EQ(depthAfter("<div>\0<p>"s), 2U);
    EXPECT_EQ(depthAfter("<div>\0<p>\0<br\0>"s), 2U);
}

TEST(IndentationEngine, SurvivesBytesThatAreNoUtf8) {
    EXPECT_EQ(depthAfter("<\xC3"), 0U);
    EXPECT_EQ(depthAfter("<a\xFF><b\xC3><\xE2\x82>"), 2U);
}

TEST(IndentationEngine, CountsManyLevels) {
    std::string text;
    for (int level = 0; level < 10'000; ++level)
        text += "<div>\n";
    EXPECT_EQ(depthAfter(text), 10'000U);
}

TEST(IndentationEngine, LaysATextOutAnewLikeTheFormatter) {
    const std::string_view text = "<div><p>Text</p></div>\n";
    EXPECT_EQ(IndentationEngine::reformat(text), HTMLFormatter::format(text));
    EXPECT_EQ(IndentationEngine::reformat(text), "<div>\n\t<p>Text</p>\n</div>\n");
}

TEST(IndentationEngine, AnswersLikeThePlainRulesForRandomText) {
    constexpr std::array<std::string_view, 60> pieces{
        "<",           "</",      ">",      "/>",       "/",           "div",      "br",      "<p>",
        "</p>",        "<script", "<style", "<SCRIPT>", "<style>",     "</script", "</style", "</ScripT>",
        "</style>",    "<!--",    "-->",    "->",       "<!",          "<?php",    "<?=",     "<?",
        "?>",          "?",       "{",      "}",        "\"",          "'",        "\\",      "/*",
        "*/",          "//",      "#",      "\n",       "\r\n",        " ",        "=",       "a",
        "-",           ":",       "ü",      "→",        "\u212A",      "lin",      "1",       "\u0661",
        "😀",           "\u0130",  "\u0301", "\t",       "<img src=x>", "<br/>",    "</",      "<a b='",
        "title=\"x\"", "!",       "\0",     "*"};
    std::mt19937 random(11);
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t count = random() % 40; count > 0; --count)
            text += pieces[random() % pieces.size()];
        ASSERT_EQ(IndentationEngine::indentForNewLine(text), ReferenceIndentation::indentForNewLine(text))
            << "round " << round << ": " << text;
    }
}

} // namespace corvanta
