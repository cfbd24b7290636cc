#include "EditorCore/HTMLFormatter.hpp"

#include "EditorCore/DocumentTemplate.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

std::string format(std::string_view text) {
    return HTMLFormatter::format(text);
}

std::string repeated(std::string_view part, std::size_t count) {
    std::string text;
    for (std::size_t index = 0; index < count; ++index)
        text += part;
    return text;
}

std::string withoutCarriageReturns(std::string text) {
    std::erase(text, '\r');
    return text;
}

std::string withCarriageReturns(std::string_view text) {
    std::string twin;
    for (const char byte : text) {
        if (byte == '\n')
            twin += '\r';
        twin += byte;
    }
    return twin;
}

constexpr std::size_t many = 100'000;

TEST(HTMLFormatter, GivesAPageBackThatWouldBecomeNothingButTabs) {
    std::string page;
    for (int element = 0; element < 100'000; ++element)
        page += "<div>";
    EXPECT_EQ(HTMLFormatter::format(page), page);
}

TEST(HTMLFormatter, FormatsADeepPageWhoseResultStaysBelowTheLimit) {
    std::string page;
    std::string formatted;
    for (int depth = 0; depth < 8'000; ++depth) {
        page += "<div>";
        formatted += (depth == 0 ? "" : "\n") + std::string(static_cast<std::size_t>(depth), '\t') + "<div>";
    }
    EXPECT_TRUE(HTMLFormatter::format(page) == formatted);
}

} // namespace

TEST(HTMLFormatter, LeavesTheNewDocumentsTemplateAsItIs) {
    EXPECT_EQ(format(DocumentTemplate::newHTML), DocumentTemplate::newHTML);
}

TEST(HTMLFormatter, MakesNothingOfNothing) {
    EXPECT_EQ(format(""), "");
    EXPECT_EQ(format("\n"), "");
    EXPECT_EQ(format(" \t\r\n\f\n"), "");
}

TEST(HTMLFormatter, KeepsALineFeedAtTheEndAndAddsNone) {
    EXPECT_EQ(format("<p>x</p>\n"), "<p>x</p>\n");
    EXPECT_EQ(format("<p>x</p>\n\n\n"), "<p>x</p>\n");
    EXPECT_EQ(format("<p>x</p>"), "<p>x</p>");
    EXPECT_EQ(format("<p>x</p>\n "), "<p>x</p>");
}

TEST(HTMLFormatter, PutsTheItemsOfAListOnLinesOfTheirOwn) {
    EXPECT_EQ(format("<ul><li>eins</li><li>zwei</li></ul>"), "<ul>\n\t<li>eins</li>\n\t<li>zwei</li>\n</ul>");
}

TEST(HTMLFormatter, JoinsAParagraphOntoOneLine) {
    EXPECT_EQ(format("<p>\n  Ein <b>fettes</b>\n  Wort.\n</p>"), "<p>Ein <b>fettes</b> Wort.</p>");
    EXPECT_EQ(format("<div><p>\n  Ein <b>fettes</b>\n  Wort.\n</p></div>"),
              "<div>\n\t<p>Ein <b>fettes</b> Wort.</p>\n</div>");
}

TEST(HTMLFormatter, JoinsTextInsideInlineElementsToo) {
    EXPECT_EQ(format("<p>a <b> x\n\ty </b> c</p>"), "<p>a <b> x y </b> c</p>");
    EXPECT_EQ(format("a\n<b>x\n\ny</b>\nc"), "a\n<b>x y</b>\nc");
}

TEST(HTMLFormatter, KeepsLineBreaksOfTextBetweenBlocks) {
    EXPECT_EQ(format("<body>eins\n   zwei   drei\n</body>"), "<body>\n\teins\n\tzwei drei\n</body>");
    EXPECT_EQ(format("<body>eins\n\n\nzwei</body>"), "<body>\n\teins\n\tzwei\n</body>");
}

TEST(HTMLFormatter, KeepsInlineElementsInTheirLineOfText) {
    EXPECT_EQ(format("<div>a <em>b</em>\n<i>c</i> d<br>\ne <img src=x></div>"),
              "<div>\n\ta <em>b</em>\n\t<i>c</i> d<br>\n\te <img src=x>\n</div>");
}

