#pragma once

#include <gtkmm/window.h>

namespace corvanta {

/// The help: all topics one below the other.
class HelpWindow : public Gtk::Window {
public:
    HelpWindow();
};

} // namespace corvanta
