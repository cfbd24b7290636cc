#include "EditorCore/TextSearch.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

TextSearch searched(const std::string& text, const FindRequest& request) {
    TextSearch search(text, request);
    while (search.state() == TextSearch::State::searching)
        search.advance(2ms);
    return search;
}

/// The matches as texts.
std::vector<std::string> found(const std::string& text, const FindRequest& request) {
    std::vector<std::string> matches;
    const TextSearch search = searched(text, request);
    for (const FindMatch& match : search.matches())
        matches.push_back(text.substr(static_cast<std::size_t>(match.first),
                                      static_cast<std::size_t>(match.last - match.first)));
    return matches;
}

using Texts = std::vector<std::string>;

constexpr bool matchesCase = true;
constexpr bool isRegular = true;

TEST(TextSearch, FindsPlainTextInAnyCase) {
    EXPECT_EQ(found("Wort wort WORT wor", {"wort"}), (Texts{"Wort", "wort", "WORT"}));
    EXPECT_EQ(found("Äpfel äPFEL", {"äpfel"}), (Texts{"Äpfel", "äPFEL"}));
}

TEST(TextSearch, FindsOnlyTheSameCaseWhenAskedTo) {
    EXPECT_EQ(found("Wort wort", {"wort", matchesCase}), Texts{"wort"});
    EXPECT_EQ(found("Äpfel äpfel", {"Ä", matchesCase}), Texts{"Ä"});
}

TEST(TextSearch, TakesCharactersOfExpressionsLiterallyInPlainText) {
    EXPECT_EQ(found("a.b axb", {"a.b"}), Texts{"a.b"});
    EXPECT_EQ(found("f(x)", {"("}), Texts{"("});
}

TEST(TextSearch, FindsMatchesThatDoNotOverlap) {
    const TextSearch search = searched("aaaaa", {"aa"});
    EXPECT_EQ(search.matches(), (std::vector<FindMatch>{{0, 2}, {2, 4}}));
}

TEST(TextSearch, FindsAMatchWhoseStartRepeats) {
    EXPECT_EQ(found("aab", {"ab"}), Texts{"ab"});
}

TEST(TextSearch, FindsNothingForNothing) {
    EXPECT_EQ(found("abc", {""}), Texts{});
    EXPECT_EQ(found("", {"a"}), Texts{});
    EXPECT_EQ(found("abc", {"", false, isRegular}), Texts{});
}

TEST(TextSearch, FindsWhatContainsLineEndsAndNul) {
    EXPECT_EQ(found("a\r\nb", {"a\r\nb"}), Texts{"a\r\nb"});
    const std::string nul("x\0y", 3);
    EXPECT_EQ(found("ab" + nul, {nul}), Texts{nul});
}

TEST(TextSearch, FindsTheSignThatFoldsToALetter) {
    EXPECT_EQ(found("300 \u212A", {"k"}), Texts{"\u212A"});
}

TEST(TextSearch, FindsMatchesAcrossTheSlicesOfALongText) {
    std::string text;
    while (text.size() < 300'000)
        text += "zwölf Boxkämpfer ";
    TextSearch search(text, {"boxkämpfer"});
    int slices = 0;
    while (search.state() == TextSearch::State::searching) {
        search.advance(0us);
        ++slices;
    }
    EXPECT_GT(slices, 3);
    EXPECT_EQ(search.matches().size(), text.size() / std::string("zwölf Boxkämpfer ").size());
}

TEST(TextSearch, FindsRegularExpressions) {
    EXPECT_EQ(found("h1 h22 x3", {"h\\d+", false, isRegular}), (Texts{"h1", "h22"}));
    EXPECT_EQ(found("Ä ä", {"ä", false, isRegular}), (Texts{"Ä", "ä"}));
    EXPECT_EQ(found("Ä ä", {"ä", matchesCase, isRegular}), Texts{"ä"});
}

TEST(TextSearch, TakesTheEndsOfLinesForThoseOfExpressions) {
    EXPECT_EQ(found("ab\nab c\n", {"^ab$", false, isRegular}), Texts{"ab"});
}

TEST(TextSearch, PassesOverEmptyMatches) {
    EXPECT_EQ(found("xaax", {"a*", false, isRegular}), Texts{"aa"});
    EXPECT_EQ(found("ü😀", {"x*", false, isRegular}), Texts{});
}

TEST(TextSearch, FindsRegularExpressionsInSlices) {
    std::string text(200'000, '.');
    text += "ziel";
    TextSearch search(text, {"z[a-z]+", false, isRegular});
    int slices = 0;
    while (search.state() == TextSearch::State::searching) {
        search.advance(0us);
        ++slices;
    }
    EXPECT_GT(slices, 3);
    EXPECT_EQ(search.matches(), (std::vector<FindMatch>{{200'000, 200'004}}));
}

TEST(TextSearch, SaysThatAnExpressionIsNone) {
    EXPECT_EQ(searched("abc", {"(", false, isRegular}).state(), TextSearch::State::invalid);
    EXPECT_EQ(searched("abc", {"[a", false, isRegular}).state(), TextSearch::State::invalid);
}

TEST(TextSearch, GivesUpAnExpressionThatTakesForEver) {
    const auto start = std::chrono::steady_clock::now();
    const TextSearch search = searched(std::string(5000, 'a') + "b", {"(a+)+c", false, isRegular});
    EXPECT_EQ(search.state(), TextSearch::State::tooExpensive);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

TEST(TextSearch, ReplacesPlainTextByWhatItIs) {
    TextSearch search = searched("ab", {"a"});
    EXPECT_EQ(search.replacement({0, 1}, "$1\\n"), "$1\\n");
}

TEST(TextSearch, ReplacesWithTheGroupsOfAnExpression) {
    TextSearch search = searched("x eins=zwei", {"(?<name>\\w+)=(\\w+)", false, isRegular});
    const FindMatch match{2, 11};
    ASSERT_EQ(search.matches(), std::vector{match});
    EXPECT_EQ(search.replacement(match, "$2=$1"), "zwei=eins");
    EXPECT_EQ(search.replacement(match, "${name}!"), "eins!");
    EXPECT_EQ(search.replacement(match, "[$0]"), "[eins=zwei]");
    EXPECT_EQ(search.replacement(match, "\\$1ü"), "$1ü");
    EXPECT_EQ(search.replacement(match, "$23"), "zwei3");
    EXPECT_EQ(search.replacement(match, ""), "");
}

TEST(TextSearch, RefusesGroupsThatThereAreNot) {
    TextSearch search = searched("ab", {"a", false, isRegular});
    EXPECT_FALSE(search.replacement({0, 1}, "$1"));
    EXPECT_FALSE(search.replacement({0, 1}, "$"));
    EXPECT_FALSE(search.replacement({0, 1}, "${name}"));
    EXPECT_FALSE(search.replacement({0, 1}, "${offen"));
}

TEST(TextSearch, GivesNothingForAGroupThatDidNotTakePart) {
    TextSearch search = searched("b", {"(a)?b", false, isRegular});
    EXPECT_EQ(search.replacement({0, 1}, "<$1>"), "<>");
}

} // namespace
} // namespace corvanta
