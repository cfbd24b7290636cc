#include "Settings/VersionNumber.hpp"

#include <gtest/gtest.h>

namespace corvanta {

using Parts = std::vector<std::int64_t>;

TEST(VersionNumber, IsCutAtItsDots) {
    EXPECT_EQ(VersionNumber::parts("1.10.3"), (Parts{1, 10, 3}));
    EXPECT_EQ(VersionNumber::parts("7"), (Parts{7}));
    EXPECT_EQ(VersionNumber::parts("007.010"), (Parts{7, 10}));
}

TEST(VersionNumber, LeavesEmptyPiecesOut) {
    EXPECT_EQ(VersionNumber::parts("1..2"), (Parts{1, 2}));
    EXPECT_EQ(VersionNumber::parts(".1.2."), (Parts{1, 2}));
    EXPECT_EQ(VersionNumber::parts("..."), Parts{});
    EXPECT_EQ(VersionNumber::parts(""), Parts{});
}

TEST(VersionNumber, IgnoresWhatStandsBehindTheDigits) {
    EXPECT_EQ(VersionNumber::parts("2b.1 2.3-4"), (Parts{2, 1, 3}));
    EXPECT_EQ(VersionNumber::parts("2.0-beta"), (Parts{2, 0}));
}

TEST(VersionNumber, CountsAPieceWithoutDigitsAtItsStartAsZero) {
    EXPECT_EQ(VersionNumber::parts("beta.v2.-1.+1. 3"), (Parts{0, 0, 0, 0, 0}));
}

TEST(VersionNumber, CountsDigitsThatDoNotParseAsZero) {
    EXPECT_EQ(VersionNumber::parts("9223372036854775807"), (Parts{9223372036854775807}));
    EXPECT_EQ(VersionNumber::parts("9223372036854775808.1"), (Parts{0, 1}));
    EXPECT_EQ(VersionNumber::parts("\u0663.1"), (Parts{0, 1})) << "an Arabic digit";
    EXPECT_EQ(VersionNumber::parts("2\u00B2.Ⅷ.½"), (Parts{0, 0, 0}));
    EXPECT_EQ(VersionNumber::parts("2ü.2→"), (Parts{2, 2}));
}

TEST(VersionNumber, SurvivesBytesThatAreNoUtf8) {
    EXPECT_EQ(VersionNumber::parts("1\xFF.\xC3"), (Parts{1, 0}));
}

TEST(VersionNumber, IsNewerByItsFirstNumberThatDiffers) {
    EXPECT_TRUE(VersionNumber::isNewer("1.2.1", "1.2"));
    EXPECT_TRUE(VersionNumber::isNewer("1.10", "1.9"));
    EXPECT_TRUE(VersionNumber::isNewer("2", "1.9.9"));
    EXPECT_TRUE(VersionNumber::isNewer("2.0-beta", "1.9"));
    EXPECT_FALSE(VersionNumber::isNewer("1.9", "1.10"));
    EXPECT_FALSE(VersionNumber::isNewer("1.2", "1.2.1"));
    EXPECT_FALSE(VersionNumber::isNewer("1.9", "2.0-beta"));
}

TEST(VersionNumber, IsNotNewerThanItself) {
    EXPECT_FALSE(VersionNumber::isNewer("1.2", "1.2.0"));
    EXPECT_FALSE(VersionNumber::isNewer("1.2.0", "1.2"));
    EXPECT_FALSE(VersionNumber::isNewer("2.0-beta", "2.0"));
    EXPECT_FALSE(VersionNumber::isNewer("", ""));
}

TEST(VersionNumber, IsNewerThanAMissingVersionWithAnyNumberAboveZero) {
    EXPECT_TRUE(VersionNumber::isNewer("0.0.1", "0"));
    EXPECT_FALSE(VersionNumber::isNewer("unbekannt", "0"));
    EXPECT_FALSE(VersionNumber::isNewer("", "0.0.1"));
}

} // namespace corvanta
