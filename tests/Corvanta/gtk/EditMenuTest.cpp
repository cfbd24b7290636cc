#include "ApplicationTest.hpp"
#include "Support/gtk/Clipboard.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/WidgetTree.hpp"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <chrono>
#include <string>

namespace corvanta {
namespace {

/// Cut, copy and their like act where the keyboard is.
class EditMenuTest : public ApplicationTest {
protected:
    /// Opens a page and goes into its preview.
    DocumentWindow& openInPreview(const std::string& html, const std::string& shown) {
        folder.write("index.html", html);
        DocumentWindow& window = open(folder / "index.html");
        EXPECT_TRUE(previewShows(window, shown));
        GtkWidget* page = GTK_WIDGET(window.contentView().preview().webView()->webView());
        gtk_widget_grab_focus(page);
        EXPECT_TRUE(waitUntil([&] { return gtk_widget_has_focus(page) != FALSE; }));
        return window;
    }

    /// Marks the first paragraph's characters from `start` up to `end`.
    static void markInPreview(DocumentWindow& window, int start, int end) {
        inPreview(window, "(() => { const text = document.querySelector('p').firstChild;"
                          "getSelection().setBaseAndExtent(text, " +
                              std::to_string(start) + ", text, " + std::to_string(end) + "); })()");
        // The view hears of it somewhat later than the page.
        const PreviewWebView& view = *window.contentView().preview().webView();
        EXPECT_TRUE(waitUntil([&] { return view.hasSelection() == (start != end); }));
    }

    static bool clipboardHolds(const std::string& expected) {
        return waitUntil([&] { return clipboardText() == expected; });
    }

    static void emptyClipboard(DocumentWindow& window) { window.get_clipboard()->set_text("leer"); }

    /// The item of an open menu that has the keyboard.
    static std::string itemWithKeyboard(DocumentWindow& window) {
        return menuItemName(gtk_window_get_focus(GTK_WINDOW(window.gobj())));
    }

    /// Presses the key until the keyboard is elsewhere in the menus: a menu that is only just being opened,
    /// or of which an entry is only just becoming possible, may swallow one.
    void pressAndMove(DocumentWindow& window, const char* key) {
        const std::string before = itemWithKeyboard(window);
        const auto hasMoved = [&] {
            const std::string now = itemWithKeyboard(window);
            return !now.empty() && now != before;
        };
        constexpr int mostTries = 5;
        bool moved = false;
        for (int tries = 0; tries < mostTries && !moved; ++tries) {
            keyboard.press(key);
            moved = waitUntil(hasMoved, std::chrono::seconds(3));
        }
        ASSERT_TRUE(moved) << key << " at " << before;
    }

    /// Whether the item has the keyboard and keeps it. A menu gives the keyboard to its first item by itself,
    /// so that a key which was taken for the cause may still be on its way.
    static bool stays(DocumentWindow& window, const std::string& item) {
        if (itemWithKeyboard(window) == item)
            letPass(std::chrono::milliseconds(500));
        return itemWithKeyboard(window) == item;
    }

    /// Goes to an item of the second menu by keys alone and chooses it; then the keyboard comes back.
    void chooseFromEditMenu(DocumentWindow& window, const std::string& item) {
        GtkWidget* before = gtk_window_get_focus(GTK_WINDOW(window.gobj()));
        pressAndMove(window, "F10");
        pressAndMove(window, "Right");
        constexpr int mostItems = 40;
        for (int items = 0; items < mostItems && !stays(window, item); ++items)
            pressAndMove(window, "Down");
        ASSERT_EQ(itemWithKeyboard(window), item);
        keyboard.press("Return");
        ASSERT_TRUE(waitUntil([&] { return gtk_window_get_focus(GTK_WINDOW(window.gobj())) == before; }));
    }
};

TEST_F(EditMenuTest, CopiesFromTheTextAndPastesIntoIt) {
    folder.write("index.html", "eins");
    DocumentWindow& window = open(folder / "index.html");
    emptyClipboard(window);
    chooseFromEditMenu(window, "Alles auswählen");
    chooseFromEditMenu(window, "Ausschneiden");
    EXPECT_TRUE(waitUntil([&] { return text(window).empty(); }));
    EXPECT_TRUE(clipboardHolds("eins"));
    chooseFromEditMenu(window, "Einsetzen");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "eins"; }));
    chooseFromEditMenu(window, "Alles auswählen");
    chooseFromEditMenu(window, "Löschen");
    EXPECT_TRUE(waitUntil([&] { return text(window).empty(); }));
}

