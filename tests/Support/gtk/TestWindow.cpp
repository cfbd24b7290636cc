#include "Support/gtk/TestWindow.hpp"

#include "Support/gtk/MainLoop.hpp"

#include <gtest/gtest.h>

namespace corvanta {

TestWindow::TestWindow(Gtk::Widget& child, int width, int height) {
    window_.set_default_size(width, height);
    window_.set_child(child);
    window_.present();
    child.grab_focus();
    EXPECT_TRUE(waitUntil([this] { return window_.is_active(); })) << "the window was not activated";
}

TestWindow::~TestWindow() {
    window_.unset_child();
}

} // namespace corvanta