TEST(HTMLFormatter, MakesBlankLinesBetweenBlocksOneEmptyLine) {
    EXPECT_EQ(format("<p>a</p>\n\n<p>b</p>"), "<p>a</p>\n\n<p>b</p>");
    EXPECT_EQ(format("<p>a</p>\n \n\t\n\n<p>b</p>"), "<p>a</p>\n\n<p>b</p>");
    EXPECT_EQ(format("<p>a</p>\n<p>b</p><p>c</p>"), "<p>a</p>\n<p>b</p>\n<p>c</p>");
    EXPECT_EQ(format("<div>\n\n<p>a</p>\n\n</div>"), "<div>\n\n\t<p>a</p>\n\n</div>");
}

TEST(HTMLFormatter, MakesNoEmptyLineAtTheStart) {
    EXPECT_EQ(format("\n\n\n<p>a</p>"), "<p>a</p>");
}

TEST(HTMLFormatter, DoesNotCountCarriageReturnsAsBlankLines) {
    EXPECT_EQ(format("<p>a</p>\r\n<p>b</p>"), "<p>a</p>\n<p>b</p>");
    EXPECT_EQ(format("<p>a</p>\r\r\r<p>b</p>"), "<p>a</p>\n<p>b</p>");
}

TEST(HTMLFormatter, KeepsPreformattedTextByteForByte) {
    EXPECT_EQ(format("<div><pre>  a\n\t b </pre></div>"), "<div>\n\t<pre>  a\n\t b </pre>\n</div>");
    EXPECT_EQ(format("<textarea>\r\n <b> \r\n</textarea>"), "<textarea>\r\n <b> \r\n</textarea>");
    EXPECT_EQ(format("<p>x <pre> a </pre></p>"), "<p>\n\tx\n\t<pre> a </pre>\n</p>");
}

TEST(HTMLFormatter, KeepsPreformattedTextInsideInlineElements) {
    EXPECT_EQ(format("<p><b> <pre>\n a</pre></b></p>"), "<p><b> <pre>\n a</pre></b></p>");
}

TEST(HTMLFormatter, IndentsAScriptByItsBraces) {
    EXPECT_EQ(
        format("<head><script>\n   if (a) {\n   b();\n\n} else {\n c([\n 1\n ]);\n}\n\n</script></head>"),
        "<head>\n\t<script>\n\t\tif (a) {\n\t\t\tb();\n\n\t\t} else {\n\t\t\tc([\n\t\t\t1\n\t\t]);\n\t\t}\n"
        "\t</script>\n</head>");
}

TEST(HTMLFormatter, MovesALineThatStartsWithAClosingBracketOneLevelBack) {
    EXPECT_EQ(format("<script>{\n)\n]\n}\n)\n}\nx</script>"),
              "<script>\n\t{\n\t)\n\t]\n\t}\n\t)\n\t}\n\tx\n</script>");
}

TEST(HTMLFormatter, CountsNoBracesInStringsAndLineComments) {
    EXPECT_EQ(format("<script>\na = \"{\\\"{\";\nb = '{' + `{`;\n// {\nc / {\nd\n</script>"),
              "<script>\n\ta = \"{\\\"{\";\n\tb = '{' + `{`;\n\t// {\n\tc / {\n\t\td\n</script>");
}

TEST(HTMLFormatter, CountsBracesInBlockCommentsAndForgetsStringsAtTheLinesEnd) {
    EXPECT_EQ(format("<style>/* { */\na\n'open {\n}\nb</style>"),
              "<style>\n\t/* { */\n\t\ta\n\t\t'open {\n\t}\n\tb\n</style>");
    EXPECT_EQ(format("<script>'\\\n{\nx</script>"), "<script>\n\t'\\\n\t{\n\t\tx\n</script>");
}

TEST(HTMLFormatter, NeverGoesBelowTheScriptsOwnLevel) {
    EXPECT_EQ(format("<script>}}}\na{\nb</script>"), "<script>\n\t}}}\n\ta{\n\t\tb\n</script>");
}

