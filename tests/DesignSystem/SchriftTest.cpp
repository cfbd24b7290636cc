#include "DesignSystem/Schrift.hpp"

#include "Support/InMemoryUserDefaults.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace corvanta {
namespace {

using Gewicht = Schriftart::Gewicht;

class SchriftTest : public testing::Test {
protected:
    InMemoryUserDefaults defaults;
    Schrift schrift{defaults};
};

TEST_F(SchriftTest, HasTheDefaultSizesWhenNothingIsStored) {
    EXPECT_EQ(schrift.grund(), 14);
    EXPECT_EQ(schrift.titel(), (Schriftart{17, Gewicht::semibold}));
    EXPECT_EQ(schrift.text(), (Schriftart{14, Gewicht::regular}));
    EXPECT_EQ(schrift.klein(), (Schriftart{12, Gewicht::regular}));
    EXPECT_EQ(schrift.zahl(), (Schriftart{20, Gewicht::medium}));
    EXPECT_EQ(schrift.leer(), (Schriftart{34, Gewicht::light}));
}

TEST_F(SchriftTest, FollowsTheSettingAtEachCall) {
    defaults.set("schriftgroesse", 18.0);
    EXPECT_EQ(schrift.text().groesse, 18);
    EXPECT_EQ(schrift.leer().groesse, 38);
    defaults.set("schriftgroesse", 12.5);
    EXPECT_EQ(schrift.text().groesse, 12.5);
    EXPECT_EQ(schrift.klein().groesse, 10.5);
}

TEST_F(SchriftTest, TakesTheLimitsThemselves) {
    defaults.set("schriftgroesse", 20.0);
    EXPECT_EQ(schrift.grund(), 20);
    defaults.set("schriftgroesse", 12.0);
    EXPECT_EQ(schrift.grund(), 12);
}

TEST_F(SchriftTest, FallsBackToTheDefaultOutsideTheLimits) {
    for (const double size : {25.0, 20.000001, 11.999999, 0.0, -14.0, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()}) {
        defaults.set("schriftgroesse", size);
        EXPECT_EQ(schrift.grund(), 14) << size;
    }
}

TEST_F(SchriftTest, FallsBackToTheDefaultForAValueOfAnotherType) {
    defaults.set("schriftgroesse", std::string("18"));
    EXPECT_EQ(schrift.grund(), 14);
    defaults.set("schriftgroesse", true);
    EXPECT_EQ(schrift.grund(), 14);
}

} // namespace
} // namespace corvanta
