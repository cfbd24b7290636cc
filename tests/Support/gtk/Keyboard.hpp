#pragma once

#include <memory>
#include <string_view>
#include <vector>

/// Xlib's display. Its own headers define words like None and are kept out of the tests.
struct _XDisplay;

namespace corvanta {

/// Presses keys as a user would: through the display server, which sends them to the window that has the
/// focus.
class Keyboard {
public:
    Keyboard();

    /// Presses and releases one key, named as in X11's list of key symbols ("a", "Return", "adiaeresis"),
    /// after the modifiers before it ("Control+s").
    void press(std::string_view keys);

    /// Types `text`, printable characters of ASCII and line feeds.
    void type(std::string_view text);

private:
    struct CloseDisplay {
        void operator()(_XDisplay* display) const;
    };

    void press(std::vector<unsigned long> symbols);
    void send(unsigned long symbol, bool down);

    std::unique_ptr<_XDisplay, CloseDisplay> display_;
};

} // namespace corvanta
