// No text of a document window is cut, in no language or size of the text.

#include "DesignSystem/t.hpp"

#include "Corvanta/MenuCommand.hpp"
#include "LookTest.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/WidgetTree.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace corvanta {
namespace {

class TextsFitTest : public LookTest {
protected:
    DocumentWindow& openWithAllPanels() {
        folder.write("index.html", "<img src=/ein-bild-mit-einem-langen-namen.png><p>x</p>");
        DocumentWindow& window = open(folder / "index.html");
        EXPECT_TRUE(previewShows(window, "x"));
        keyboard.press("Control+Alt+c");
        keyboard.press("Control+Alt+f");
        EXPECT_TRUE(waitUntil([&] { return !textView(window).has_focus(); }));
        keyboard.type("x");
        return window;
    }

    DocumentWindow& openAsNarrowAsItCanBe() {
        DocumentWindow& window = openWithAllPanels();
        const int before = window.get_width();
        window.set_default_size(1, 600);
        EXPECT_TRUE(waitUntil([&] { return window.get_width() < before; }));
        return window;
    }

    /// Whether one control of a window stands wholly below another.
    static bool isBelow(GtkWidget* lower, GtkWidget* upper) {
        graphene_rect_t place;
        return gtk_widget_compute_bounds(lower, upper, &place) != FALSE &&
               place.origin.y >= static_cast<float>(gtk_widget_get_height(upper));
    }

    /// Waits until a question is on the screen with all its texts, and answers it.
    static void expectThatTheQuestionFits() {
        EXPECT_TRUE(showsAllTextsWhole([] { return dialog() ? GTK_WIDGET(dialog()->gobj()) : nullptr; }));
        answer(Gtk::ResponseType::CANCEL);
    }

    /// What hangs at `widget`, an item of a menu or of the menu bar, once it is open.
    static GtkWidget* opened(GtkWidget* widget) {
        GtkWidget* popover = descendant(widget, GTK_TYPE_POPOVER_MENU);
        if (gtk_widget_get_mapped(popover) == FALSE)
            gtk_widget_activate(widget);
        return gtk_widget_get_mapped(popover) != FALSE ? popover : nullptr;
    }

    /// One of the menus of the menu bar, once it is open; null as long as it is not there in the language in
    /// use.
    static GtkWidget* opened(DocumentWindow& window, Menu menu) {
        GtkWidget* item =
            gtk_widget_get_first_child(descendant(GTK_WIDGET(window.gobj()), GTK_TYPE_POPOVER_MENU_BAR));
        for (int place = 0; place < static_cast<int>(menu); ++place)
            item = gtk_widget_get_next_sibling(item);
        const char* title = gtk_label_get_text(GTK_LABEL(descendant(item, GTK_TYPE_LABEL)));
        return t(MenuCommand::titleOf(menu)) == title ? opened(item) : nullptr;
    }
};

TEST_P(TextsFitTest, InADocumentWithAllPanels) {
    EXPECT_TRUE(showsAllTextsWhole(openWithAllPanels()));
}

TEST_P(TextsFitTest, InADocumentThatIsAsNarrowAsItCanBe) {
    DocumentWindow& window = openAsNarrowAsItCanBe();
    EXPECT_TRUE(showsAllTextsWhole(window));
    GtkWidget* all = GTK_WIDGET(window.gobj());
    EXPECT_TRUE(isBelow(withTooltip(all, t("Suche schließen")), withTooltip(all, t("Suchen"))));
    GtkWidget* hint = GTK_WIDGET(window.contentView().preview().hint().gobj());
    EXPECT_TRUE(isBelow(buttonNamed(hint, t("Ordner freigeben …")), descendant(hint, GTK_TYPE_LABEL)));
}

TEST_P(TextsFitTest, InTheFindBarWhateverItTells) {
    DocumentWindow& window = openAsNarrowAsItCanBe();
    const FindBar& findBar = window.contentView().codeEditor().findBar();
    // The field of the window that has the keyboard.
    keyboard.type("kein Treffer");
    EXPECT_TRUE(waitUntil([&] { return findBar.status() == t("Keine Treffer"); })) << findBar.status();
    EXPECT_TRUE(showsAllTextsWhole(window));
    GtkWidget* expression = withTooltip(GTK_WIDGET(window.gobj()), t("Regulärer Ausdruck"));
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(expression), TRUE);
    keyboard.type("(");
    EXPECT_TRUE(waitUntil([&] { return findBar.status() == t("Ungültiger Ausdruck"); })) << findBar.status();
    EXPECT_TRUE(showsAllTextsWhole(window));
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(expression), FALSE);
}

TEST_P(TextsFitTest, InEveryMenu) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    for (const Menu each : {Menu::file, Menu::edit, Menu::view, Menu::insert, Menu::window, Menu::help})
        EXPECT_TRUE(showsAllTextsWhole([&] { return opened(window, each); })) << MenuCommand::titleOf(each);
    EXPECT_TRUE(showsAllTextsWhole([&]() -> GtkWidget* {
        GtkWidget* file = opened(window, Menu::file);
        const std::vector<GtkWidget*> items = menuItems(file);
        const auto recent = std::ranges::find(items, t("Benutzte Dokumente"), menuItemName);
        return recent == items.end() ? nullptr : opened(*recent);
    }));
    // As long as it is open it has the keyboard of the whole display.
    gtk_popover_popdown(GTK_POPOVER(opened(window, Menu::file)));
}

TEST_P(TextsFitTest, InEveryQuestion) {
    DocumentWindow& window = openNothing();
    DocumentQuestions& questions = window.questions();
    const std::string name = "eine-seite-mit-einem-langen-namen.html";
    questions.askBeforeClosing(
        name, [] {}, [] {});
    expectThatTheQuestionFits();
    questions.askWhichVersion(
        name, [] {}, [] {});
    expectThatTheQuestionFits();
    questions.ask(t("Möchtest du zur gesicherten Fassung von „%@“ zurückkehren?", name),
                  t("Alles, was du seitdem geschrieben hast, geht verloren."), t("Zurückkehren"), [] {});
    expectThatTheQuestionFits();
    questions.inform(t("Der ungesicherte Text von „%@“ wurde wiederhergestellt.", name),
                     t("Die Datei wurde inzwischen geändert. Beide Fassungen sind geöffnet."));
    expectThatTheQuestionFits();
}

INSTANTIATE_TEST_SUITE_P(Looks, TextsFitTest, testing::ValuesIn(LookTest::looks), LookTest::nameOf);

} // namespace
} // namespace corvanta
