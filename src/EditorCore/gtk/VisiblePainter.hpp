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
    void paintBeforeNextFrame();
    void watchScrolling();
    void paintNeighbourhoodLater();
    bool paintSlice();
    Gtk::TextBuffer::iterator lineAt(int y) const;
    void paintLines(int y, int height);

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
