#include "Corvanta/gtk/SettingsWindow.hpp"

#include "DesignSystem/t.hpp"

#include <adwaita.h>

namespace corvanta {

SettingsWindow::SettingsWindow(AppSettings& settings, UserDefaults& userDefaults, Sprache& sprache,
                               ClaudeAssistantViewModel& assistant, Workspace& workspace)
    : Gtk::Window(GTK_WINDOW(adw_preferences_window_new())),
      general_(settings, userDefaults, sprache, workspace),
      editor_(settings),
      claude_(assistant) {
    set_title(t("Einstellungen"));
    set_modal(false);
    auto* window = ADW_PREFERENCES_WINDOW(gobj());
    adw_preferences_window_set_search_enabled(window, FALSE);
    for (Gtk::Widget* page : {static_cast<Gtk::Widget*>(&general_), static_cast<Gtk::Widget*>(&editor_),
                              static_cast<Gtk::Widget*>(&claude_)})
        adw_preferences_window_add(window, ADW_PREFERENCES_PAGE(page->gobj()));
}

} // namespace corvanta