TEST(HTMLFormatter, KeepsAnEmptyScriptOnOneLine) {
    EXPECT_EQ(format("<script src=\"a.js\">\n </script>"), "<script src=\"a.js\"></script>");
    EXPECT_EQ(format("<STYLE></STYLE >"), "<STYLE></STYLE >");
}

TEST(HTMLFormatter, EndsAScriptAtItsOwnClosingTagOnly) {
    EXPECT_EQ(format("<script>'</scripts>' </style></SCRIPT\n>x"),
              "<script>\n\t'</scripts>' </style>\n</SCRIPT\n>\nx");
    EXPECT_EQ(format("<script>a</script/>"), "<script>\n\ta\n</script/>");
}

TEST(HTMLFormatter, ReadsAnUnclosedScriptAsMarkup) {
    EXPECT_EQ(format("<script><p>a</p>"), "<script>\n\t<p>a</p>");
    EXPECT_EQ(format("<script><p>a</p></script"), "<script>\n\t<p>a</p>\n\t</script");
    EXPECT_EQ(format("<style>a</style x"), "<style>\n\ta</style x");
}

TEST(HTMLFormatter, TakesASelfClosedScriptAsEmpty) {
    EXPECT_EQ(format("<script/>\n<p>a</p></script>"), "<script/>\n<p>a</p>\n</script>");
}

TEST(HTMLFormatter, IndentsLongPHPAndKeepsShortPHPInItsLine) {
    EXPECT_EQ(format("<ul><?php\nforeach ($a as $b) {\n?><li><?= $b ?></li>\n<?php } ?></ul>"),
              "<ul>\n\t<?php\n\tforeach ($a as $b) {\n\t\t?>\n\t<li><?= $b ?></li>\n\t<?php } ?>\n</ul>");
    EXPECT_EQ(format("<div>a <?php b() ?> c</div>"), "<div>\n\ta <?php b() ?> c\n</div>");
    EXPECT_EQ(format("<p>a <?php\nb() ?> c</p>"), "<p>\n\ta\n\t<?php\n\tb() ?>\n\tc\n</p>");
}

TEST(HTMLFormatter, KeepsPHPInsideInlineElementsAsItStands) {
    EXPECT_EQ(format("<p><b><?php\n  b() ?></b></p>"), "<p><b><?php\n  b() ?></b></p>");
}

TEST(HTMLFormatter, KeepsTheInnerLinesOfACommentAsTheyAre) {
    EXPECT_EQ(format("<div><!-- a\n   b --></div>"), "<div>\n\t<!-- a\n   b -->\n</div>");
    EXPECT_EQ(format("<p>a<!-- b -->c</p>"), "<p>\n\ta\n\t<!-- b -->\n\tc\n</p>");
    EXPECT_EQ(format("<!-->a<p>-->"), "<!-->a<p>-->");
}

TEST(HTMLFormatter, PutsDeclarationsOnLinesOfTheirOwn) {
    EXPECT_EQ(format("<!DOCTYPE html><html></html>"), "<!DOCTYPE html>\n<html>\n</html>");
    EXPECT_EQ(format("a<![CDATA[b]]>c"), "a\n<![CDATA[b]]>\nc");
}

TEST(HTMLFormatter, KeepsAStrayClosingTagWhereItWas) {
    EXPECT_EQ(format("<p>a</p>\n</div>\n<p>b</p>"), "<p>a</p>\n</div>\n<p>b</p>");
    EXPECT_EQ(format("a </b> c"), "a </b> c");
    EXPECT_EQ(format("a </> c </1> d"), "a </> c </1> d");
    EXPECT_EQ(format("<br></br>"), "<br></br>");
    EXPECT_EQ(format("<p>x</b></p>"), "<p>x</b></p>");
}

TEST(HTMLFormatter, CollapsesWhiteSpaceInAStrayClosingTagAsInAllText) {
    EXPECT_EQ(format("a </b\n  > c"), "a </b\n> c");
}

TEST(HTMLFormatter, InventsNoClosingTag) {
    EXPECT_EQ(format("<div>\n<p>a</p>"), "<div>\n\t<p>a</p>");
    EXPECT_EQ(format("<ul><li>a<li>b</ul>c"), "<ul>\n\t<li>\n\t\ta\n\t\t<li>\n\t\t\tb\n</ul>\nc");
    EXPECT_EQ(format("<p>a <b>b<p>c"), "<p>\n\ta <b>b<p>c");
}

