// No text of a document window is cut, in no language or size of the text.

#include "DesignSystem/t.hpp"

#include "ApplicationTest.hpp"
#include "DesignSystem/Sprache.hpp"
#include "DesignSystem/gtk/StyleSheet.hpp"
#include "Support/InMemoryUserDefaults.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/WidgetTree.hpp"

#include <adwaita.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvanta {
namespace {

/// Whether a part of what a label says cannot be seen in its window.
bool isCut(GtkWidget* label, GtkWidget* window) {
    PangoLayout* layout = gtk_label_get_layout(GTK_LABEL(label));
    int width = 0;
    int height = 0;
    pango_layout_get_pixel_size(layout, &width, &height);
    graphene_rect_t place;
    return pango_layout_is_ellipsized(layout) != FALSE || gtk_widget_get_width(label) < width ||
           gtk_widget_get_height(label) < height ||
           gtk_widget_compute_bounds(label, window, &place) == FALSE || place.origin.x < 0 ||
           place.origin.x + place.size.width > static_cast<float>(gtk_widget_get_width(window));
}

/// What cannot be read whole in `widget`, a part of `window`. The title of a window may be any length.
void collectCutTexts(GtkWidget* widget, GtkWidget* window, std::vector<std::string>& texts) {
    if (gtk_widget_get_mapped(widget) == FALSE || ADW_IS_WINDOW_TITLE(widget))
        return;
    if (GTK_IS_LABEL(widget) && isCut(widget, window))
        texts.emplace_back(gtk_label_get_text(GTK_LABEL(widget)));
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child))
        collectCutTexts(child, window, texts);
}

/// How a user may have the texts.
struct Look {
    const char* name;
    const char* language;
    /// In points, by the program's setting.
    double size;
    /// How much larger the desktop shows all texts.
    double scale;
};

class TextsFitTest : public ApplicationTest, public testing::WithParamInterface<Look> {
protected:
    TextsFitTest() {
        constexpr double resolution = 96 * 1024;
        g_object_get(gtk_settings_get_default(), "gtk-xft-dpi", &resolutionBefore, nullptr);
        g_object_set(gtk_settings_get_default(), "gtk-xft-dpi",
                     static_cast<int>(resolution * GetParam().scale), nullptr);
        userDefaults.set(Schrift::schluessel, GetParam().size);
        Sprache::sitzung()->setGewaehlteKennung(GetParam().language);
    }
    ~TextsFitTest() override {
        Sprache::sitzung()->setGewaehlteKennung("");
        g_object_set(gtk_settings_get_default(), "gtk-xft-dpi", resolutionBefore, nullptr);
    }

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

    static testing::AssertionResult showsAllTextsWhole(Gtk::Window& window) {
        std::vector<std::string> cut;
        const bool isWhole = waitUntil([&] {
            cut.clear();
            collectCutTexts(GTK_WIDGET(window.gobj()), GTK_WIDGET(window.gobj()), cut);
            return gtk_widget_get_mapped(GTK_WIDGET(window.gobj())) != FALSE && cut.empty();
        });
        return (isWhole ? testing::AssertionSuccess() : testing::AssertionFailure())
               << testing::PrintToString(cut);
    }

    /// Whether one control of a window stands wholly below another.
    static bool isBelow(GtkWidget* lower, GtkWidget* upper) {
        graphene_rect_t place;
        return gtk_widget_compute_bounds(lower, upper, &place) != FALSE &&
               place.origin.y >= static_cast<float>(gtk_widget_get_height(upper));
    }

    int resolutionBefore = 0;
    InMemoryUserDefaults userDefaults;
    StyleSheet styleSheet{userDefaults, Gdk::Display::get_default()};
};

TEST_P(TextsFitTest, InADocumentWithAllPanels) {
    EXPECT_TRUE(showsAllTextsWhole(openWithAllPanels()));
}

TEST_P(TextsFitTest, InADocumentThatIsAsNarrowAsItCanBe) {
    DocumentWindow& window = openWithAllPanels();
    const int before = window.get_width();
    window.set_default_size(1, 600);
    ASSERT_TRUE(waitUntil([&] { return window.get_width() < before; }));
    EXPECT_TRUE(showsAllTextsWhole(window));
    GtkWidget* all = GTK_WIDGET(window.gobj());
    EXPECT_TRUE(isBelow(withTooltip(all, t("Suche schließen")), withTooltip(all, t("Suchen"))));
    GtkWidget* hint = GTK_WIDGET(window.contentView().preview().hint().gobj());
    EXPECT_TRUE(isBelow(buttonNamed(hint, t("Ordner freigeben …")), descendant(hint, GTK_TYPE_LABEL)));
}

INSTANTIATE_TEST_SUITE_P(Looks, TextsFitTest,
                         testing::Values(Look{"SmallInGerman", "de", Schrift::kleinstes, 1},
                                         Look{"LargeInGerman", "de", Schrift::groesstes, 1},
                                         Look{"LargeInEnglish", "en", Schrift::groesstes, 1},
                                         Look{"EnlargedByTheDesktop", "de", Schrift::vorgabe, 1.5}),
                         [](const auto& look) { return std::string(look.param.name); });

} // namespace
} // namespace corvanta
