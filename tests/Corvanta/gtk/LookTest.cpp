#include "LookTest.hpp"

#include "DesignSystem/Sprache.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <adwaita.h>

#include <string_view>

namespace corvanta {

namespace {

/// Whether a text that is shown in part is told by the pointer.
bool isToldWhole(GtkWidget* label) {
    const char* tooltip = gtk_widget_get_tooltip_text(label);
    return tooltip != nullptr && gtk_label_get_text(GTK_LABEL(label)) == std::string_view(tooltip);
}

/// Whether a part of what a label says cannot be seen in its window, not even by scrolling up or down.
bool isCut(GtkWidget* label, GtkWidget* window) {
    PangoLayout* layout = gtk_label_get_layout(GTK_LABEL(label));
    int width = 0;
    int height = 0;
    pango_layout_get_pixel_size(layout, &width, &height);
    graphene_rect_t place;
    if ((pango_layout_is_ellipsized(layout) != FALSE && !isToldWhole(label)) ||
        gtk_widget_get_width(label) < width || gtk_widget_get_height(label) < height ||
        gtk_widget_compute_bounds(label, window, &place) == FALSE)
        return true;
    const bool scrolls = gtk_widget_get_ancestor(label, GTK_TYPE_SCROLLED_WINDOW) != nullptr;
    const auto windowWidth = static_cast<float>(gtk_widget_get_width(window));
    const auto windowHeight = static_cast<float>(gtk_widget_get_height(window));
    return place.origin.x < 0 || place.origin.x + place.size.width > windowWidth ||
           (!scrolls && (place.origin.y < 0 || place.origin.y + place.size.height > windowHeight));
}

struct Texts {
    int count = 0;
    std::vector<std::string> cut;
};

/// Reads what `widget`, a part of `window`, shows. The title of a window may be any length.
void read(GtkWidget* widget, GtkWidget* window, Texts& texts) {
    if (gtk_widget_get_mapped(widget) == FALSE || ADW_IS_WINDOW_TITLE(widget))
        return;
    if (GTK_IS_LABEL(widget)) {
        ++texts.count;
        if (isCut(widget, window))
            texts.cut.emplace_back(gtk_label_get_text(GTK_LABEL(widget)));
    }
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child)) {
        // A window of its own.
        if (!GTK_IS_NATIVE(child))
            read(child, window, texts);
    }
}

} // namespace

const std::vector<Look> LookTest::looks = {
    {"SmallInGerman", "de", Schrift::kleinstes, 1},
    {"LargeInGerman", "de", Schrift::groesstes, 1},
    {"LargeInEnglish", "en", Schrift::groesstes, 1},
    {"EnlargedByTheDesktop", "de", Schrift::vorgabe, 1.5},
};

LookTest::LookTest() {
    constexpr double resolution = 96 * 1024;
    g_object_get(gtk_settings_get_default(), "gtk-xft-dpi", &resolutionBefore_, nullptr);
    g_object_set(gtk_settings_get_default(), "gtk-xft-dpi", static_cast<int>(resolution * GetParam().scale),
                 nullptr);
    userDefaults_.set(Schrift::schluessel, GetParam().size);
    Sprache::sitzung()->setGewaehlteKennung(GetParam().language);
}

LookTest::~LookTest() {
    Sprache::sitzung()->setGewaehlteKennung("");
    g_object_set(gtk_settings_get_default(), "gtk-xft-dpi", resolutionBefore_, nullptr);
}

testing::AssertionResult LookTest::showsAllTextsWhole(const std::function<GtkWidget*()>& find) {
    Texts texts;
    const bool isWhole = waitUntil([&] {
        texts = {};
        if (GtkWidget* window = find())
            read(window, window, texts);
        return texts.count > 0 && texts.cut.empty();
    });
    return (isWhole ? testing::AssertionSuccess() : testing::AssertionFailure())
           << "cut of " << texts.count << ": " << testing::PrintToString(texts.cut);
}

testing::AssertionResult LookTest::showsAllTextsWhole(Gtk::Window& window) {
    return showsAllTextsWhole([&window] { return GTK_WIDGET(window.gobj()); });
}

} // namespace corvanta