TEST(HTMLFormatter, ClosesWhatIsOpenInsideAClosedElement) {
    EXPECT_EQ(format("<div><p>a<i>b</div>c"), "<div>\n\t<p>\n\t\ta<i>b\n</div>\nc");
    EXPECT_EQ(format("<b><i>a</b></i>"), "<b><i>a</b></i>");
}

TEST(HTMLFormatter, RecognisesTagsInAnyCaseAndPrintsThemAsWritten) {
    EXPECT_EQ(format("<DIV><P>a <B>b</b></p></Div>"), "<DIV>\n\t<P>a <B>b</b></p>\n</Div>");
    EXPECT_EQ(format("<Blockquote>a</BLOCKQUOTE>"), "<Blockquote>\n\ta\n</BLOCKQUOTE>");
}

TEST(HTMLFormatter, ComparesNamesOfAnyScriptWithoutRegardToCase) {
    EXPECT_EQ(format("<\u00dcber-1.x:_>a<p>b</p></\u00fcBER-1.X:_>"),
              "<\u00dcber-1.x:_>\n\ta\n\t<p>b</p>\n</\u00fcBER-1.X:_>");
    EXPECT_EQ(format("<_x>a</_X>"), "<_x>a</_X>");
}

TEST(HTMLFormatter, KeepsATagExactlyAsWritten) {
    EXPECT_EQ(format("<div   class='a >  b'\n\tid=\"'>\" ><p>x</p></div\n>"),
              "<div   class='a >  b'\n\tid=\"'>\" >\n\t<p>x</p>\n</div\n>");
}

TEST(HTMLFormatter, TakesVoidAndSelfClosedElementsAsEmpty) {
    EXPECT_EQ(format("<div><hr>a<p/>b<input>c<span/>d<Meta></div>"),
              "<div>\n\t<hr>\n\ta\n\t<p/>\n\tb<input>c<span/>d\n\t<Meta>\n</div>");
    EXPECT_EQ(format("<div><a href=x/>b</div>"), "<div>\n\t<a href=x/>b\n</div>");
}

TEST(HTMLFormatter, AlwaysBreaksContainersAndOthersOnlyAroundBlocks) {
    EXPECT_EQ(format("<div></div>"), "<div>\n</div>");
    EXPECT_EQ(format("<p></p>"), "<p></p>");
    EXPECT_EQ(format("<p> \n </p>"), "<p></p>");
    EXPECT_EQ(format("<li>a<hr></li>"), "<li>\n\ta\n\t<hr>\n</li>");
    EXPECT_EQ(format("<li>a<script></script></li>"), "<li>\n\ta\n\t<script></script>\n</li>");
    EXPECT_EQ(format("<li><b><hr></b></li>"), "<li><b><hr></b></li>");
    EXPECT_EQ(format("<xy><td>a</td></xy>"), "<xy>\n\t<td>a</td>\n</xy>");
}

TEST(HTMLFormatter, KnowsTheSpecialElements) {
    for (const std::string name :
         {"a",     "abbr",   "acronym",  "b",    "bdi",  "bdo", "big",  "cite",  "code", "data",
          "del",   "dfn",    "em",       "font", "i",    "ins", "kbd",  "label", "map",  "mark",
          "meter", "output", "progress", "q",    "rp",   "rt",  "ruby", "s",     "samp", "small",
          "span",  "strong", "sub",      "sup",  "time", "tt",  "u",    "var"})
        EXPECT_EQ(format("x<" + name + "><hr></" + name + ">"), "x<" + name + "><hr></" + name + ">");
    for (const std::string name : {"br", "img", "input", "wbr"})
        EXPECT_EQ(format("x<" + name + ">x"), "x<" + name + ">x");
    for (const std::string name :
         {"area", "base", "col", "embed", "hr", "link", "meta", "param", "source", "track"})
        EXPECT_EQ(format("x<" + name + ">x"), "x\n<" + name + ">\nx");
    for (const std::string name :
         {"html",     "head",       "body",    "div",    "section",  "article",  "header",
          "footer",   "nav",        "main",    "aside",  "form",     "fieldset", "table",
          "thead",    "tbody",      "tfoot",   "tr",     "ul",       "ol",       "dl",
          "figure",   "blockquote", "details", "select", "optgroup", "colgroup", "template",
          "noscript", "address",    "hgroup",  "menu",   "dialog",   "picture"})
        EXPECT_EQ(format("<" + name + ">x</" + name + ">"), "<" + name + ">\n\tx\n</" + name + ">");
    for (const std::string name :
         {"p", "li", "td", "th", "h1", "h6", "dt", "dd", "title", "option", "button", "x-y"})
        EXPECT_EQ(format("<" + name + ">\nx</" + name + ">"), "<" + name + ">x</" + name + ">");
}

