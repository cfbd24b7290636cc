#pragma once

#include <giomm/menu.h>
#include <gtkmm/application.h>

namespace corvanta {

/// The menu bar and the shortcuts, made from the table of commands in the language in use.
struct EditorMenus {
    EditorMenus() = delete;

    /// `recentFiles` and `openWindows` are menus that others keep up to date; they become part of the bar.
    static Glib::RefPtr<Gio::Menu> menuBar(const Glib::RefPtr<Gio::Menu>& recentFiles,
                                           const Glib::RefPtr<Gio::Menu>& openWindows);

    /// Gives the commands their shortcuts.
    static void setShortcuts(Gtk::Application& application);

    /// `text` as a menu item shows it: an underscore is a character, not a mark for a key.
    static std::string label(std::string_view text);
};

} // namespace corvanta
