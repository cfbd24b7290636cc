#include "Documents/GapText.hpp"

#include <gtest/gtest.h>

#include <random>

namespace corvanta {
namespace {

TEST(GapTextTest, IsTheTextItWasMadeOf) {
    EXPECT_EQ(GapText("").text(), "");
    EXPECT_EQ(GapText("abc").text(), "abc");
}

TEST(GapTextTest, InsertsAtBothEnds) {
    GapText text("b");
    text.replace(0, 0, "a");
    text.replace(2, 0, "c");
    EXPECT_EQ(text.text(), "abc");
    text.replace(0, 3, "");
    EXPECT_EQ(text.text(), "");
    EXPECT_EQ(text.size(), 0U);
}

TEST(GapTextTest, ComesToTheSameAsAStringUnderRandomEdits) {
    std::mt19937 random(1);
    std::string expected = "Anfang";
    GapText text(expected);
    for (int edit = 0; edit < 5'000; ++edit) {
        const std::size_t offset = random() % (expected.size() + 1);
        const std::size_t removed = random() % (std::min<std::size_t>(expected.size() - offset, 9) + 1);
        const std::string inserted(random() % 12, static_cast<char>('a' + random() % 26));
        expected.replace(offset, removed, inserted);
        text.replace(offset, removed, inserted);
        ASSERT_EQ(text.size(), expected.size());
    }
    EXPECT_EQ(text.text(), expected);
}

} // namespace
} // namespace corvanta
