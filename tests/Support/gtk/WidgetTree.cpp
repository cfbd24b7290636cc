#include "Support/gtk/WidgetTree.hpp"

#include <gtk/gtk.h>

#include <memory>

namespace corvanta {

namespace {

void collect(GtkWidget* widget, std::vector<std::string>& texts) {
    if (GTK_IS_LABEL(widget))
        texts.emplace_back(gtk_label_get_text(GTK_LABEL(widget)));
    if (const char* tooltip = gtk_widget_get_tooltip_text(widget))
        texts.emplace_back(tooltip);
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child)) {
        if (gtk_widget_get_visible(child) != FALSE)
            collect(child, texts);
    }
}

/// The first of `widget` and what is in it that `isWanted`, or null.
template <typename Predicate>
GtkWidget* find(GtkWidget* widget, const Predicate& isWanted) {
    if (isWanted(widget))
        return widget;
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child)) {
        if (GtkWidget* found = find(child, isWanted))
            return found;
    }
    return nullptr;
}

void collectMenuItems(GtkWidget* widget, std::vector<GtkWidget*>& items) {
    if (!menuItemName(widget).empty())
        items.push_back(widget);
    for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
         child = gtk_widget_get_next_sibling(child))
        collectMenuItems(child, items);
}

} // namespace

GtkWidget* descendant(GtkWidget* widget, GType type) {
    return find(widget, [type](GtkWidget* each) { return g_type_is_a(G_OBJECT_TYPE(each), type) != FALSE; });
}

GtkWidget* buttonNamed(GtkWidget* widget, const std::string& name) {
    return find(widget, [&name](GtkWidget* each) {
        const char* label = GTK_IS_BUTTON(each) ? gtk_button_get_label(GTK_BUTTON(each)) : nullptr;
        return label != nullptr && label == name;
    });
}

GtkWidget* withTooltip(GtkWidget* widget, const std::string& tooltip) {
    return find(widget, [&tooltip](GtkWidget* each) {
        const char* text = gtk_widget_get_tooltip_text(each);
        return text != nullptr && text == tooltip;
    });
}

std::string menuItemName(GtkWidget* widget) {
    // The toolkit has no public name for this type.
    if (widget == nullptr || G_OBJECT_TYPE_NAME(widget) != std::string("GtkModelButton"))
        return "";
    char* text = nullptr;
    g_object_get(widget, "text", &text, nullptr);
    const std::unique_ptr<char, decltype(&g_free)> owner(text, g_free);
    return text == nullptr ? "" : text;
}

std::vector<GtkWidget*> menuItems(GtkWidget* menu) {
    std::vector<GtkWidget*> items;
    collectMenuItems(menu, items);
    return items;
}

std::vector<std::string> shownTexts(Gtk::Widget& widget) {
    std::vector<std::string> texts;
    collect(widget.gobj(), texts);
    return texts;
}

} // namespace corvanta
