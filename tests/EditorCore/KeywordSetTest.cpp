#include "EditorCore/KeywordSet.hpp"

#include "EditorCore/SyntaxKeywords.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace corvanta {

namespace {

constexpr std::array<std::string_view, 4> words{"in", "of", "if", "require_once"};
constexpr KeywordSet set(words);

} // namespace

TEST(KeywordSet, HoldsItsWordsInAnyCase) {
    for (const char* word : {"in", "IN", "iN", "of", "if", "require_once", "Require_Once"})
        EXPECT_TRUE(set.contains(word)) << word;
}

TEST(KeywordSet, HoldsNothingElse) {
    for (const char* word : {"", "i", "io", "inn", "ig", "require", "require-once", "require?once",
                             "requireXonce", "_", "\xC9n", ")n"})
        EXPECT_FALSE(set.contains(word)) << word;
}

TEST(KeywordSet, ManyWordsDoNotHideEachOther) {
    constexpr KeywordSet php(phpKeywords);
    constexpr KeywordSet js(jsKeywords);
    for (const std::string_view word : phpKeywords)
        EXPECT_TRUE(php.contains(word)) << word;
    for (const std::string_view word : jsKeywords) {
        EXPECT_TRUE(js.contains(word)) << word;
        const bool isInBoth = std::find(phpKeywords.begin(), phpKeywords.end(), word) != phpKeywords.end();
        EXPECT_EQ(php.contains(word), isInBoth) << word;
    }
}

TEST(SyntaxKeywords, AreAsManyAsTheLanguagesHave) {
    EXPECT_EQ(jsKeywords.size(), 42U);
    EXPECT_EQ(phpKeywords.size(), 49U);
    EXPECT_TRUE(std::find(phpKeywords.begin(), phpKeywords.end(), "not") != phpKeywords.end());
}

} // namespace corvanta
