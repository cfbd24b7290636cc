#pragma once

#include "Support/gtk/Keyboard.hpp"

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/window.h>

#include <functional>
#include <string_view>

namespace corvanta {

/// Goes from control to control in a window as somebody does who uses the keyboard alone.
class FocusWalk {
public:
    /// Both outlive the walk.
    FocusWalk(Gtk::Window& window, Keyboard& keyboard);
    ~FocusWalk();

    FocusWalk(const FocusWalk&) = delete;
    FocusWalk& operator=(const FocusWalk&) = delete;

    /// Presses Tab, with the modifiers before it ("Shift+Tab"), waits until the window has dealt with it, and
    /// returns what has the focus then, or null.
    GtkWidget* press(std::string_view keys);

    /// Presses Tab until the focus is in a widget that `isWanted`. Null when it was nowhere.
    GtkWidget* tabTo(const std::function<bool(GtkWidget*)>& isWanted);
    GtkWidget* tabTo(GType type);

private:
    Gtk::Window& window_;
    Keyboard& keyboard_;
    Glib::RefPtr<Gtk::EventControllerKey> keys_ = Gtk::EventControllerKey::create();
    bool hasArrived_ = false;
};

} // namespace corvanta
