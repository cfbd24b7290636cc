// What the menus offer is what can be done at the moment.

#include "ApplicationTest.hpp"
#include "Corvanta/MenuCommand.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {
namespace {

class MenuEnablingTest : public ApplicationTest {
protected:
    DocumentWindow& openPage(const std::string& name = "index.html") {
        folder.write(name, "<p>eins</p>");
        return open(folder / name);
    }

    static bool offers(DocumentWindow& window, const char* action) {
        return window.get_action_enabled(action);
    }

    static bool offersOnce(DocumentWindow& window, const char* action) {
        return waitUntil([&] { return offers(window, action); });
    }

    static bool offersNoMore(DocumentWindow& window, const char* action) {
        return waitUntil([&] { return !offers(window, action); });
    }
};

TEST_F(MenuEnablingTest, HasAnActionForEveryCommand) {
    const DocumentWindow& window = openPage();
    for (const MenuCommand& command : MenuCommand::all()) {
        const std::string action(command.action.substr(0, command.action.find('(')));
        const std::string name = action.substr(action.find('.') + 1);
        EXPECT_TRUE(action.starts_with("app.") ? app->has_action(name) : window.has_action(name)) << action;
    }
}

TEST_F(MenuEnablingTest, TakesBackAndRepeatsOnlyWhatWasDone) {
    DocumentWindow& window = openPage();
    EXPECT_FALSE(offers(window, "undo"));
    EXPECT_FALSE(offers(window, "redo"));
    typeInto(window, "x");
    EXPECT_TRUE(offersOnce(window, "undo"));
    EXPECT_FALSE(offers(window, "redo"));
    window.activate_action("win.undo");
    EXPECT_TRUE(offersOnce(window, "redo"));
    EXPECT_FALSE(offers(window, "undo"));
    EXPECT_EQ(text(window), "<p>eins</p>");
    window.activate_action("win.redo");
    EXPECT_TRUE(offersOnce(window, "undo"));
    EXPECT_FALSE(offers(window, "redo"));
    EXPECT_EQ(text(window), "x<p>eins</p>");
}

TEST_F(MenuEnablingTest, RepeatsNothingOnceSomethingElseWasTyped) {
    DocumentWindow& window = openPage();
    typeInto(window, "x");
    window.activate_action("win.undo");
    ASSERT_TRUE(offersOnce(window, "redo"));
    typeInto(window, "y");
    EXPECT_TRUE(offersNoMore(window, "redo"));
}

TEST_F(MenuEnablingTest, CutsCopiesAndDeletesOnlyWhatIsSelectedInTheText) {
    DocumentWindow& window = openPage();
    for (const char* action : {"cut", "copy", "delete"})
        EXPECT_FALSE(offers(window, action)) << action;
    keyboard.press("Control+a");
    for (const char* action : {"cut", "copy", "delete"})
        EXPECT_TRUE(offersOnce(window, action)) << action;
    keyboard.press("Right");
    for (const char* action : {"cut", "copy", "delete"})
        EXPECT_TRUE(offersNoMore(window, action)) << action;
    EXPECT_TRUE(offers(window, "paste"));
    EXPECT_TRUE(offers(window, "select-all"));
}

TEST_F(MenuEnablingTest, CopiesOnlyWhatIsSelectedInTheFindField) {
    DocumentWindow& window = openPage();
    keyboard.press("Control+a");
    ASSERT_TRUE(offersOnce(window, "copy"));
    keyboard.press("Right");
    ASSERT_TRUE(offersNoMore(window, "copy"));
    keyboard.press("Control+f");
    ASSERT_TRUE(waitUntil([&] { return !textView(window).has_focus(); }));
    keyboard.type("x");
    keyboard.press("Control+a");
    EXPECT_TRUE(offersOnce(window, "copy"));
    keyboard.press("Right");
    EXPECT_TRUE(offersNoMore(window, "copy"));
}

TEST_F(MenuEnablingTest, CopiesOnlyWhatIsSelectedInThePreviewWhenAMenuIsOpened) {
    DocumentWindow& window = openPage();
    ASSERT_TRUE(previewShows(window, "eins"));
    const PreviewWebView& view = *window.contentView().preview().webView();
    GtkWidget* page = GTK_WIDGET(view.webView());
    const auto canCopy = [&] { return view.hasSelection(); };
    gtk_widget_grab_focus(page);
    ASSERT_TRUE(waitUntil([&] { return gtk_widget_has_focus(page) != FALSE; }));
    // The view hears of a selection somewhat later than the page has it, and of none only when there was one.
    keyboard.press("Control+a");
    ASSERT_TRUE(waitUntil(canCopy));
    keyboard.press("F10");
    EXPECT_TRUE(offersOnce(window, "copy"));
    EXPECT_TRUE(offers(window, "cut"));
    EXPECT_TRUE(offers(window, "delete"));
    keyboard.press("Escape");
    ASSERT_TRUE(waitUntil([&] { return gtk_widget_has_focus(page) != FALSE; }));
    keyboard.press("Right");
    ASSERT_TRUE(waitUntil([&] { return !canCopy(); }));
    keyboard.press("F10");
    EXPECT_TRUE(offersNoMore(window, "copy"));
    EXPECT_FALSE(offers(window, "cut"));
    EXPECT_FALSE(offers(window, "delete"));
    keyboard.press("Escape");
}

TEST_F(MenuEnablingTest, TurnsToAnotherWindowOnlyWhenThereIsOne) {
    DocumentWindow& first = openPage();
    EXPECT_FALSE(offers(first, "next-window"));
    EXPECT_FALSE(offers(first, "previous-window"));
    DocumentWindow& second = openPage("zweite.html");
    for (DocumentWindow* window : {&first, &second})
        for (const char* action : {"next-window", "previous-window"})
            EXPECT_TRUE(offers(*window, action)) << action;
    second.closeForGood();
    EXPECT_FALSE(offers(first, "next-window"));
    EXPECT_FALSE(offers(first, "previous-window"));
}

TEST_F(MenuEnablingTest, TurnsRoundTheWindowsByKeys) {
    DocumentWindow& first = openPage();
    DocumentWindow& second = openPage("zweite.html");
    DocumentWindow& third = openPage("dritte.html");
    keyboard.press("Control+Page_Down");
    ASSERT_TRUE(isAt(first));
    keyboard.press("Control+Page_Down");
    ASSERT_TRUE(isAt(second));
    keyboard.press("Control+Page_Up");
    ASSERT_TRUE(isAt(first));
    keyboard.press("Control+Page_Up");
    EXPECT_TRUE(isAt(third));
}

} // namespace
} // namespace corvanta
