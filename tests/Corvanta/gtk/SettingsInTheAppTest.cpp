#include "ApplicationTest.hpp"
#include "EditorCore/DocumentTemplate.hpp"
#include "GermanTexts.hpp"
#include "Support/gtk/FocusWalk.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/WidgetTree.hpp"

#include <adwaita.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {
namespace {

/// The settings over the documents that follow them.
class SettingsInTheAppTest : public ApplicationTest {
protected:
    Gtk::Window* settings() {
        for (Gtk::Window* window : app->get_windows()) {
            if (ADW_IS_PREFERENCES_WINDOW(window->gobj()) && window->is_active())
                return window;
        }
        return nullptr;
    }

    Gtk::Window& openSettings() {
        keyboard.press("Control+comma");
        EXPECT_TRUE(waitUntil([this] { return settings() != nullptr; }));
        return *settings();
    }

    /// Chooses a language in the picker by the name that stands there.
    void chooseLanguage(const std::string& name) {
        Gtk::Window& window = openSettings();
        auto* row = ADW_COMBO_ROW(descendant(GTK_WIDGET(window.gobj()), ADW_TYPE_COMBO_ROW));
        GListModel* names = adw_combo_row_get_model(row);
        for (guint i = 0; i < g_list_model_get_n_items(names); ++i) {
            if (gtk_string_list_get_string(GTK_STRING_LIST(names), i) == name)
                adw_combo_row_set_selected(row, i);
        }
    }

    static bool says(Gtk::Widget& widget, const std::string& text) {
        const auto texts = shownTexts(widget);
        return std::ranges::find(texts, text) != texts.end();
    }

    /// Goes to a tab of the settings by keys alone.
    void turnTo(FocusWalk& walk, const std::string& name) {
        GtkWidget* tab = walk.tabTo([&name](GtkWidget* widget) {
            const std::vector<std::string> texts = shownTexts(*Glib::wrap(widget));
            return GTK_IS_TOGGLE_BUTTON(widget) && std::ranges::find(texts, name) != texts.end();
        });
        ASSERT_NE(tab, nullptr) << name;
        keyboard.press("space");
        EXPECT_TRUE(waitUntil([&] { return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(tab)) != FALSE; }));
    }

    static int fontHeight(DocumentWindow& window) {
        return textView(window).get_pango_context()->get_font_description().get_size();
    }
};

TEST_F(SettingsInTheAppTest, OpenByTheirShortcutAndCloseByEscape) {
    openNothing();
    Gtk::Window& window = openSettings();
    for (const char* tab : {"Allgemein", "Editor", "Claude"})
        EXPECT_TRUE(says(window, tab)) << tab;
    keyboard.press("Escape");
    EXPECT_TRUE(waitUntil([this] { return settings() == nullptr; }));
}

TEST_F(SettingsInTheAppTest, AreChangedByKeysAlone) {
    DocumentWindow& document = openNothing();
    FocusWalk walk(openSettings(), keyboard);
    GtkWidget* updates = walk.tabTo(GTK_TYPE_SWITCH);
    ASSERT_NE(updates, nullptr);
    const gboolean before = gtk_switch_get_active(GTK_SWITCH(updates));
    keyboard.press("space");
    EXPECT_TRUE(waitUntil([&] { return gtk_switch_get_active(GTK_SWITCH(updates)) != before; }));
    keyboard.press("space");
    EXPECT_TRUE(waitUntil([&] { return gtk_switch_get_active(GTK_SWITCH(updates)) == before; }));

    turnTo(walk, "Editor");
    const int height = fontHeight(document);
    ASSERT_NE(walk.tabTo(GTK_TYPE_SCALE), nullptr);
    keyboard.press("Right");
    EXPECT_TRUE(waitUntil([&] { return fontHeight(document) > height; }));
    keyboard.press("Left");
    EXPECT_TRUE(waitUntil([&] { return fontHeight(document) == height; }));

    turnTo(walk, "Claude");
    GtkWidget* key = walk.tabTo(GTK_TYPE_PASSWORD_ENTRY);
    ASSERT_NE(key, nullptr);
    keyboard.type("sk");
    EXPECT_TRUE(waitUntil([&] { return gtk_editable_get_text(GTK_EDITABLE(key)) == std::string("sk"); }));
    EXPECT_NE(walk.tabTo([](GtkWidget* widget) {
        return GTK_IS_BUTTON(widget) && buttonNamed(widget, "Speichern") == widget;
    }),
              nullptr);
    keyboard.press("Escape");
    EXPECT_TRUE(waitUntil([this] { return settings() == nullptr; }));
}

