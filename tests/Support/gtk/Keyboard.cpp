#include "Support/gtk/Keyboard.hpp"

#include <X11/XKBlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <gdk/gdk.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

namespace {

KeySym symbolNamed(const std::string& name) {
    if (name == "Control")
        return XK_Control_L;
    if (name == "Shift")
        return XK_Shift_L;
    if (name == "Alt")
        return XK_Alt_L;
    // The characters of ASCII are their own symbols.
    const KeySym symbol =
        name.size() == 1 ? static_cast<KeySym>(name.front()) : XStringToKeysym(name.c_str());
    if (symbol == NoSymbol)
        throw std::invalid_argument("no key is named " + name);
    return symbol;
}

} // namespace

void Keyboard::CloseDisplay::operator()(_XDisplay* display) const {
    XCloseDisplay(display);
}

Keyboard::Keyboard() : display_(XOpenDisplay(nullptr)) {
    if (!display_)
        throw std::runtime_error("this test needs a display");
}

void Keyboard::send(KeySym symbol, bool down) {
    const KeyCode code = XKeysymToKeycode(display_.get(), symbol);
    if (code == 0)
        throw std::invalid_argument("the keyboard has no such key");
    XTestFakeKeyEvent(display_.get(), code, down ? True : False, CurrentTime);
    XFlush(display_.get());
}

void Keyboard::press(std::string_view keys) {
    std::vector<KeySym> symbols;
    for (std::size_t start = 0; start <= keys.size();) {
        const std::size_t end = std::min(keys.find('+', start), keys.size());
        symbols.push_back(symbolNamed(std::string(keys.substr(start, end - start))));
        start = end + 1;
    }
    press(std::move(symbols));
}

void Keyboard::press(std::vector<KeySym> symbols) {
    // A hand is slower than what the last key brings about between the program and the display server.
    if (GdkDisplay* display = gdk_display_get_default())
        gdk_display_sync(display);
    const KeyCode code = XKeysymToKeycode(display_.get(), symbols.back());
    const bool shifted = XkbKeycodeToKeysym(display_.get(), code, 0, 0) != symbols.back() &&
                         XkbKeycodeToKeysym(display_.get(), code, 0, 1) == symbols.back();
    if (shifted)
        symbols.insert(symbols.begin(), XK_Shift_L);
    for (const KeySym symbol : symbols)
        send(symbol, true);
    for (auto symbol = symbols.rbegin(); symbol != symbols.rend(); ++symbol)
        send(*symbol, false);
}

void Keyboard::type(std::string_view text) {
    for (const char character : text)
        press(std::vector<KeySym>{character == '\n' ? XK_Return : symbolNamed({character})});
}

} // namespace corvanta
