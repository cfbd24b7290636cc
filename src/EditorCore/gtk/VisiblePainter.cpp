#include "EditorCore/gtk/VisiblePainter.hpp"

#include <glibmm/main.h>

#include <chrono>

namespace corvanta {

namespace {

/// How long one slice of idle painting may take: short beside a frame, so that no key waits for it.
constexpr auto sliceTime = std::chrono::microseconds(1500);

/// Height of what is painted between two looks at the clock, in pixels.
constexpr int sliceHeight = 120;

/// The most bytes that a line may have to be painted as a whole. Tags on one long line cost quadratic time.
constexpr int longLine = 8192;

} // namespace

VisiblePainter::VisiblePainter(Gtk::TextView& view, GtkTextStorage& storage)
    : view_(view), storage_(storage) {
    runsChanged_ = Subscription(storage.signalRunsChanged().connect([this] { paintBeforeNextFrame(); }));
    adjustmentReplaced_ =
        Subscription(view.property_vadjustment().signal_changed().connect([this] { watchScrolling(); }));
    watchScrolling();
}

VisiblePainter::~VisiblePainter() {
    if (tick_ != 0)
        view_.remove_tick_callback(tick_);
}

void VisiblePainter::watchScrolling() {
    const Glib::RefPtr<Gtk::Adjustment> adjustment = view_.get_vadjustment();
    if (!adjustment)
        return;
    scrolled_ = Subscription(adjustment->signal_value_changed().connect([this] { paintVisible(); }));
    resized_ = Subscription(
        adjustment->property_page_size().signal_changed().connect([this] { paintBeforeNextFrame(); }));
}

void VisiblePainter::paintBeforeNextFrame() {
    slices_ = Subscription();
    if (tick_ != 0)
        return;
    tick_ = view_.add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) {
        tick_ = 0;
        paintVisible();
        return false;
    });
}

void VisiblePainter::paintVisible() {
    Gdk::Rectangle visible;
    view_.get_visible_rect(visible);
    if (visible.get_height() <= 0)
        return;
    paintLines(visible.get_y(), visible.get_height());
    nextY_ = visible.get_y() - visible.get_height();
    lastY_ = visible.get_y() + 2 * visible.get_height();
    paintNeighbourhoodLater();
}

void VisiblePainter::paintNeighbourhoodLater() {
    slices_ = Subscription(Glib::signal_idle().connect([this] { return paintSlice(); }, Glib::PRIORITY_LOW));
}

bool VisiblePainter::paintSlice() {
    const auto start = std::chrono::steady_clock::now();
    while (nextY_ < lastY_) {
        paintLines(nextY_, sliceHeight);
        nextY_ += sliceHeight;
        if (std::chrono::steady_clock::now() - start > sliceTime)
            return true;
    }
    return false;
}

void VisiblePainter::paintLines(int y, int height) {
    Gdk::Rectangle visible;
    view_.get_visible_rect(visible);
    Gtk::TextBuffer::iterator first;
    Gtk::TextBuffer::iterator last;
    view_.get_iter_at_location(first, visible.get_x(), y);
    view_.get_iter_at_location(last, visible.get_x() + visible.get_width(), y + height);
    if (first.get_bytes_in_line() <= longLine)
        first.set_line_offset(0);
    if (last.get_bytes_in_line() <= longLine)
        last.forward_to_line_end();
    storage_.paint(first, last);
}

} // namespace corvanta
