#include "Support/gtk/WindowPixels.hpp"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <gdk/x11/gdkx.h>
#include <gtk/gtk.h>

#include <stdexcept>

namespace corvanta {

namespace {

struct SurfacePlace {
    Display* display;
    Window window;
    int x;
    int y;
};

SurfacePlace placeOnSurface(Gtk::Widget& widget, int x, int y) {
    GtkNative* native = gtk_widget_get_native(widget.gobj());
    double inNativeX = 0;
    double inNativeY = 0;
    double offsetX = 0;
    double offsetY = 0;
    gtk_widget_translate_coordinates(widget.gobj(), GTK_WIDGET(native), x, y, &inNativeX, &inNativeY);
    gtk_native_get_surface_transform(native, &offsetX, &offsetY);
    GdkSurface* surface = gtk_native_get_surface(native);
    return {GDK_SURFACE_XDISPLAY(surface), GDK_SURFACE_XID(surface), static_cast<int>(inNativeX + offsetX),
            static_cast<int>(inNativeY + offsetY)};
}

Display* displayOf(Gtk::Widget& widget) {
    return GDK_DISPLAY_XDISPLAY(gtk_widget_get_display(widget.gobj()));
}

} // namespace

PixelColor pixelOnScreen(Gtk::Widget& widget, int x, int y) {
    const SurfacePlace place = placeOnSurface(widget, x, y);
    XImage* image = XGetImage(place.display, place.window, place.x, place.y, 1, 1, AllPlanes, ZPixmap);
    if (image == nullptr)
        throw std::runtime_error("the window is not on the screen");
    const unsigned long pixel = XGetPixel(image, 0, 0);
    XDestroyImage(image);
    return {static_cast<std::uint8_t>(pixel >> 16U), static_cast<std::uint8_t>(pixel >> 8U),
            static_cast<std::uint8_t>(pixel)};
}

ScreenPlace placeOnScreen(Gtk::Widget& widget, int x, int y) {
    const SurfacePlace place = placeOnSurface(widget, x, y);
    ScreenPlace onScreen;
    Window child = 0;
    XTranslateCoordinates(place.display, place.window, DefaultRootWindow(place.display), place.x, place.y,
                          &onScreen.x, &onScreen.y, &child);
    return onScreen;
}

void movePointer(Gtk::Widget& widget, int x, int y) {
    const ScreenPlace place = placeOnScreen(widget, x, y);
    Display* display = displayOf(widget);
    XTestFakeMotionEvent(display, -1, place.x, place.y, CurrentTime);
    XFlush(display);
}

void pressPointer(Gtk::Widget& widget, unsigned button) {
    XTestFakeButtonEvent(displayOf(widget), button, True, CurrentTime);
    XFlush(displayOf(widget));
}

void releasePointer(Gtk::Widget& widget, unsigned button) {
    XTestFakeButtonEvent(displayOf(widget), button, False, CurrentTime);
    XFlush(displayOf(widget));
}

void clickOnScreen(Gtk::Widget& widget, int x, int y) {
    movePointer(widget, x, y);
    pressPointer(widget);
    releasePointer(widget);
}

} // namespace corvanta
