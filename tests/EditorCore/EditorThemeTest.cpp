#include "EditorCore/EditorTheme.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace corvanta {

namespace {

std::string hex(Color color) {
    std::array<char, 7> text{};
    static_cast<void>(
        std::snprintf(text.data(), text.size(), "%02X%02X%02X", color.red, color.green, color.blue));
    return text.data();
}

/// The theme's colours in the order of the kinds, light and dark.
std::vector<std::string> palette(const EditorTheme& theme) {
    std::vector<std::string> colors;
    for (const SyntaxToken token : allCases)
        colors.push_back(hex(theme.color(token).light) + " " + hex(theme.color(token).dark));
    return colors;
}

} // namespace

TEST(EditorTheme, DezentHasItsColors) {
    EXPECT_THAT(palette(EditorTheme::dezent()),
                testing::ElementsAre("4A4C4E B6B8BA", "8E9092 8E9092", "6F9D00 84BD00", "B0B2B4 5A5C5E",
                                     "2C2E30 D8DADC", "6F9D00 84BD00"));
}

TEST(EditorTheme, KlassischHasItsColors) {
    EXPECT_THAT(palette(EditorTheme::klassisch()),
                testing::ElementsAre("0B60C8 64A8F0", "0E7E7E 4CC2C2", "C41A16 FC6A5D", "177500 6C9955",
                                     "8B2CA8 D08BE0", "B25900 F0A045"));
}

TEST(EditorTheme, KontrastHasItsColors) {
    EXPECT_THAT(palette(EditorTheme::kontrast()),
                testing::ElementsAre("0000CC 7AA8FF", "005A5A 3ADCDC", "B80000 FF7A7A", "5A5A5A A8A8A8",
                                     "6A00A8 E08BFF", "9A4A00 FFB25A"));
}

TEST(EditorTheme, EveryBuiltInThemeFillsEveryKind) {
    for (const EditorTheme* theme : EditorTheme::all())
        EXPECT_EQ(theme->colors.size(), allCases.size()) << theme->id;
}

TEST(EditorTheme, AllThemesComeInTheOrderOfThePicker) {
    EXPECT_THAT(EditorTheme::all(), testing::ElementsAre(&EditorTheme::dezent(), &EditorTheme::klassisch(),
                                                         &EditorTheme::kontrast()));
}

TEST(EditorTheme, IsFoundByItsExactId) {
    EXPECT_EQ(EditorTheme::theme("dezent").id, "dezent");
    EXPECT_EQ(EditorTheme::theme("klassisch").id, "klassisch");
    EXPECT_EQ(EditorTheme::theme("kontrast").id, "kontrast");
}

TEST(EditorTheme, AnyOtherIdGivesDezent) {
    for (const char* id : {"", "Kontrast", "KLASSISCH", "Dezent", "kontrast ", "solarized"})
        EXPECT_EQ(&EditorTheme::theme(id), &EditorTheme::dezent()) << id;
}

TEST(EditorTheme, HasADisplayName) {
    EXPECT_EQ(EditorTheme::dezent().anzeige(), "Dezent (Standard)");
    EXPECT_EQ(EditorTheme::klassisch().anzeige(), "Klassisch");
    EXPECT_EQ(EditorTheme::kontrast().anzeige(), "Kontrast");
}

TEST(EditorTheme, WithAnUnknownIdIsShownAsTheStandard) {
    EXPECT_EQ((EditorTheme{"eigenes", {}}.anzeige()), "Dezent (Standard)");
    EXPECT_EQ((EditorTheme{"Klassisch", {}}.anzeige()), "Dezent (Standard)");
}

TEST(EditorTheme, GivesTheStandardTextColorForAKindItDoesNotKnow) {
    const EditorTheme theme{"eigenes", {{SyntaxToken::tag, {{1, 2, 3}, {4, 5, 6}}}}};
    EXPECT_EQ(theme.color(SyntaxToken::tag), (DynamicColor{{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(theme.color(SyntaxToken::comment), standardTextColor);
}

TEST(EditorTheme, AColorFollowsTheAppearanceWhenItIsDrawn) {
    const DynamicColor color = EditorTheme::klassisch().color(SyntaxToken::tag);
    EXPECT_EQ(color.resolved(Appearance::light), (Color{11, 96, 200}));
    EXPECT_EQ(color.resolved(Appearance::dark), (Color{100, 168, 240}));
}

TEST(EditorTheme, IsMadeOnceWhicheverThreadAsksFirst) {
    std::array<const EditorTheme*, 8> seen{};
    {
        std::vector<std::jthread> threads;
        for (const EditorTheme*& theme : seen)
            threads.emplace_back([&theme] { theme = &EditorTheme::theme("kontrast"); });
    }
    EXPECT_THAT(seen, testing::Each(&EditorTheme::kontrast()));
}

} // namespace corvanta
