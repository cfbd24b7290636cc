#include "Corvanta/AboutModel.hpp"
#include "Corvanta/gtk/AboutWindow.hpp"
#include "Corvanta/gtk/DocumentToolbar.hpp"
#include "Corvanta/gtk/EditorMenus.hpp"
#include "Corvanta/gtk/HelpWindow.hpp"
#include "Corvanta/gtk/SettingsWindow.hpp"
#include "Corvanta/gtk/ShortcutsWindow.hpp"
#include "DesignSystem/Sprache.hpp"
#include "GermanTexts.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Platform/ResourceFolder.hpp"
#include "SilentFetch.hpp"
#include "Support/InMemoryUserDefaults.hpp"
#include "Support/ManualMainQueue.hpp"
#include "Support/RecordedLog.hpp"
#include "Support/RecordedWorkspace.hpp"
#include "Support/TemporaryFolder.hpp"
#include "Support/gtk/SilentKeychain.hpp"
#include "Support/gtk/WidgetTree.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace corvanta {
namespace {

class InterfaceLanguageTest : public testing::Test {
protected:
    void expectEnglish(Gtk::Widget& widget) {
        const std::set<std::string> german = germanTexts();
        const auto texts = shownTexts(widget);
        EXPECT_FALSE(texts.empty());
        for (const std::string& text : texts)
            EXPECT_FALSE(german.contains(text)) << text;
    }

    TemporaryFolder folder;
    PosixFileManager fileManager;
    InMemoryUserDefaults userDefaults;
    Sprache sprache{{userDefaults, fileManager, [] { return std::vector<std::string>{"en"}; },
                     resourceFolder(runningExecutable()), folder.path()}};
    Sprache::Sitzung sitzung{sprache};
    RecordedLog log;
    RecordedWorkspace workspace;
    AppSettings settings{userDefaults};
    SilentKeychain keychain;
    KeychainManager keychainManager{keychain, "test"};
    ClaudeAssistantViewModel assistant{keychainManager};
    SilentFetch fetch;
    AboutModel about{fetch, log, settings};
};

TEST_F(InterfaceLanguageTest, HasAnEnglishCatalogue) {
    EXPECT_EQ(sprache.wirksameKennung(), "en");
    EXPECT_EQ(t("Suchen …"), "Find …");
    EXPECT_GT(germanTexts().size(), 100U);
}

TEST_F(InterfaceLanguageTest, IsEnglishInTheSettings) {
    SettingsWindow window(settings, userDefaults, sprache, assistant, workspace);
    expectEnglish(window);
}

TEST_F(InterfaceLanguageTest, IsEnglishInTheHelp) {
    HelpWindow window;
    expectEnglish(window);
}

TEST_F(InterfaceLanguageTest, IsEnglishInTheListOfShortcuts) {
    ShortcutsWindow window;
    expectEnglish(window);
}

TEST_F(InterfaceLanguageTest, IsEnglishInTheAboutWindow) {
    AboutWindow window(about, workspace);
    expectEnglish(window);
}

TEST_F(InterfaceLanguageTest, IsEnglishInTheMenus) {
    const std::set<std::string> german = germanTexts();
    const auto bar = EditorMenus::menuBar(Gio::Menu::create(), Gio::Menu::create());
    int items = 0;
    const std::function<void(GMenuModel*)> walk = [&](GMenuModel* menu) {
        for (int item = 0; item < g_menu_model_get_n_items(menu); ++item) {
            char* label = nullptr;
            if (g_menu_model_get_item_attribute(menu, item, G_MENU_ATTRIBUTE_LABEL, "s", &label) != FALSE) {
                ++items;
                EXPECT_FALSE(german.contains(label)) << label;
                g_free(label);
            }
            for (const char* link : {G_MENU_LINK_SECTION, G_MENU_LINK_SUBMENU}) {
                if (GMenuModel* inner = g_menu_model_get_item_link(menu, item, link)) {
                    walk(inner);
                    g_object_unref(inner);
                }
            }
        }
    };
    walk(G_MENU_MODEL(bar->gobj()));
    EXPECT_GT(items, 40);
}

TEST_F(InterfaceLanguageTest, IsEnglishInTheToolbar) {
    DocumentToolbar toolbar;
    Gtk::Window window;
    gtk_window_set_titlebar(window.gobj(), toolbar.widget());
    expectEnglish(window);
}

TEST_F(InterfaceLanguageTest, ChecksForUpdatesOnceInARunHoweverOftenTheAboutWindowIsOpened) {
    settings.checkForUpdatesAtLaunch = true;
    about.didAppear();
    about.didAppear();
    EXPECT_EQ(fetch.fetches, 1);
}

TEST_F(InterfaceLanguageTest, ChecksForNoUpdatesUnlessTheUserWantsIt) {
    about.didAppear();
    EXPECT_EQ(fetch.fetches, 0);
}

} // namespace
} // namespace corvanta
