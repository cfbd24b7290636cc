#include "DesignSystem/Sprache.hpp"
#include "Platform/ResourceFolder.hpp"
#include "PreviewColumnFixture.hpp"
#include "Support/gtk/Clipboard.hpp"
#include "Support/gtk/WidgetTree.hpp"
#include "Support/gtk/WindowPixels.hpp"

namespace corvanta {
namespace {

using namespace std::chrono_literals;

/// The menu that the second button of the pointer opens in the page.
class PageMenuTest : public PreviewColumnFixture {
protected:
    GtkWidget* view() { return GTK_WIDGET(column.webView()->webView()); }

    /// The menu while it is on the screen.
    GtkWidget* menu() {
        GtkWidget* popover = descendant(view(), GTK_TYPE_POPOVER_MENU);
        return popover != nullptr && gtk_widget_get_mapped(popover) != FALSE ? popover : nullptr;
    }

    /// Clicks with the second button onto the first line of the page's text.
    void askForMenu() {
        movePointer(*column.webView(), 30, 26);
        pressPointer(*column.webView(), 3);
        releasePointer(*column.webView(), 3);
    }

    void openMenu() {
        // A click right after another menu may only have closed that one for good.
        for (int tries = 0; tries < 20 && menu() == nullptr; ++tries) {
            askForMenu();
            waitUntil([this] { return menu() != nullptr; }, 2s);
        }
        ASSERT_NE(menu(), nullptr);
    }

    /// What the menu offers; in brackets what cannot be chosen now.
    std::vector<std::string> offers() {
        std::vector<std::string> names;
        if (menu() == nullptr)
            return names;
        for (GtkWidget* item : menuItems(menu()))
            names.push_back(gtk_widget_get_sensitive(item) != FALSE ? menuItemName(item)
                                                                    : "(" + menuItemName(item) + ")");
        return names;
    }

    /// Clicks on an item of the open menu.
    void choose(const std::string& name) {
        ASSERT_NE(menu(), nullptr);
        const std::vector<GtkWidget*> all = menuItems(menu());
        const auto item = std::ranges::find(all, name, menuItemName);
        ASSERT_NE(item, all.end()) << name;
        Gtk::Widget& widget = *Glib::wrap(*item);
        // A menu is there somewhat earlier than it is on the screen.
        ASSERT_TRUE(waitUntil([&] {
            movePointer(widget, widget.get_width() / 2, widget.get_height() / 2);
            return (gtk_widget_get_state_flags(*item) & GTK_STATE_FLAG_PRELIGHT) != 0;
        })) << name;
        pressPointer(widget);
        releasePointer(widget);
        ASSERT_TRUE(waitUntil([this] { return menu() == nullptr; })) << name;
    }

    std::string itemWithKeyboard() { return menuItemName(gtk_window_get_focus(window.window().gobj())); }

