#include "Support/screen/ObservedScreen.hpp"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <poll.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace corvanta {

ObservedScreen::ObservedScreen()
    : display_(XOpenDisplay(nullptr)), root_(display_ != nullptr ? DefaultRootWindow(display_) : 0) {
    if (display_ == nullptr)
        throw std::runtime_error("no display");
    int ignored = 0;
    if (!XDamageQueryExtension(display_, &damageEvent_, &ignored) ||
        !XTestQueryExtension(display_, &ignored, &ignored, &ignored, &ignored))
        throw std::runtime_error("the display lacks the extensions DAMAGE and XTEST");
    if (DefaultDepth(display_, DefaultScreen(display_)) != 24)
        throw std::runtime_error("the display is not 24 bit deep");
    damage_ = XDamageCreate(display_, root_, XDamageReportRawRectangles);
}

ObservedScreen::~ObservedScreen() {
    XCloseDisplay(display_);
}

std::optional<Window> ObservedScreen::firstWindow() {
    return firstIn("_NET_CLIENT_LIST");
}

std::optional<Window> ObservedScreen::activeWindow() {
    return firstIn("_NET_ACTIVE_WINDOW");
}

/// The first window in a property that the window manager keeps.
std::optional<Window> ObservedScreen::firstIn(const char* name) {
    const Atom property = XInternAtom(display_, name, False);
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(display_, root_, property, 0, 1, False, XA_WINDOW, &type, &format, &count, &rest,
                       &data);
    const std::unique_ptr<unsigned char, decltype(&XFree)> owner(data, XFree);
    if (data == nullptr || count == 0)
        return std::nullopt;
    Window window = 0;
    std::copy_n(data, sizeof window, reinterpret_cast<unsigned char*>(&window));
    // The window manager names window 0 when none is active.
    return window == 0 ? std::nullopt : std::optional(window);
}

Rectangle ObservedScreen::area(Window window) {
    Window root = 0;
    Window child = 0;
    Rectangle area;
    unsigned int width = 0;
    unsigned int height = 0;
    unsigned int ignored = 0;
    XGetGeometry(display_, window, &root, &area.x, &area.y, &width, &height, &ignored, &ignored);
    XTranslateCoordinates(display_, window, root, 0, 0, &area.x, &area.y, &child);
    area.width = static_cast<int>(width);
    area.height = static_cast<int>(height);
    return area;
}

void ObservedScreen::place(Window window, int width, int height) {
    XMoveResizeWindow(display_, window, 0, 0, static_cast<unsigned int>(width),
                      static_cast<unsigned int>(height));
    XFlush(display_);
}

Picture ObservedScreen::capture(const Rectangle& area) {
    const Rectangle screen{0, 0, DisplayWidth(display_, DefaultScreen(display_)),
                           DisplayHeight(display_, DefaultScreen(display_))};
    Picture picture{.area = area.intersection(screen), .pixels = {}};
    if (picture.area.isEmpty())
        return {};
    const auto width = static_cast<std::size_t>(picture.area.width);
    const auto height = static_cast<std::size_t>(picture.area.height);
    XImage* image =
        XGetImage(display_, root_, picture.area.x, picture.area.y, static_cast<unsigned int>(width),
                  static_cast<unsigned int>(height), AllPlanes, ZPixmap);
    if (image == nullptr)
        throw std::runtime_error("the screen cannot be read");
    picture.pixels.reserve(width * height);
    for (std::size_t row = 0; row < height; ++row) {
        const char* bytes = image->data + row * static_cast<std::size_t>(image->bytes_per_line);
        std::vector<std::uint32_t> line(width);
        std::copy_n(bytes, width * sizeof(std::uint32_t), reinterpret_cast<char*>(line.data()));
        for (const std::uint32_t pixel : line)
            picture.pixels.push_back(pixel & 0xffffffU);
    }
    XDestroyImage(image);
    return picture;
}

std::optional<Drawing> ObservedScreen::nextDamage(Clock::time_point deadline) {
    for (;;) {
        while (XPending(display_) > 0) {
            const Clock::time_point now = Clock::now();
            XEvent event;
            XNextEvent(display_, &event);
            if (event.type != damageEvent_ + XDamageNotify)
                continue;
            const XRectangle& area = reinterpret_cast<const XDamageNotifyEvent&>(event).area;
            return Drawing{.area = {area.x, area.y, area.width, area.height}, .time = now};
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0)
            return std::nullopt;
        pollfd connection{.fd = ConnectionNumber(display_), .events = POLLIN, .revents = 0};
        ::poll(&connection, 1, static_cast<int>(left));
    }
}

void ObservedScreen::forgetDamage() {
    XSync(display_, False);
    while (nextDamage({})) {
    }
}

bool ObservedScreen::waitForSilence(Clock::duration silence, Clock::duration limit) {
    const Clock::time_point end = Clock::now() + limit;
    while (Clock::now() < end) {
        if (!nextDamage(Clock::now() + silence))
            return true;
    }
    return false;
}

void ObservedScreen::pressKey(KeySym key) {
    sendKey(key, true);
}

void ObservedScreen::releaseKey(KeySym key) {
    sendKey(key, false);
}

void ObservedScreen::sendKey(KeySym key, bool isDown) {
    XTestFakeKeyEvent(display_, XKeysymToKeycode(display_, key), isDown ? True : False, CurrentTime);
    XFlush(display_);
}

void ObservedScreen::click(int x, int y) {
    XTestFakeMotionEvent(display_, -1, x, y, CurrentTime);
    XTestFakeButtonEvent(display_, 1, True, CurrentTime);
    XTestFakeButtonEvent(display_, 1, False, CurrentTime);
    XFlush(display_);
}

} // namespace corvanta
