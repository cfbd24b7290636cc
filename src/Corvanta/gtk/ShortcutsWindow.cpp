#include "Corvanta/gtk/ShortcutsWindow.hpp"

#include "Corvanta/MenuCommand.hpp"
#include "DesignSystem/Mass.hpp"
#include "DesignSystem/t.hpp"

#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

constexpr int defaultWidth = 520;
constexpr int defaultHeight = 620;

Gtk::Label& label(const std::string& text, const char* styleClass) {
    auto* label = Gtk::make_managed<Gtk::Label>(text);
    label->set_xalign(0);
    label->set_hexpand(true);
    label->add_css_class(styleClass);
    return *label;
}

/// Looks like keys, and is read as one.
GtkWidget* keys(std::string_view shortcut) {
    const std::string accelerator(shortcut);
    GtkWidget* keys = gtk_shortcut_label_new(accelerator.c_str());
    guint key = 0;
    GdkModifierType modifiers{};
    gtk_accelerator_parse(accelerator.c_str(), &key, &modifiers);
    const std::unique_ptr<char, decltype(&g_free)> text(gtk_accelerator_get_label(key, modifiers), g_free);
    g_object_set(keys, "accessible-role", GTK_ACCESSIBLE_ROLE_LABEL, nullptr);
    gtk_accessible_update_property(GTK_ACCESSIBLE(keys), GTK_ACCESSIBLE_PROPERTY_LABEL, text.get(), -1);
    return keys;
}

void addRow(Gtk::Grid& grid, int row, const MenuCommand& command) {
    grid.attach(label(t(command.title, "Corvanta"), "schrift-text"), 0, row);
    int column = 1;
    for (const std::string_view shortcut : command.shortcuts) {
        gtk_grid_attach(grid.gobj(), keys(shortcut), column++, row, 1, 1);
    }
}

} // namespace

ShortcutsWindow::ShortcutsWindow() {
    set_title(t("Tastenkürzel"));
    set_default_size(defaultWidth, defaultHeight);

    // One for all menus, so that the keys stand below each other.
    auto* grid = Gtk::make_managed<Gtk::Grid>();
    grid->set_margin(Mass::weit);
    grid->set_row_spacing(Mass::knapp);
    grid->set_column_spacing(Mass::mittel);
    std::optional<Menu> menu;
    int row = 0;
    for (const MenuCommand& command : MenuCommand::all()) {
        if (command.shortcuts.empty())
            continue;
        if (menu != command.menu) {
            menu = command.menu;
            Gtk::Label& title = label(t(MenuCommand::titleOf(*menu)), "schrift-titel");
            title.set_margin_top(Mass::mittel);
            grid->attach(title, 0, row++);
        }
        addRow(*grid, row++, command);
    }
    auto* scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
    scrolled->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scrolled->set_child(*grid);
    // The only thing here that takes the keyboard.
    gtk_accessible_update_property(GTK_ACCESSIBLE(scrolled->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   t("Tastenkürzel").c_str(), -1);
    set_child(*scrolled);
}

} // namespace corvanta
