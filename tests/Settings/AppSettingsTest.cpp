#include "Settings/AppSettings.hpp"

#include "Support/InMemoryUserDefaults.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvanta {
namespace {

using testing::ElementsAre;
using Strings = std::vector<std::string>;

TEST(AppSettings, HasDefaultsInAFreshInstallation) {
    InMemoryUserDefaults defaults;
    const AppSettings settings(defaults);
    EXPECT_EQ(*settings.editorFontSize, 13.0);
    EXPECT_EQ(*settings.editorThemeID, "dezent");
    EXPECT_FALSE(*settings.checkForUpdatesAtLaunch);
    EXPECT_TRUE(defaults.values.empty()) << "reading stores nothing";
}

TEST(AppSettings, ReadsWhatIsStored) {
    InMemoryUserDefaults defaults;
    defaults.set("editorFontSize", 17.25);
    defaults.set("editorThemeID", std::string("kontrast"));
    defaults.set("checkForUpdatesAtLaunch", true);
    const AppSettings settings(defaults);
    EXPECT_EQ(*settings.editorFontSize, 17.25);
    EXPECT_EQ(*settings.editorThemeID, "kontrast");
    EXPECT_TRUE(*settings.checkForUpdatesAtLaunch);
}

TEST(AppSettings, FallsBackFromValuesOfAnotherType) {
    const std::vector<UserDefaults::Value> wrongForFontSize{std::string("15"), true, Strings{"15"}};
    const std::vector<UserDefaults::Value> wrongForTheme{15.0, true, Strings{"kontrast"}};
    const std::vector<UserDefaults::Value> wrongForUpdates{1.0, std::string("true"), Strings{"true"}};
    for (std::size_t i = 0; i < wrongForFontSize.size(); ++i) {
        InMemoryUserDefaults defaults;
        defaults.set("editorFontSize", wrongForFontSize[i]);
        defaults.set("editorThemeID", wrongForTheme[i]);
        defaults.set("checkForUpdatesAtLaunch", wrongForUpdates[i]);
        const AppSettings settings(defaults);
        EXPECT_EQ(*settings.editorFontSize, 13.0);
        EXPECT_EQ(*settings.editorThemeID, "dezent");
        EXPECT_FALSE(*settings.checkForUpdatesAtLaunch);
    }
}

TEST(AppSettings, KeepsAThemeThatItDoesNotKnowAndASizeOutsideTheSlider) {
    InMemoryUserDefaults defaults;
    defaults.set("editorThemeID", std::string("nacht"));
    defaults.set("editorFontSize", 400.0);
    AppSettings settings(defaults);
    EXPECT_EQ(*settings.editorThemeID, "nacht");
    EXPECT_EQ(*settings.editorFontSize, 400.0);
    settings.editorFontSize = -1.0;
    EXPECT_EQ(defaults.get<double>("editorFontSize"), -1.0);
}

TEST(AppSettings, StoresEveryChangeInItsType) {
    InMemoryUserDefaults defaults;
    AppSettings settings(defaults);
    settings.editorFontSize = 14.0;
    settings.editorThemeID = "klassisch";
    settings.checkForUpdatesAtLaunch = true;
    EXPECT_EQ(defaults.get<double>("editorFontSize"), 14.0);
    EXPECT_EQ(defaults.get<std::string>("editorThemeID"), "klassisch");
    EXPECT_EQ(defaults.get<bool>("checkForUpdatesAtLaunch"), true);
}

TEST(AppSettings, HasStoredAChangeBeforeItTellsOfIt) {
    InMemoryUserDefaults defaults;
    AppSettings settings(defaults);
    std::vector<double> stored;
    const Subscription subscription = settings.editorFontSize.subscribe(
        [&](double) { stored.push_back(defaults.get<double>("editorFontSize").value_or(0)); });
    settings.editorFontSize = 15.0;
    settings.editorFontSize = 15.0;
    EXPECT_THAT(stored, ElementsAre(15.0, 15.0));
}

} // namespace
} // namespace corvanta
