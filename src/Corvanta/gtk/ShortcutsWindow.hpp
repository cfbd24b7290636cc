#pragma once

#include <gtkmm/window.h>

namespace corvanta {

/// All shortcuts at a glance, menu by menu.
class ShortcutsWindow : public Gtk::Window {
public:
    ShortcutsWindow();
};

} // namespace corvanta
