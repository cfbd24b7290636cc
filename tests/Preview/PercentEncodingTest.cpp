#include "Preview/PercentEncoding.hpp"

#include <gtest/gtest.h>

namespace corvanta {

using namespace std::string_literals;

TEST(PercentEncoding, LeavesWhatAPathMayHold) {
    const std::string allowed = "abcXYZ019-._~!$&'()*+,;=:@/";
    EXPECT_EQ(PercentEncoding::encodingPath(allowed), allowed);
}

TEST(PercentEncoding, EscapesEveryOtherByteOfThePathWithCapitalDigits) {
    EXPECT_EQ(PercentEncoding::encodingPath("a b"), "a%20b");
    EXPECT_EQ(PercentEncoding::encodingPath("%?#"), "%25%3F%23");
    EXPECT_EQ(PercentEncoding::encodingPath("\"<>[]\\^`{|}"), "%22%3C%3E%5B%5D%5C%5E%60%7B%7C%7D");
    EXPECT_EQ(PercentEncoding::encodingPath("ü😀"), "%C3%BC%F0%9F%98%80");
    EXPECT_EQ(PercentEncoding::encodingPath("\0\x7F\n"s), "%00%7F%0A");
}

TEST(PercentEncoding, RemovesEscapesInEitherCase) {
    EXPECT_EQ(PercentEncoding::removing("a%20b"), "a b");
    EXPECT_EQ(PercentEncoding::removing("%c3%BC"), "ü");
    EXPECT_EQ(PercentEncoding::removing("%2520"), "%20");
    EXPECT_EQ(PercentEncoding::removing("%00"), "\0"s);
    EXPECT_EQ(PercentEncoding::removing(""), "");
}

TEST(PercentEncoding, RefusesAnEscapeThatIsIncomplete) {
    EXPECT_EQ(PercentEncoding::removing("100%"), std::nullopt);
    EXPECT_EQ(PercentEncoding::removing("100%2"), std::nullopt);
    EXPECT_EQ(PercentEncoding::removing("%zz"), std::nullopt);
    EXPECT_EQ(PercentEncoding::removing("%2g"), std::nullopt);
    EXPECT_EQ(PercentEncoding::removing("%-1"), std::nullopt);
    EXPECT_EQ(PercentEncoding::removing("%+1"), std::nullopt);
    EXPECT_EQ(PercentEncoding::removing("% 1"), std::nullopt);
}

TEST(PercentEncoding, RefusesWhatIsNoTextOnceDecoded) {
    EXPECT_EQ(PercentEncoding::removing("%FF"), std::nullopt);
    EXPECT_EQ(PercentEncoding::removing("%C3"), std::nullopt);
    EXPECT_EQ(PercentEncoding::removing("%C0%AF"), std::nullopt) << "an overlong slash";
    EXPECT_EQ(PercentEncoding::removing("%ED%A0%80"), std::nullopt) << "a surrogate";
    EXPECT_EQ(PercentEncoding::removing("\xE4"), std::nullopt);
}

} // namespace corvanta
