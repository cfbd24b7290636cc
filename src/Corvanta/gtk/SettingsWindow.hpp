#pragma once

#include "ClaudeAssistant/gtk/ClaudeSettingsView.hpp"
#include "Settings/gtk/EditorSettingsView.hpp"
#include "Settings/gtk/GeneralSettingsView.hpp"

#include <gtkmm/window.h>

namespace corvanta {

/// The settings in three tabs.
class SettingsWindow : public Gtk::Window {
public:
    /// All of them outlive the window.
    SettingsWindow(AppSettings& settings, UserDefaults& userDefaults, Sprache& sprache,
                   ClaudeAssistantViewModel& assistant, Workspace& workspace);

private:
    GeneralSettingsView general_;
    EditorSettingsView editor_;
    ClaudeSettingsView claude_;
};

} // namespace corvanta