TEST(HTMLFormatter, KeepsALoneLessThanSignAsText) {
    EXPECT_EQ(format("<p>1 < 2 <3 <</p>"), "<p>1 < 2 <3 <</p>");
    EXPECT_EQ(format("<"), "<");
    EXPECT_EQ(format("a <b"), "a <b");
    EXPECT_EQ(format("<p>a</p> </"), "<p>a</p>\n</");
    EXPECT_EQ(format("<a title=\"x>"), "<a title=\"x>");
}

TEST(HTMLFormatter, ReadsATagBehindOneThatNeverEnds) {
    EXPECT_EQ(format("<a \"<div><hr>"), "<a \"\n<div>\n\t<hr>");
    EXPECT_EQ(format("<a \" <b ' <div><hr>"), "<a \" <b '\n<div>\n\t<hr>");
}

TEST(HTMLFormatter, CarriesUnclosedConstructsToTheEnd) {
    EXPECT_EQ(format("<p>a</p><!-- b\n <p>"), "<p>a</p>\n<!-- b\n <p>");
    EXPECT_EQ(format("<!DOC"), "<!DOC");
    EXPECT_EQ(format("<div><?php\n{\nx"), "<div>\n\t<?php\n\t{\n\t\tx");
    EXPECT_EQ(format("<div><?php x "), "<div>\n\t<?php x");
}

TEST(HTMLFormatter, LeavesNoBreakSpacesAndVerticalTabsAlone) {
    EXPECT_EQ(format("<p>\u00a0 a \u00a0 \u00a0b\u00a0</p>"), "<p>\u00a0 a \u00a0 \u00a0b\u00a0</p>");
    EXPECT_EQ(format("<div>\u00a0\n\n\u00a0</div>"), "<div>\n\t\u00a0\n\t\u00a0\n</div>");
    EXPECT_EQ(format("<p>\v \v  \va\v</p>\v\v\v\v\v\v\v\v\v\v"), "<p>\v \v \va\v</p>\n\v\v\v\v\v\v\v\v\v\v");
}

TEST(HTMLFormatter, TakesFormFeedsAsWhiteSpace) {
    EXPECT_EQ(format("<p>\fa\f\fb\f</p>\f"), "<p>a b</p>");
    EXPECT_EQ(format("<script>\f</script\f>"), "<script></script\f>");
}

TEST(HTMLFormatter, CollapsesRunsWhereverTheyLieInTheText) {
    for (std::size_t before = 0; before < 20; ++before) {
        const std::string word(before, 'x');
        EXPECT_EQ(format("<p>." + word + " \t " + word + "\n.</p>"),
                  "<p>." + word + " " + word + (before ? " ." : ".") + "</p>");
        EXPECT_EQ(format("." + word + "  \t" + word + " \n ."),
                  "." + word + (before ? " " : "") + word + "\n.");
    }
}

