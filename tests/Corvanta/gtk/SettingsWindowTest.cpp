#include "Corvanta/gtk/SettingsWindow.hpp"

#include "Platform/JSONUserDefaults.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Platform/ResourceFolder.hpp"
#include "Support/RecordedWorkspace.hpp"
#include "Support/TemporaryFolder.hpp"
#include "Support/gtk/SilentKeychain.hpp"
#include "Support/gtk/WidgetTree.hpp"

#include <adwaita.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace corvanta {
namespace {

/// The settings over a real file, with German texts.
class SettingsWindowTest : public testing::Test {
protected:
    /// Every file below `place` that holds `secret`.
    static std::vector<std::filesystem::path> filesWith(const std::string& secret,
                                                        const std::filesystem::path& place) {
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(place)) {
            if (!entry.is_regular_file())
                continue;
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string content{std::istreambuf_iterator<char>(file), {}};
            if (content.find(secret) != std::string::npos)
                found.push_back(entry.path());
        }
        return found;
    }

    bool says(const std::string& text) {
        const auto texts = shownTexts(window);
        return std::ranges::find(texts, text) != texts.end();
    }

    GtkWidget* widget() { return GTK_WIDGET(window.gobj()); }
    GtkWidget* button(const std::string& name) { return buttonNamed(widget(), name); }
    static void click(GtkWidget* button) { g_signal_emit_by_name(button, "clicked"); }
    static bool canBeClicked(GtkWidget* button) { return gtk_widget_get_sensitive(button) != FALSE; }

    void enterKey(const std::string& key) {
        GtkWidget* entry = descendant(widget(), GTK_TYPE_PASSWORD_ENTRY);
        ASSERT_NE(entry, nullptr);
        gtk_editable_set_text(GTK_EDITABLE(entry), key.c_str());
    }

    TemporaryFolder folder;
    PosixFileManager fileManager;
    JSONUserDefaults userDefaults{folder / "settings.json"};
    Sprache sprache{{userDefaults, fileManager, [] { return std::vector<std::string>{"de"}; },
                     resourceFolder(runningExecutable()), folder.path()}};
    Sprache::Sitzung sitzung{sprache};
    RecordedWorkspace workspace;
    AppSettings settings{userDefaults};
    SilentKeychain keychain;
    KeychainManager keychainManager{keychain, "test"};
    ClaudeAssistantViewModel assistant{keychainManager};
    SettingsWindow window{settings, userDefaults, sprache, assistant, workspace};
};

TEST_F(SettingsWindowTest, HasThreeTabs) {
    for (const char* tab : {"Allgemein", "Editor", "Claude"})
        EXPECT_TRUE(says(tab)) << tab;
}

TEST_F(SettingsWindowTest, ShowsTheDefaultsOfAFreshInstallation) {
    EXPECT_TRUE(says("System"));
    EXPECT_TRUE(says("14 pt"));
    EXPECT_TRUE(says("13 pt"));
    EXPECT_TRUE(says("Dezent (Standard)"));
    EXPECT_TRUE(says("Nicht aktiviert"));
}

TEST_F(SettingsWindowTest, ShowsThePartBeforeThePointOfAFontSize) {
    settings.editorFontSize = 13.9;
    EXPECT_TRUE(says("13 pt"));
    EXPECT_EQ(*settings.editorFontSize, 13.9);
}

TEST_F(SettingsWindowTest, ChangesNoValueThatItsSlidersCannotReach) {
    settings.editorFontSize = 99;
    userDefaults.set("schriftgroesse", 25.0);
    EXPECT_EQ(*settings.editorFontSize, 99);
    EXPECT_EQ(userDefaults.get<double>("schriftgroesse"), 25.0);
}

TEST_F(SettingsWindowTest, ShowsAThemeThatThereIsNotAsTheStandardOneAndKeepsIt) {
    settings.editorThemeID = "neon";
    EXPECT_TRUE(says("Dezent (Standard)"));
    EXPECT_EQ(*settings.editorThemeID, "neon");
}

TEST_F(SettingsWindowTest, ShowsTheFolderForOwnLanguages) {
    click(button("Ordner zeigen"));
    EXPECT_EQ(workspace.shown, std::vector{folder / "Corvanta" / "Sprachen"});
}

TEST_F(SettingsWindowTest, ReadsTheLanguageAgain) {
    std::filesystem::create_directories(folder / "Corvanta" / "Sprachen");
    EXPECT_EQ(sprache.text("Bild"), "Bild");
    std::ofstream(folder / "Corvanta" / "Sprachen" / "de.json") << R"({"Bild": "Abbildung"})";
    EXPECT_EQ(sprache.text("Bild"), "Bild");
    click(button("Neu einlesen"));
    EXPECT_EQ(sprache.text("Bild"), "Abbildung");
}

TEST_F(SettingsWindowTest, SaysWhatTheKeyIsForBeforeItAsksForIt) {
    const auto texts = shownTexts(window);
    const auto explanation = std::ranges::find_if(
        texts, [](const std::string& text) { return text.starts_with("Mit deinem eigenen Anthropic"); });
    ASSERT_NE(explanation, texts.end());
    EXPECT_LT(explanation, std::ranges::find(texts, "API-Schlüssel"));
}

TEST_F(SettingsWindowTest, SavesAKeyWithoutTheBlanksAroundIt) {
    EXPECT_FALSE(canBeClicked(button("Speichern")));
    EXPECT_FALSE(canBeClicked(button("Entfernen")));
    enterKey("  sk-test ");
    ASSERT_TRUE(canBeClicked(button("Speichern")));
    click(button("Speichern"));
    EXPECT_EQ(*assistant.apiKey, "sk-test");
    EXPECT_TRUE(says("Aktiv"));
    EXPECT_FALSE(says("Nicht aktiviert"));
}

TEST_F(SettingsWindowTest, OffersNothingToSaveForBlanks) {
    enterKey("  \t ");
    EXPECT_FALSE(canBeClicked(button("Speichern")));
}

TEST_F(SettingsWindowTest, RemovesTheKeyAndEmptiesTheField) {
    enterKey("sk-test");
    click(button("Speichern"));
    ASSERT_TRUE(canBeClicked(button("Entfernen")));
    click(button("Entfernen"));
    EXPECT_EQ(*assistant.apiKey, "");
    EXPECT_TRUE(says("Nicht aktiviert"));
    EXPECT_STREQ(gtk_editable_get_text(GTK_EDITABLE(descendant(widget(), GTK_TYPE_PASSWORD_ENTRY))), "");
}

TEST_F(SettingsWindowTest, LeavesTheKeyNowhereOnTheDiskAndNeverShowsIt) {
    const std::string secret = "sk-ant-streng-geheim-4711";
    GtkWidget* entry = descendant(widget(), GTK_TYPE_PASSWORD_ENTRY);
    EXPECT_EQ(gtk_password_entry_get_show_peek_icon(GTK_PASSWORD_ENTRY(entry)), FALSE);
    enterKey(secret);
    click(button("Speichern"));
    settings.editorFontSize = 15;
    ASSERT_TRUE(userDefaults.flush());

    EXPECT_EQ(filesWith("editorFontSize", folder.path()).size(), 1U) << "the search finds nothing at all";
    EXPECT_EQ(filesWith(secret, folder.path()), std::vector<std::filesystem::path>());
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"}) {
        const char* place = std::getenv(variable);
        ASSERT_NE(place, nullptr) << variable;
        EXPECT_EQ(filesWith(secret, place), std::vector<std::filesystem::path>()) << variable;
    }
    EXPECT_FALSE(says(secret));
}

} // namespace
} // namespace corvanta
