#pragma once

#include "EditorCore/gtk/GtkTextStorage.hpp"
#include "Platform/Subscription.hpp"

#include <gtkmm/adjustment.h>
#include <gtkmm/textview.h>

namespace corvanta {

/// Keeps the colours of a text view right where somebody looks: what is on screen before the next frame, and
/// its neighbourhood in slices of idle time, so that scrolling finds it painted.
class VisiblePainter {
public:
    /// `view` shows the buffer of `storage`; both outlive the painter.
    VisiblePainter(Gtk::TextView& view, GtkTextStorage& storage);
    ~VisiblePainter();

    VisiblePainter(const VisiblePainter&) = delete;
    VisiblePainter& operator=(const VisiblePainter&) = delete;

    /// Paints what is on screen now.
    void paintVisible();

private:
    /// Text between two places of the buffer.
    struct Stretch {
        Gtk::TextBuffer::iterator first;
        Gtk::TextBuffer::iterator last;
    };

    static Stretch extended(Stretch stretch, int count);

    void paintBeforeNextFrame();
    void watchScrolling();
    void paintNeighbourhoodLater();
    bool paintSlice();
    Stretch stretchAt(int y, int height) const;
    void paintSeen(const Stretch& seen);
    bool isBareFarFrom(const Stretch& seen) const;
    void stripAround(const Stretch& painted);
    void paintUnlessLong(const Stretch& stretch);

    Gtk::TextView& view_;
    GtkTextStorage& storage_;
    guint tick_ = 0;

    /// The stretch of the neighbourhood still to be painted, in the view's buffer coordinates.
    int nextY_ = 0;
    int lastY_ = 0;

    Subscription runsChanged_;
    Subscription adjustmentReplaced_;
    Subscription scrolled_;
    Subscription resized_;
    Subscription slices_;
};

} // namespace corvanta
