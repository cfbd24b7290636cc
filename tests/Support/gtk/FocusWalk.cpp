#include "Support/gtk/FocusWalk.hpp"

#include "Support/gtk/MainLoop.hpp"

#include <gtest/gtest.h>

namespace corvanta {

namespace {

/// No window has as many controls.
constexpr int mostStops = 40;

} // namespace

FocusWalk::FocusWalk(Gtk::Window& window, Keyboard& keyboard) : window_(window), keyboard_(keyboard) {
    // A new window may move the focus by itself: what counts is that the key has arrived.
    keys_->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys_->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) {
            hasArrived_ = hasArrived_ || key == GDK_KEY_Tab || key == GDK_KEY_ISO_Left_Tab;
            return false;
        },
        false);
    window_.add_controller(keys_);
}

FocusWalk::~FocusWalk() {
    window_.remove_controller(keys_);
}

GtkWidget* FocusWalk::press(std::string_view keys) {
    hasArrived_ = false;
    keyboard_.press(keys);
    EXPECT_TRUE(waitUntil([this] { return hasArrived_; })) << keys;
    return gtk_window_get_focus(window_.gobj());
}

GtkWidget* FocusWalk::tabTo(const std::function<bool(GtkWidget*)>& isWanted) {
    for (int stop = 0; stop < mostStops; ++stop) {
        for (GtkWidget* place = press("Tab"); place != nullptr; place = gtk_widget_get_parent(place)) {
            if (isWanted(place))
                return place;
        }
    }
    return nullptr;
}

GtkWidget* FocusWalk::tabTo(GType type) {
    return tabTo([type](GtkWidget* widget) { return G_TYPE_CHECK_INSTANCE_TYPE(widget, type); });
}

} // namespace corvanta