TEST_F(SettingsInTheAppTest, AreReachedByTabControlByControl) {
    openNothing();
    FocusWalk walk(openSettings(), keyboard);
    for (const auto& [tab, controls] :
         {std::pair{"Allgemein", std::vector{ADW_TYPE_COMBO_ROW, GTK_TYPE_SCALE, GTK_TYPE_SWITCH}},
          std::pair{"Editor", std::vector{ADW_TYPE_COMBO_ROW, GTK_TYPE_SCALE}},
          std::pair{"Claude", std::vector{GTK_TYPE_PASSWORD_ENTRY}}}) {
        turnTo(walk, tab);
        for (const GType control : controls)
            EXPECT_NE(walk.tabTo(control), nullptr) << tab << ": " << g_type_name(control);
    }
}

TEST_F(SettingsInTheAppTest, ShowNoGermanInAnEnglishDocumentWindow) {
    folder.write("index.html", "<img src=bild.png><p>x</p>");
    DocumentWindow& window = open(folder / "index.html");
    ASSERT_TRUE(previewShows(window, "x"));
    keyboard.press("Control+Alt+c");
    keyboard.press("Control+Alt+f");
    chooseLanguage("English");
    ASSERT_TRUE(waitUntil([&] { return says(window, "File"); }));
    const std::set<std::string> german = germanTexts();
    EXPECT_GT(german.size(), 100U);
    const std::vector<std::string> texts = shownTexts(window);
    for (const char* seen : {"Claude assistant", "Replace all", "Grant access to folder …"})
        EXPECT_TRUE(std::ranges::find(texts, seen) != texts.end()) << seen << testing::PrintToString(texts);
    for (const std::string& text : texts)
        EXPECT_FALSE(german.contains(text)) << text;
    chooseLanguage("System");
    EXPECT_TRUE(waitUntil([&] { return says(window, "Ablage"); }));
}

TEST_F(SettingsInTheAppTest, ChangeTheLanguageOfEveryWindowAtOnce) {
    DocumentWindow& window = openNothing();
    EXPECT_TRUE(says(window, "Ablage"));
    chooseLanguage("English");
    EXPECT_TRUE(waitUntil([&] { return says(window, "File") && !says(window, "Ablage"); }));
    EXPECT_TRUE(waitUntil([&] { return settings() != nullptr && says(*settings(), "General"); }));
    keyboard.press("Escape");
    ASSERT_TRUE(waitUntil([this] { return settings() == nullptr; }));
    activeWindow();
    chooseLanguage("System");
    EXPECT_TRUE(waitUntil([&] { return says(window, "Ablage"); }));
}

TEST_F(SettingsInTheAppTest, KeepTheTextAndItsHistoryThroughAChangeOfTheLanguage) {
    folder.write("index.html", "x");
    DocumentWindow& window = open(folder / "index.html");
    typeInto(window, "a");
    chooseLanguage("English");
    ASSERT_TRUE(waitUntil([&] { return says(window, "File"); }));
    chooseLanguage("System");
    ASSERT_TRUE(waitUntil([&] { return says(window, "Ablage"); }));
    ASSERT_TRUE(waitUntil([&] { return settings() != nullptr && says(*settings(), "Allgemein"); }));
    keyboard.press("Escape");
    ASSERT_TRUE(waitUntil([this] { return settings() == nullptr; }));
    activeWindow();
    EXPECT_EQ(text(window), "ax");
    ASSERT_TRUE(waitUntil([&] { return textView(window).has_focus(); }));
    keyboard.press("Control+z");
    EXPECT_TRUE(waitUntil([&] { return text(window) == "x"; }));
}

TEST_F(SettingsInTheAppTest, EnlargeTheCodeOfEveryWindowByTheKeyForIt) {
    folder.write("index.html", "x");
    folder.write("andere.html", "y");
    DocumentWindow& other = open(folder / "andere.html");
    DocumentWindow& window = open(folder / "index.html");
    const int before = fontHeight(window);
    keyboard.press("Control+plus");
    EXPECT_TRUE(waitUntil([&] { return fontHeight(window) > before; }));
    EXPECT_TRUE(waitUntil([&] { return fontHeight(other) == fontHeight(window); }));
    keyboard.press("Control+0");
    EXPECT_TRUE(waitUntil([&] { return fontHeight(window) == before; }));
}

TEST_F(SettingsInTheAppTest, LeaveTheMenuCommandsOfADocumentWithoutEffect) {
    DocumentWindow& window = openNothing();
    Gtk::Window& settings = openSettings();
    keyboard.press("Control+i");
    keyboard.press("Control+s");
    letKeysArrive(settings);
    EXPECT_EQ(text(window), DocumentTemplate::newHTML);
    EXPECT_EQ(dialog(), nullptr);
}

} // namespace
} // namespace corvanta
