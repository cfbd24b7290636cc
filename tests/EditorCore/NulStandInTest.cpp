#include "EditorCore/NulStandIn.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

using namespace std::string_literals;

TEST(NulStandIn, LeavesATextWithoutNulAsItIs) {
    const NulStandIn standIn("Text mit ␀");
    EXPECT_EQ(standIn.shown("Text mit ␀"), "Text mit ␀");
    EXPECT_EQ(standIn.meant("neu ␀"), "neu ␀");
}

TEST(NulStandIn, ShowsThePictureOfNulAndMeansNul) {
    const NulStandIn standIn("a\0b"s);
    EXPECT_EQ(standIn.shown("a\0b\0"s), "a␀b␀");
    EXPECT_EQ(standIn.meant("a␀b␀c"), "a\0b\0c"s);
}

TEST(NulStandIn, TakesACharacterThatTheTextDoesNotHold) {
    const std::string text = "a\0b ␀ \uE000"s;
    const NulStandIn standIn(text);
    const std::string shown = standIn.shown(text);
    EXPECT_EQ(shown.find('\0'), std::string::npos);
    EXPECT_EQ(standIn.meant(shown), text);
}

TEST(NulStandIn, CanShowNoNulWhereTheTextHasNone) {
    const NulStandIn standIn("a");
    EXPECT_TRUE(standIn.canShow("b ␀"));
    EXPECT_FALSE(standIn.canShow("b\0"s));
}

TEST(NulStandIn, CannotShowTheCharacterThatStandsForNul) {
    const NulStandIn standIn("a\0"s);
    EXPECT_TRUE(standIn.canShow("b\0c"s));
    EXPECT_FALSE(standIn.canShow("b␀"));
}

} // namespace
} // namespace corvanta
