// No text beside the document windows is cut, in no language or size of the text.

#include "Corvanta/gtk/AboutWindow.hpp"
#include "DesignSystem/t.hpp"
#include "LookTest.hpp"
#include "Preview/PosixFolderBookmarks.hpp"
#include "Preview/gtk/GrantedFolders.hpp"
#include "SilentFetch.hpp"
#include "Support/RecordedLog.hpp"
#include "Support/RecordedWorkspace.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/TestWindow.hpp"
#include "Support/gtk/WidgetTree.hpp"

#include <adwaita.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace corvanta {
namespace {

class OtherTextsFitTest : public LookTest {
protected:
    /// The window with this title, or null.
    static GtkWidget* windowCalled(const std::string& title) {
        for (Gtk::Window* window : app->get_windows())
            if (window->get_title().raw() == title)
                return GTK_WIDGET(window->gobj());
        return nullptr;
    }

    /// Whether a window fits on the screen of a small laptop, scrolled if need be.
    static testing::AssertionResult fitsOnASmallScreen(GtkWidget* window) {
        int width = 0;
        int height = 0;
        gtk_widget_measure(window, GTK_ORIENTATION_HORIZONTAL, -1, &width, nullptr, nullptr, nullptr);
        gtk_widget_measure(window, GTK_ORIENTATION_VERTICAL, width, &height, nullptr, nullptr, nullptr);
        return (width <= 1024 && height <= 600 ? testing::AssertionSuccess() : testing::AssertionFailure())
               << width << " by " << height;
    }

    /// Whether a window shows everything without scrolling, as soon as it does.
    static bool needsNoScrolling(GtkWidget* window) {
        auto* scrolled = GTK_SCROLLED_WINDOW(descendant(window, GTK_TYPE_SCROLLED_WINDOW));
        GtkAdjustment* place = gtk_scrolled_window_get_vadjustment(scrolled);
        return waitUntil(
            [place] { return gtk_adjustment_get_upper(place) <= gtk_adjustment_get_page_size(place); });
    }

    static void expectThatItFits(const char* action, const char* title) {
        app->activate_action(action);
        EXPECT_TRUE(showsAllTextsWhole([&] { return windowCalled(t(title)); })) << action;
        EXPECT_TRUE(fitsOnASmallScreen(windowCalled(t(title)))) << action;
    }

    /// The tab at a place of the settings, turned to; null as long as it is not there in the language in use.
    static GtkWidget* settingsAt(int place) {
        GtkWidget* window = windowCalled(t("Einstellungen"));
        if (window == nullptr)
            return nullptr;
        GtkWidget* page =
            gtk_widget_get_first_child(gtk_widget_get_parent(descendant(window, ADW_TYPE_PREFERENCES_PAGE)));
        for (int before = 0; before < place; ++before)
            page = gtk_widget_get_next_sibling(page);
        adw_preferences_window_set_visible_page(ADW_PREFERENCES_WINDOW(window), ADW_PREFERENCES_PAGE(page));
        return window;
    }
};

TEST_P(OtherTextsFitTest, InEveryTabOfTheSettings) {
    openNothing();
    expectThatItFits("settings", "Einstellungen");
    for (const int tab : {0, 1, 2})
        EXPECT_TRUE(showsAllTextsWhole([tab] { return settingsAt(tab); })) << tab;
}

TEST_P(OtherTextsFitTest, InTheHelp) {
    openNothing();
    expectThatItFits("help", "Corvanta-Hilfe");
}

TEST_P(OtherTextsFitTest, InTheListOfShortcuts) {
    openNothing();
    expectThatItFits("shortcuts", "Tastenkürzel");
}

TEST_P(OtherTextsFitTest, InTheAboutWindowWhateverBecameOfTheUpdate) {
    SilentFetch fetch;
    RecordedLog log;
    RecordedWorkspace workspace;
    InMemoryUserDefaults userDefaults;
    const AppSettings settings{userDefaults};
    AboutModel model{fetch, log, settings};
    AboutWindow window{model, workspace};
    window.present();
    EXPECT_TRUE(showsAllTextsWhole(window));
    model.update.isChecking = true;
    EXPECT_TRUE(showsAllTextsWhole(window));
    model.update.isChecking = false;
    using Result = UpdateCheck::Result;
    for (const Result& result :
         {Result{UpdateCheck::UpToDate{}}, Result{UpdateCheck::UpdateAvailable{"1.12.3"}},
          Result{UpdateCheck::Failed{}}}) {
        model.update.result = result;
        EXPECT_TRUE(showsAllTextsWhole(window)) << result.index();
        EXPECT_TRUE(needsNoScrolling(GTK_WIDGET(window.gobj()))) << result.index();
        EXPECT_TRUE(fitsOnASmallScreen(GTK_WIDGET(window.gobj()))) << result.index();
    }
}

TEST_P(OtherTextsFitTest, InTheListOfGrantedFolders) {
    const PosixFileManager fileManager;
    const PosixFolderBookmarks bookmarks;
    RecordedLog log;
    InMemoryUserDefaults userDefaults;
    const std::filesystem::path deep = folder / "ein-ordner-mit-einem-langen-namen" / "und-noch-einer-darin";
    std::filesystem::create_directories(deep);
    userDefaults.set("previewFolderBookmarks", std::vector<std::string>{bookmarks.make(folder.path()).value(),
                                                                        bookmarks.make(deep).value()});
    PreviewFolderAccess access{userDefaults, bookmarks, fileManager, log};
    GrantedFolders button{access};
    const TestWindow window{button};
    button.popup();
    EXPECT_TRUE(showsAllTextsWhole([&] { return GTK_WIDGET(button.get_popover()->gobj()); }));
    // As long as it is open it has the keyboard of the whole display.
    button.popdown();
    EXPECT_TRUE(waitUntil([&] { return !button.get_popover()->get_mapped(); }));
}

INSTANTIATE_TEST_SUITE_P(Looks, OtherTextsFitTest, testing::ValuesIn(LookTest::looks), LookTest::nameOf);

} // namespace
} // namespace corvanta