    /// Goes down to an item of the open menu by keys.
    void goTo(const std::string& name) {
        // A menu that is only just being opened may swallow a key.
        constexpr int mostTries = 20;
        for (int tries = 0; tries < mostTries && itemWithKeyboard() != name; ++tries) {
            const std::string before = itemWithKeyboard();
            keyboard.press("Down");
            waitUntil([&] { return itemWithKeyboard() != before; }, 2s);
        }
        ASSERT_EQ(itemWithKeyboard(), name);
    }
};

TEST_F(PageMenuTest, OffersWhatCanBeDoneToAnEditedPageAndNothingOfABrowser) {
    showEditable("<p><a href=https://example.org/>Wort</a> und Wort</p>");
    openMenu();
    EXPECT_EQ(offers(), (std::vector<std::string>{"(Ausschneiden)", "(Kopieren)", "Einsetzen", "(Löschen)",
                                                  "Alles auswählen"}));
}

TEST_F(PageMenuTest, OffersTheSameOnAPicture) {
    folder.write("bild.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='300' height='200'/>");
    showEditable("<img src=bild.svg>");
    openMenu();
    EXPECT_EQ(offers(), (std::vector<std::string>{"(Ausschneiden)", "(Kopieren)", "Einsetzen", "(Löschen)",
                                                  "Alles auswählen"}));
}

TEST_F(PageMenuTest, CutsDeletesAndPastesAndTheSourceFollows) {
    showEditable("<p>einszweidrei</p>");
    select("p", 0, "p", 4);
    openMenu();
    choose("Ausschneiden");
    EXPECT_TRUE(sourceBecomes("<p>zweidrei</p>"));
    select("p", 0, "p", 4);
    openMenu();
    choose("Löschen");
    EXPECT_TRUE(sourceBecomes("<p>drei</p>"));
    select("p", 0, "p", 4);
    openMenu();
    choose("Einsetzen");
    EXPECT_TRUE(sourceBecomes("<p>eins</p>"));
}

TEST_F(PageMenuTest, SelectsAndCopiesEverything) {
    gdk_clipboard_set_text(gtk_widget_get_clipboard(view()), "leer");
    showEditable("<p>eins</p><p>zwei</p>");
    openMenu();
    choose("Alles auswählen");
    EXPECT_TRUE(becomes("getSelection().toString()", "eins\n\nzwei"));
    openMenu();
    choose("Kopieren");
    EXPECT_TRUE(waitUntil([] { return clipboardText() == "eins\n\nzwei"; })) << clipboardText();
}

TEST_F(PageMenuTest, IsUsedByKeysOnceItIsOpenAndGivesTheKeyboardBack) {
    showEditable("<p>einszwei</p>");
    select("p", 0, "p", 4);
    openMenu();
    goTo("Löschen");
    keyboard.press("Return");
    EXPECT_TRUE(sourceBecomes("<p>zwei</p>"));
    EXPECT_TRUE(waitUntil([this] { return menu() == nullptr && gtk_widget_has_focus(view()) != FALSE; }));
    keyboard.type("x");
    EXPECT_TRUE(sourceBecomes("<p>xzwei</p>"));
}

TEST_F(PageMenuTest, IsNotReplacedByTheMenuOfAWidgetThatNobodySees) {
    showEditable("<p>eins</p>");
    inPage("addEventListener('keydown', event => window.key = event.key, true); 1");
    for (const auto& [keys, name] : {std::pair{"Shift+F10", "F10"}, std::pair{"Menu", "ContextMenu"}}) {
        keyboard.press(keys);
        ASSERT_TRUE(becomes("window.key", name));
        letPass(200ms);
        EXPECT_EQ(menu(), nullptr) << keys;
    }
}

TEST_F(PageMenuTest, SpeaksTheLanguageOfTheInterface) {
    Sprache english{{defaults, fileManager, [] { return std::vector<std::string>{"en"}; },
                     resourceFolder(runningExecutable()), folder.path()}};
    const Sprache::Sitzung session{english};
    showEditable("<p>eins</p>");
    openMenu();
    EXPECT_EQ(offers(), (std::vector<std::string>{"(Cut)", "(Copy)", "Paste", "(Delete)", "Select all"}));
}

TEST_F(PageMenuTest, StaysClosedWhereThePageWantsNone) {
    showEditable("<p>eins</p><script>addEventListener('contextmenu', event => { event.preventDefault(); "
                 "event.stopImmediatePropagation(); window.isAsked = true; }, true);</script>");
    askForMenu();
    ASSERT_TRUE(becomes("window.isAsked", "true"));
    letPass(200ms);
    EXPECT_EQ(menu(), nullptr);
    putCaret("p", 4);
    keyboard.type("x");
    EXPECT_TRUE(waitUntil([this] { return source.starts_with("<p>einsx</p>"); }));
}

TEST_F(PageMenuTest, EditsThoughThePageKeepsTheEventToItself) {
    showEditable("<p>einszwei</p><script>addEventListener('contextmenu', event => "
                 "event.stopImmediatePropagation(), true);</script>");
    select("p", 0, "p", 4);
    openMenu();
    choose("Löschen");
    EXPECT_TRUE(waitUntil([this] { return source.starts_with("<p>zwei</p>"); }));
}

TEST_F(PageMenuTest, LetsNoPageEditTheSourceWhenItIsAskedFor) {
    showEditable("<p>eins</p><b>zwei</b><script>addEventListener('contextmenu', event => { "
                 "event.preventDefault(); setTimeout(() => { "
                 "getSelection().collapse(document.querySelector('p').firstChild, 4); "
                 "window.isDone = document.execCommand('delete'); }, 10); }, true);</script>");
    const std::string before = source;
    putCaret("p", 4);
    askForMenu();
    ASSERT_TRUE(becomes("window.isDone", "true"));
    ASSERT_TRUE(becomes("document.querySelector('p').textContent === 'eins'", "false"));
    putCaret("b", 4);
    keyboard.type("x");
    ASSERT_TRUE(waitUntil([&] { return source != before; }));
    EXPECT_TRUE(source.starts_with("<p>eins</p><b>zweix</b>")) << source;
}

TEST_F(PageMenuTest, IsGoneWithItsView) {
    {
        PreviewColumn other(services, [](const std::string&) {});
        TestWindow otherWindow(other);
        other.start();
        ASSERT_TRUE(waitUntil([&] { return other.webView() != nullptr; }));
        other.update("<p>eins</p>", document);
        GtkWidget* page = GTK_WIDGET(other.webView()->webView());
        ASSERT_TRUE(waitUntil([&] { return other.coordinator()->isSettled(); }));
        movePointer(*other.webView(), 30, 26);
        pressPointer(*other.webView(), 3);
        releasePointer(*other.webView(), 3);
        ASSERT_TRUE(waitUntil([&] { return descendant(page, GTK_TYPE_POPOVER_MENU) != nullptr; }));
    }
    showEditable("<p>eins</p>");
    openMenu();
    choose("Alles auswählen");
    EXPECT_TRUE(becomes("getSelection().toString()", "eins"));
}

} // namespace
} // namespace corvanta
