#pragma once

#include <gtkmm/widget.h>

#include <cstdint>

namespace corvanta {

struct PixelColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const PixelColor&, const PixelColor&) = default;
};

/// The colour that is on the screen at a place of `widget`, in its own coordinates.
PixelColor pixelOnScreen(Gtk::Widget& widget, int x, int y);

/// The same place in the coordinates of the screen.
struct ScreenPlace {
    int x = 0;
    int y = 0;
};
ScreenPlace placeOnScreen(Gtk::Widget& widget, int x, int y);

/// Moves the pointer to a place of `widget`, in its own coordinates.
void movePointer(Gtk::Widget& widget, int x, int y);

/// Presses or releases a button, the first one being 1, wherever the pointer is on the screen of `widget`.
void pressPointer(Gtk::Widget& widget, unsigned button = 1);
void releasePointer(Gtk::Widget& widget, unsigned button = 1);

/// Moves the pointer there and clicks, as a user would.
void clickOnScreen(Gtk::Widget& widget, int x, int y);

} // namespace corvanta
