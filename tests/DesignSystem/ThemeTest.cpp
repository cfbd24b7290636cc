#include "DesignSystem/Theme.hpp"

#include "DesignSystem/Mass.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

TEST(ThemeTest, HasItsColours) {
    EXPECT_EQ(Theme::anthracite, (Color{20, 20, 20}));
    EXPECT_EQ(Theme::silver, (Color{142, 144, 146}));
    EXPECT_EQ(Theme::accentGreen, (Color{132, 189, 0}));
}

TEST(ThemeTest, SetsCodeInAFixedWidth) {
    EXPECT_EQ(Theme::Typography::editor(13),
              (Schriftart{13, Schriftart::Gewicht::regular, Schriftart::Form::dicktengleich}));
}

TEST(ThemeTest, SetsTheInterfaceInTheSystemsFont) {
    EXPECT_EQ(Theme::Typography::ui(17, Schriftart::Gewicht::semibold),
              (Schriftart{17, Schriftart::Gewicht::semibold, Schriftart::Form::standard}));
}

TEST(ThemeTest, HasItsLengths) {
    EXPECT_EQ(Mass::haar, 2);
    EXPECT_EQ(Mass::eng, 4);
    EXPECT_EQ(Mass::knapp, 6);
    EXPECT_EQ(Mass::klein, 8);
    EXPECT_EQ(Mass::mittel, 12);
    EXPECT_EQ(Mass::gross, 16);
    EXPECT_EQ(Mass::rand, 20);
    EXPECT_EQ(Mass::block, 24);
    EXPECT_EQ(Mass::weit, 32);
    EXPECT_EQ(Mass::ecke, 10);
    EXPECT_EQ(Mass::eckeKlein, 7);
}

} // namespace
} // namespace corvanta
