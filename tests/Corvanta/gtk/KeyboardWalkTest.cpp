// Everything in the document window is reached by Tab, in the order in which it is read.

#include "ApplicationTest.hpp"
#include "Support/gtk/FocusWalk.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <gtest/gtest.h>
#include <gtksourceview/gtksource.h>
#include <webkit/webkit.h>

#include <algorithm>
#include <string>
#include <vector>

namespace corvanta {
namespace {

const std::vector<std::string> stopsBehindTheFindField = {
    "Groß- und Kleinschreibung beachten",
    "Regulärer Ausdruck",
    "Vorheriger Treffer",
    "Nächster Treffer",
    "Suche schließen",
    "Ersetzen durch",
    "Ersetzen",
    "Alle ersetzen",
    "(text)",
    "Ordner freigeben …",
    "(page)",
    "Syntax formatieren",
    "Claude-Assistent ein-/ausblenden",
    "Vorschau ein-/ausblenden",
    "Suchen",
};

class KeyboardWalkTest : public ApplicationTest {
protected:
    /// A document with everything that its window can show; the find field has the keyboard.
    DocumentWindow& openWithAllPanels() {
        folder.write("index.html", "<img src=/bild.png><p>x</p>");
        DocumentWindow& window = open(folder / "index.html");
        EXPECT_TRUE(previewShows(window, "x"));
        keyboard.press("Control+Alt+c");
        keyboard.press("Control+Alt+f");
        EXPECT_TRUE(waitUntil([&] { return nameOf(focus(window)) == "Suchen"; }));
        // What replaces can be pressed only when there is something to replace.
        keyboard.type("x");
        EXPECT_TRUE(
            waitUntil([&] { return window.contentView().codeEditor().findBar().status() == "1 von 1"; }));
        return window;
    }

    static GtkWidget* focus(DocumentWindow& window) {
        return gtk_window_get_focus(static_cast<Gtk::Window&>(window).gobj());
    }

    /// How a user would call what has the keyboard.
    static std::string nameOf(GtkWidget* focus) {
        if (GTK_SOURCE_IS_VIEW(focus))
            return "(text)";
        if (WEBKIT_IS_WEB_VIEW(focus))
            return "(page)";
        GtkWidget* control = GTK_IS_TEXT(focus) ? gtk_widget_get_parent(focus) : focus;
        if (const char* tooltip = gtk_widget_get_tooltip_text(control))
            return tooltip;
        const char* label = GTK_IS_BUTTON(control) ? gtk_button_get_label(GTK_BUTTON(control)) : nullptr;
        return label != nullptr ? label : G_OBJECT_TYPE_NAME(control);
    }

    /// What is reached one after the other until the keyboard is where it was.
    std::vector<std::string> stops(DocumentWindow& window, const std::string& keys) {
        FocusWalk walk(window, keyboard);
        const GtkWidget* start = focus(window);
        std::vector<std::string> names;
        do {
            // Texts keep Tab for themselves.
            const bool isText = GTK_IS_TEXT_VIEW(focus(window)) || WEBKIT_IS_WEB_VIEW(focus(window));
            names.push_back(nameOf(walk.press(isText ? "Control+" + keys : keys)));
        } while (focus(window) != start && names.size() <= stopsBehindTheFindField.size());
        return names;
    }
};

TEST_F(KeyboardWalkTest, ReachesEverythingOnceInTheOrderInWhichItIsRead) {
    EXPECT_EQ(stops(openWithAllPanels(), "Tab"), stopsBehindTheFindField);
}

TEST_F(KeyboardWalkTest, ReachesEverythingBackwardsTheSameWay) {
    std::vector<std::string> backwards = stopsBehindTheFindField;
    std::rotate(backwards.begin(), backwards.end() - 1, backwards.end());
    std::ranges::reverse(backwards);
    EXPECT_EQ(stops(openWithAllPanels(), "Shift+Tab"), backwards);
}

} // namespace
} // namespace corvanta
