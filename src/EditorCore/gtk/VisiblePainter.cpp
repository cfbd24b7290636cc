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
constexpr std::int64_t all = std::numeric_limits<std::int64_t>::max();

bool isLong(const Gtk::TextBuffer::iterator& place) {
    return place.get_bytes_in_line() > longLine;
}

Gtk::TextBuffer::iterator startOfLine(Gtk::TextBuffer::iterator place) {
    place.set_line_offset(0);
    return place;
}

Gtk::TextBuffer::iterator endOfLine(Gtk::TextBuffer::iterator place) {
    if (!place.ends_line())
        place.forward_to_line_end();
    return place;
}

} // namespace

/// `stretch` with whole lines at its ends or, of long ones, `count` characters more.
VisiblePainter::Stretch VisiblePainter::extended(Stretch stretch, int count) {
    if (isLong(stretch.first))
        stretch.first.backward_chars(std::min(count, stretch.first.get_line_offset()));
    else
        stretch.first.set_line_offset(0);
    if (isLong(stretch.last)) {
        stretch.last.forward_chars(
            std::min(count, stretch.last.get_chars_in_line() - stretch.last.get_line_offset()));
    } else {
        stretch.last = endOfLine(stretch.last);
    }
    return stretch;
}

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
    paintSeen(stretchAt(visible.get_y(), visible.get_height()));
    nextY_ = visible.get_y() - visible.get_height();
    lastY_ = visible.get_y() + 2 * visible.get_height();
    paintNeighbourhoodLater();
}

VisiblePainter::Stretch VisiblePainter::stretchAt(int y, int height) const {
    Gdk::Rectangle visible;
    view_.get_visible_rect(visible);
    Stretch stretch;
    view_.get_iter_at_location(stretch.first, visible.get_x(), y);
    view_.get_iter_at_location(stretch.last, visible.get_x() + visible.get_width(), y + height);
    return stretch;
}

void VisiblePainter::paintSeen(const Stretch& seen) {
    const bool isInLongLines = isLong(seen.first) && isLong(seen.last);
    if (isInLongLines && storage_.isPainted(seen.first, seen.last) && isBareFarFrom(seen))
        return;
    const Stretch painted = extended(seen, sparePart);
    stripAround(painted);
    const bool isCheap = !isLong(seen.first) && !isLong(seen.last);
    if (!storage_.paint(painted.first, painted.last, isCheap ? all : mostOfALongLine))
        paintBeforeNextFrame();
}

bool VisiblePainter::isBareFarFrom(const Stretch& seen) const {
    const Stretch near = extended(seen, 2 * sparePart);
    return storage_.isBare(startOfLine(near.first), near.first) &&
           storage_.isBare(near.last, endOfLine(near.last));
}

/// Each piece of a line that the view wraps goes through all colours of the line before it: those that nobody
/// sees would only slow down every key.
void VisiblePainter::stripAround(const Stretch& painted) {
    if (isLong(painted.first))
        storage_.strip(startOfLine(painted.first), painted.first);
    if (isLong(painted.last))
        storage_.strip(painted.last, endOfLine(painted.last));
}

void VisiblePainter::paintNeighbourhoodLater() {
    slices_ = Subscription(Glib::signal_idle().connect([this] { return paintSlice(); }, Glib::PRIORITY_LOW));
}

bool VisiblePainter::paintSlice() {
    const auto start = std::chrono::steady_clock::now();
    while (nextY_ < lastY_) {
        paintUnlessLong(stretchAt(nextY_, sliceHeight));
        nextY_ += sliceHeight;
        if (std::chrono::steady_clock::now() - start > sliceTime)
            return true;
    }
    return false;
}

void VisiblePainter::paintUnlessLong(const Stretch& stretch) {
    if (isLong(stretch.first))
        return;
    const Gtk::TextBuffer::iterator last =
        isLong(stretch.last) ? startOfLine(stretch.last) : endOfLine(stretch.last);
    storage_.paint(startOfLine(stretch.first), last, all);
}

} // namespace corvanta
