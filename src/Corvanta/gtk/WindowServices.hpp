#pragma once

#include "ClaudeAssistant/ClaudeAssistantViewModel.hpp"
#include "EditorCore/FindRequest.hpp"
#include "Platform/Published.hpp"
#include "Preview/gtk/PreviewColumn.hpp"
#include "Settings/AppSettings.hpp"

#include <giomm/menu.h>

namespace corvanta {

/// What every document window takes from the program; all of it outlives the windows.
struct WindowServices {
    AppSettings& settings;
    /// What is searched for, in every window.
    Published<FindRequest>& findRequest;
    ClaudeAssistantViewModel& assistant;
    PreviewColumn::Services preview;
    /// Whether new windows show the preview from the start.
    bool showsPreview;
    Glib::RefPtr<Gio::Menu> recentFiles;
    Glib::RefPtr<Gio::Menu> openWindows;
};

} // namespace corvanta