TEST_F(EditMenuTest, CopiesFromThePreviewWhenTheKeyboardIsThere) {
    DocumentWindow& window = openInPreview("<p>eins</p>", "eins");
    emptyClipboard(window);
    chooseFromEditMenu(window, "Alles auswählen");
    ASSERT_TRUE(waitUntil([&] { return inPreview(window, "getSelection().toString().trim()") == "eins"; }));
    // The view hears of the selection somewhat later than the page, and the menu asks the view.
    ASSERT_TRUE(waitUntil([&] { return window.contentView().preview().webView()->hasSelection(); }));
    EXPECT_EQ(textView(window).selectedRange().length, 0);
    chooseFromEditMenu(window, "Kopieren");
    EXPECT_TRUE(clipboardHolds("eins"));
    EXPECT_EQ(text(window), "<p>eins</p>");
}

TEST_F(EditMenuTest, CutsFromThePreviewAndPastesIntoItAndTheSourceFollows) {
    DocumentWindow& window = openInPreview("<p>eins</p>", "eins");
    emptyClipboard(window);
    markInPreview(window, 0, 2);
    chooseFromEditMenu(window, "Ausschneiden");
    EXPECT_TRUE(clipboardHolds("ei"));
    EXPECT_TRUE(waitUntil([&] { return text(window) == "<p>ns</p>"; })) << text(window);
    markInPreview(window, 2, 2);
    chooseFromEditMenu(window, "Einsetzen");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "<p>nsei</p>"; })) << text(window);
    markInPreview(window, 0, 2);
    chooseFromEditMenu(window, "Löschen");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "<p>ei</p>"; }))
        << text(window) << " and in the page " << inPreview(window, "document.body.innerHTML");
}

TEST_F(EditMenuTest, CutsAndPastesInThePreviewByKeys) {
    DocumentWindow& window = openInPreview("<p>eins</p>", "eins");
    emptyClipboard(window);
    keyboard.press("Control+a");
    ASSERT_TRUE(waitUntil([&] { return inPreview(window, "getSelection().toString().trim()") == "eins"; }));
    keyboard.press("Control+c");
    EXPECT_TRUE(clipboardHolds("eins"));
    markInPreview(window, 0, 2);
    keyboard.press("Control+x");
    EXPECT_TRUE(clipboardHolds("ei"));
    EXPECT_TRUE(waitUntil([&] { return text(window) == "<p>ns</p>"; })) << text(window);
    markInPreview(window, 2, 2);
    keyboard.press("Control+v");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "<p>nsei</p>"; })) << text(window);
}

TEST_F(EditMenuTest, StandsTheKeyboardGoingRoundTheWindow) {
    DocumentWindow& window = openInPreview("<p>eins <a href=x>zwei</a></p>", "eins zwei");
    constexpr int surelyRound = 12;
    for (int stop = 0; stop < surelyRound; ++stop) {
        keyboard.press("Control+Tab");
        letKeysArrive(window);
    }
    EXPECT_TRUE(window.is_active());
}

TEST_F(EditMenuTest, ActsInTheFindFieldWhenTheKeyboardIsThere) {
    folder.write("index.html", "eins");
    DocumentWindow& window = open(folder / "index.html");
    emptyClipboard(window);
    keyboard.press("Control+f");
    ASSERT_TRUE(waitUntil([&] { return !textView(window).has_focus(); }));
    keyboard.type("x");
    chooseFromEditMenu(window, "Alles auswählen");
    chooseFromEditMenu(window, "Ausschneiden");
    EXPECT_TRUE(clipboardHolds("x"));
    EXPECT_EQ(text(window), "eins");
    // Back in the text, which the commands act on again.
    keyboard.press("Escape");
    ASSERT_TRUE(waitUntil([&] { return textView(window).has_focus(); }));
    chooseFromEditMenu(window, "Einsetzen");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "xeins"; })) << text(window);
}

TEST_F(EditMenuTest, GivesTheKeyboardBackWhenNothingIsChosen) {
    folder.write("index.html", "eins");
    DocumentWindow& window = open(folder / "index.html");
    pressAndMove(window, "F10");
    pressAndMove(window, "Right");
    pressAndMove(window, "Right");
    keyboard.press("Escape");
    EXPECT_TRUE(waitUntil([&] { return textView(window).has_focus(); }));
}

TEST_F(EditMenuTest, ActsOnTheTextOnceThePreviewIsHidden) {
    DocumentWindow& window = openInPreview("<p>eins</p>", "eins");
    emptyClipboard(window);
    window.activate_action("win.show-preview");
    window.activate_action("win.select-all");
    window.activate_action("win.copy");
    EXPECT_TRUE(clipboardHolds("<p>eins</p>"));
}

} // namespace
} // namespace corvanta
