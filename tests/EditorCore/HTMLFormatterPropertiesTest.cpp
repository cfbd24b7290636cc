// What holds of every formatted text: on random fragments, on a few small pages beside this test, and on
// whatever pages lie in the folder that the environment variable CORVANTA_REAL_INPUT names. Of those a sample
// is taken, unless CORVANTA_LONG_TESTS is set.

#include "EditorCore/HTMLFormatter.hpp"
#include "EditorCore/HTMLFormatterSpace.hpp"
#include "EditorCore/ReferenceFormatter.hpp"
#include "EditorCore/TextDecoding.hpp"
#include "Support/RealPages.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

/// What pages are made of, whole and broken.
constexpr std::array<std::string_view, 71> fragments{"<div>",
                                                     "</div>",
                                                     "<ul>",
                                                     "</ul>",
                                                     "<li>",
                                                     "</li>",
                                                     "<p>",
                                                     "</p>",
                                                     "<td>",
                                                     "</td>",
                                                     "<b>",
                                                     "</b>",
                                                     "<A href='>'>",
                                                     "</a>",
                                                     "<span\n x>",
                                                     "</span>",
                                                     "<br>",
                                                     "<img/>",
                                                     "<hr>",
                                                     "<p/>",
                                                     "<script>",
                                                     "</script>",
                                                     "<script/>",
                                                     "<style>",
                                                     "</style >",
                                                     "<pre>",
                                                     "</PRE>",
                                                     "<textarea>",
                                                     "</textarea\n>",
                                                     "</x>",
                                                     "<x-y>",
                                                     "</X-Y>",
                                                     "<!-- a -->",
                                                     "<!--\n",
                                                     "-->",
                                                     "<!doctype html>",
                                                     "<!",
                                                     "<?php x ?>",
                                                     "<?php\n{\n?>",
                                                     "<?",
                                                     "?>",
                                                     "<",
                                                     "</",
                                                     ">",
                                                     "\"",
                                                     "'",
                                                     "`",
                                                     "{",
                                                     "}",
                                                     ")",
                                                     "]",
                                                     "//",
                                                     "/",
                                                     "\\",
                                                     "\n",
                                                     "\n\n",
                                                     "\r\n",
                                                     " ",
                                                     "  ",
                                                     "\t",
                                                     "\f",
                                                     "\v",
                                                     "a",
                                                     "wort",
                                                     "\u00a0",
                                                     "ü",
                                                     "<ü>",
                                                     "</Ü>",
                                                     "🥐",
                                                     "eine lange Zeile mit Text",
                                                     "0"};

/// Those that leave nothing open to the end of the text, whatever they stand beside.
constexpr std::array<std::string_view, 34> closedFragments{"<div>",
                                                           "</div>",
                                                           "<ul>",
                                                           "</ul>",
                                                           "<li>",
                                                           "</li>",
                                                           "<p>",
                                                           "</p>",
                                                           "<td>",
                                                           "</td>",
                                                           "<b>",
                                                           "</b>",
                                                           "<a href=x>",
                                                           "</a>",
                                                           "<br>",
                                                           "<hr>",
                                                           "</x>",
                                                           "<x-y>",
                                                           "</x-y>",
                                                           "<!-- a\n -->",
                                                           "<?php\n{\n}\n?>",
                                                           "<?= x ?>",
                                                           "<pre>\n x\n</pre>",
                                                           "<script>\n if (a) {\nb()\n}\n</script>",
                                                           "\n",
                                                           "\n\n",
                                                           "\r\n",
                                                           " ",
                                                           "\t",
                                                           "\f",
                                                           "a",
                                                           "wort",
                                                           "ü",
                                                           "< "};

template <std::size_t count>
std::string randomText(std::mt19937& random, const std::array<std::string_view, count>& parts,
                       int longest = 40) {
    std::uniform_int_distribution<std::size_t> part(0, count - 1);
    std::uniform_int_distribution<int> length(0, longest);
    std::string text;
    for (int rest = length(random); rest > 0; --rest)
        text += parts[part(random)];
    return text;
}

std::string withoutSpace(std::string_view text) {
    std::string rest;
    std::copy_if(text.begin(), text.end(), std::back_inserter(rest),
                 [](char byte) { return !HTMLFormatterSpace::contains(byte); });
    return rest;
}

void expectTheRulesHold(const std::string& text, const std::string& name) {
    const std::string formatted = HTMLFormatter::format(text);
    EXPECT_TRUE(formatted == ReferenceFormatter::format(text)) << name;
    EXPECT_TRUE(withoutSpace(formatted) == withoutSpace(text)) << name;
    EXPECT_TRUE(ReferenceFormatter::literalContents(formatted) == ReferenceFormatter::literalContents(text))
        << name;
}

/// A text that ends inside a comment or another construct never closed is different: what stands there is
/// carried to the end as it is, line feed included, and the one that ends the text is added to it.
void expectSecondTimeChangesNothing(const std::string& text, const std::string& name) {
    const std::string once = HTMLFormatter::format(text);
    EXPECT_TRUE(HTMLFormatter::format(once) == once) << name;
}

/// Checks `rounds` texts made of `parts`, up to the first that fails.
template <std::size_t count, typename Check>
void checkRandomTexts(unsigned seed, int rounds, const std::array<std::string_view, count>& parts,
                      Check check) {
    std::mt19937 random(seed);
    for (int round = 0; round < rounds && !testing::Test::HasFailure(); ++round) {
        const std::string text = randomText(random, parts);
        check(text, text);
    }
}

void expectTheRulesHoldOnPage(const std::filesystem::path& page) {
    const std::string text = TextDecoding::string(bytesOf(page));
    expectTheRulesHold(text, page);
    expectSecondTimeChangesNothing(text, page);
}

} // namespace

TEST(HTMLFormatterProperties, HoldOnRandomFragments) {
    checkRandomTexts(20240229, 8'000, fragments, expectTheRulesHold);
}

TEST(HTMLFormatterProperties, HoldOnLongRandomText) {
    std::mt19937 random(20000101);
    for (int round = 0; round < 40; ++round) {
        expectTheRulesHold(randomText(random, closedFragments, 4'000), "round " + std::to_string(round));
        expectTheRulesHold(randomText(random, fragments, 4'000), "round " + std::to_string(round));
    }
}

TEST(HTMLFormatterProperties, FormattingTwiceIsFormattingOnceWhereNothingStaysOpenToTheEnd) {
    checkRandomTexts(19991231, 20'000, closedFragments, expectSecondTimeChangesNothing);
}

TEST(HTMLFormatterProperties, FormattingTwiceAddsALineFeedToAnUnclosedComment) {
    EXPECT_EQ(HTMLFormatter::format("<!-- a\n"), "<!-- a\n\n");
    EXPECT_EQ(HTMLFormatter::format("<!-- a\n\n"), "<!-- a\n\n\n");
}

TEST(HTMLFormatterProperties, HoldOnPagesOfOurOwn) {
    const auto pages = markupAmong(ownPages());
    EXPECT_GE(pages.size(), 2U);
    for (const auto& page : pages)
        expectTheRulesHoldOnPage(page);
}

TEST(HTMLFormatterProperties, HoldOnPagesOfOthers) {
    constexpr std::size_t share = 97;
    for (const auto& page : markupAmong(realPages(share)))
        expectTheRulesHoldOnPage(page);
}

} // namespace corvanta
