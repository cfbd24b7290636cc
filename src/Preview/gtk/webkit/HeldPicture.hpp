#pragma once

#include "Platform/gtk/GObjectReference.hpp"

#include <gtk/gtk.h>
#include <gtkmm/snapshot.h>
#include <gtkmm/widget.h>

namespace corvanta {

/// A picture of a widget as it was on the screen, to be shown instead while the widget's own content is not
/// fit to be seen.
class HeldPicture {
public:
    /// Keeps what `widget` drew last, which is `drawn`. Nothing is kept when it is not on the screen.
    void hold(Gtk::Widget& widget, GskRenderNode* drawn);

    void release();

    bool isHeld() const { return static_cast<bool>(texture_); }

    /// Draws the picture, which is held, over an area of `width` times `height` pixels.
    void draw(Gtk::Snapshot& snapshot, int width, int height) const;

private:
    GObjectReference<GdkTexture> texture_;
};

} // namespace corvanta
