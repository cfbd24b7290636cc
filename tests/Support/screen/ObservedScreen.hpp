#pragma once

#include "Support/screen/Picture.hpp"
#include "Support/screen/Rectangle.hpp"

#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>

#include <chrono>
#include <optional>

namespace corvanta {

/// Something was drawn on the screen.
struct Drawing {
    Rectangle area;
    /// When this was heard of.
    std::chrono::steady_clock::time_point time;
};

/// The X server's screen, seen and acted on as a person would: pixels, keys and clicks. The screen has to be
/// 24 bit deep and to belong to the measurement alone, for everything that is drawn anywhere counts.
class ObservedScreen {
public:
    using Clock = std::chrono::steady_clock;

    /// Connects to $DISPLAY. Throws when that has not what a measurement needs.
    ObservedScreen();
    ObservedScreen(const ObservedScreen&) = delete;
    ObservedScreen& operator=(const ObservedScreen&) = delete;
    ~ObservedScreen();

    /// The first window that the window manager lists, or nothing.
    std::optional<Window> firstWindow();

    /// The window that has the keyboard, or nothing.
    std::optional<Window> activeWindow();

    /// Where the inside of a window is on the screen.
    Rectangle area(Window window);

    /// Moves a window to the upper left corner and asks for a size in pixels.
    void place(Window window, int width, int height);

    Picture capture(const Rectangle& area);

    /// Waits for something to be drawn, at most until `deadline`; one in the past asks without waiting.
    std::optional<Drawing> nextDamage(Clock::time_point deadline);

    /// Forgets what was drawn until now.
    void forgetDamage();

    /// Returns when nothing was drawn for `silence`; false when that did not happen within `limit`.
    bool waitForSilence(Clock::duration silence, Clock::duration limit);

    /// A key goes down or up. The key has to be on the keyboard without a modifier.
    void pressKey(KeySym key);
    void releaseKey(KeySym key);

    void click(int x, int y);

private:
    std::optional<Window> firstIn(const char* name);
    void sendKey(KeySym key, bool isDown);

    Display* display_;
    Window root_;
    int damageEvent_ = 0;
    Damage damage_ = 0;
};

} // namespace corvanta