TEST(HTMLFormatter, CollapsesRunsAnywhereInALineThatIsCopiedInPieces) {
    constexpr std::size_t piece = 16384;
    for (std::size_t before = piece - 10; before < piece + 10; ++before) {
        const std::string start = "." + std::string(before, 'x');
        const std::string longLine = std::string(2 * piece, 'y');
        for (const std::string_view space : {" ", "  ", "   ", "\t", " \t"})
            EXPECT_EQ(format(start + std::string(space) + longLine), start + " " + longLine) << before;
        EXPECT_EQ(format("<p>" + start + "  " + longLine + "</p>"), "<p>" + start + " " + longLine + "</p>");
        EXPECT_EQ(format(start + "\n" + longLine), start + "\n" + longLine) << before;
        EXPECT_EQ(format(start + " \n" + longLine), start + "\n" + longLine) << before;
        EXPECT_EQ(format(start + "\n " + longLine), start + "\n" + longLine) << before;
    }
}

TEST(HTMLFormatter, FormatsTwinsWithCarriageReturnsAlike) {
    const std::string page =
        "<!DOCTYPE html>\n<html>\n<body>\n\n<p>a\n b</p>\ntext\n  <b>x\ny</b>  \n\n\n"
        "<script>\n  if (a) {\n\n  b('x\\\n');\n}\n</script>\n<?php\n  c();\n?>\n\n</body>\n</html>\n\n";
    EXPECT_EQ(format(withCarriageReturns(page)), format(page));
}

TEST(HTMLFormatter, KeepsCarriageReturnsOnlyWhereTextStandsAsItIs) {
    const std::string page = "<div\n class=a><pre>\n x\n</pre>\n<!-- a\n b --></div>\n";
    const std::string formatted = format(withCarriageReturns(page));
    EXPECT_EQ(formatted, "<div\r\n class=a>\n\t<pre>\r\n x\r\n</pre>\n\t<!-- a\r\n b -->\n</div>\n");
    EXPECT_EQ(withoutCarriageReturns(formatted), format(page));
}

TEST(HTMLFormatter, CarriesNulAndIllFormedBytesThrough) {
    const std::string text("<p>a\0b \xff\xfe</p><\xff></\xc3><b\xff>x", 24);
    EXPECT_EQ(format(text), std::string("<p>a\0b \xff\xfe</p>\n<\xff></\xc3><b\xff>x", 25));
}

TEST(HTMLFormatter, HoldsManyElementsInsideOneAnother) {
    EXPECT_EQ(format(repeated("<b>", many)), repeated("<b>", many));
    EXPECT_EQ(format(repeated("<b>", many) + " \n " + repeated("</b>", many)),
              repeated("<b>", many) + " " + repeated("</b>", many));
    EXPECT_EQ(format(repeated("<b><div>", many)), repeated("<b><div>", many));
}

TEST(HTMLFormatter, IndentsEveryLevelOfNestedBlocks) {
    constexpr std::size_t depth = 2'000;
    const std::string formatted = format(repeated("<div>", depth) + repeated("</div>", depth));
    EXPECT_EQ(std::count(formatted.begin(), formatted.end(), '\n'), 2 * depth - 1);
    EXPECT_EQ(std::count(formatted.begin(), formatted.end(), '\t'), depth * (depth - 1));
}

TEST(HTMLFormatter, CarriesTextThatIsMadeToHurtThrough) {
    for (const std::string_view part :
         {"<", "</", "</p>", "<a", "<a\"", "<a\"'", "</script<script", "<a\"<b'"}) {
        const std::string text = repeated(part, many);
        EXPECT_EQ(format(text), text) << part;
    }
    for (const std::string_view part : {"<!--", "<!", "<?"})
        EXPECT_EQ(format(repeated(part, many)), repeated(part, many)) << part;
}

TEST(HTMLFormatter, SearchesForAMissingEndOnce) {
    EXPECT_EQ(format("<b>" + repeated("<script>", many)), "<b>" + repeated("<script>", many));
    EXPECT_EQ(format("<b>" + repeated("<script>", many) + "</script"),
              "<b>" + repeated("<script>", many) + "</script");
    EXPECT_EQ(format("<b>" + repeated("<i>", many) + repeated("</p>", many)),
              "<b>" + repeated("<i>", many) + repeated("</p>", many));
}

TEST(HTMLFormatter, TellsManyUnknownNamesApart) {
    std::string text = "<b>";
    for (std::size_t number = 0; number < many; ++number)
        text += "<x" + std::to_string(number) + "></y" + std::to_string(number) + ">";
    EXPECT_EQ(format(text), text);
}

} // namespace corvanta
