#pragma once

#include <gtkmm/window.h>

namespace corvanta {

/// A window that shows one widget and has the keyboard's focus.
class TestWindow {
public:
    /// Returns once the window is active. `child` outlives it.
    explicit TestWindow(Gtk::Widget& child, int width = 700, int height = 500);
    ~TestWindow();

    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    Gtk::Window& window() { return window_; }

private:
    Gtk::Window window_;
};

} // namespace corvanta
