#include "EditorCore/gtk/VisiblePainter.hpp"

#include <glibmm/main.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>

namespace corvanta {

namespace {

/// How long one slice of idle painting may take: short beside a frame, so that no key waits for it.
constexpr auto sliceTime = std::chrono::microseconds(1500);

/// Height of what is painted between two looks at the clock, in pixels.
constexpr int sliceHeight = 120;

/// The most bytes that a line may have to be painted as a whole. Tags on one long line cost quadratic time,
/// and each painting has all of it laid out anew.
constexpr int longLine = 8192;

/// How many characters of a long line are painted beyond those that are seen, so that not every key that
/// moves the line's pieces up or down needs another painting.
constexpr int sparePart = 400;

/// The most code units that are painted in a frame where a line is long. A view that does not know its size
/// yet may claim to show all of the line, and painting all of a megabyte takes minutes.
constexpr std::int64_t mostOfALongLine = 8192;

bool isLong(const Gtk::TextBuffer::iterator& place) {
    return place.get_bytes_in_line() > longLine;
}

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
        if (!isLong(lineAt(nextY_)))
            paintLines(nextY_, sliceHeight);
        nextY_ += sliceHeight;
        if (std::chrono::steady_clock::now() - start > sliceTime)
            return true;
    }
    return false;
}

Gtk::TextBuffer::iterator VisiblePainter::lineAt(int y) const {
    Gtk::TextBuffer::iterator line;
    int top = 0;
    view_.get_line_at_y(line, y, top);
    return line;
}

void VisiblePainter::paintLines(int y, int height) {
    Gdk::Rectangle visible;
    view_.get_visible_rect(visible);
    Gtk::TextBuffer::iterator first;
    Gtk::TextBuffer::iterator last;
    view_.get_iter_at_location(first, visible.get_x(), y);
    view_.get_iter_at_location(last, visible.get_x() + visible.get_width(), y + height);
    if (isLong(first) && isLong(last) && storage_.isPainted(first, last))
        return;
    if (isLong(first))
        first.backward_chars(std::min(sparePart, first.get_line_offset()));
    else
        first.set_line_offset(0);
    if (isLong(last))
        last.forward_chars(std::min(sparePart, last.get_chars_in_line() - last.get_line_offset()));
    else
        last.forward_to_line_end();
    const bool isCheap = !isLong(first) && !isLong(last);
    if (!storage_.paint(first, last, isCheap ? std::numeric_limits<std::int64_t>::max() : mostOfALongLine))
        paintBeforeNextFrame();
}

} // namespace corvanta
