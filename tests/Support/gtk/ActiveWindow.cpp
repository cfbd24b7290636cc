#include "Support/gtk/ActiveWindow.hpp"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <cstring>
#include <memory>
#include <stdexcept>

namespace corvanta {

namespace {

/// The bytes of a window's property; its 32 bit values are longs, as Xlib gives them.
std::string property(Display* display, Window window, const char* name) {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long remaining = 0;
    unsigned char* data = nullptr;
    const Atom atom = XInternAtom(display, name, False);
    if (XGetWindowProperty(display, window, atom, 0, 1'024, False, AnyPropertyType, &type, &format, &count,
                           &remaining, &data) != Success ||
        data == nullptr)
        return {};
    const std::unique_ptr<unsigned char, decltype(&XFree)> owner(data, &XFree);
    const std::size_t size = format == 32 ? sizeof(long) : 1;
    return {reinterpret_cast<const char*>(data), count * size};
}

Window parentOf(Display* display, Window window) {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, window, &root, &parent, &children, &count) == 0)
        return 0;
    if (children != nullptr)
        XFree(children);
    return parent;
}

using OwnedDisplay = std::unique_ptr<Display, decltype(&XCloseDisplay)>;

OwnedDisplay openDisplay() {
    OwnedDisplay display(XOpenDisplay(nullptr), &XCloseDisplay);
    if (!display)
        throw std::runtime_error("this test needs a display");
    return display;
}

/// The window in front, or 0.
Window activeWindow(Display* display) {
    const std::string active = property(display, DefaultRootWindow(display), "_NET_ACTIVE_WINDOW");
    Window window = 0;
    if (active.size() >= sizeof window)
        std::memcpy(&window, active.data(), sizeof window);
    return window;
}

/// A window may be gone between the two questions.
int ignoreError(Display*, XErrorEvent*) {
    return 0;
}

} // namespace

std::optional<std::string> activeWindowTitle() {
    const OwnedDisplay display = openDisplay();
    const auto previous = XSetErrorHandler(ignoreError);
    const Window window = activeWindow(display.get());
    Window focused = 0;
    int revert = 0;
    XGetInputFocus(display.get(), &focused, &revert);
    std::optional<std::string> title;
    // The window manager announces a window a moment before it gives it the keyboard, and the toolkit then
    // takes it with a window inside.
    if (window != 0 && parentOf(display.get(), focused) == window)
        title = property(display.get(), window, "_NET_WM_NAME");
    XSync(display.get(), False);
    XSetErrorHandler(previous);
    return title;
}

void takeDisplayFromActiveWindow() {
    const OwnedDisplay display = openDisplay();
    if (const Window window = activeWindow(display.get()); window != 0)
        XKillClient(display.get(), window);
}

} // namespace corvanta
