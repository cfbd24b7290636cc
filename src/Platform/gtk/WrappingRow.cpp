#include "Platform/gtk/WrappingRow.hpp"

#include <algorithm>

namespace corvanta {

WrappingRow::WrappingRow(Gtk::Widget& first, Gtk::Widget& second, int spacing)
    : Glib::ObjectBase("CorvantaWrappingRow"), first_(first), second_(second), spacing_(spacing) {
    first_.set_parent(*this);
    second_.set_parent(*this);
}

WrappingRow::~WrappingRow() {
    first_.unparent();
    second_.unparent();
}

Gtk::SizeRequestMode WrappingRow::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::HEIGHT_FOR_WIDTH;
}

WrappingRow::Size WrappingRow::widthOf(const Gtk::Widget& widget) {
    Size size;
    int ignored = 0;
    if (widget.get_visible())
        widget.measure(Gtk::Orientation::HORIZONTAL, -1, size.minimum, size.natural, ignored, ignored);
    return size;
}

WrappingRow::Size WrappingRow::heightOf(const Gtk::Widget& widget, int width) {
    Size size;
    int ignored = 0;
    if (widget.get_visible())
        widget.measure(Gtk::Orientation::VERTICAL, width, size.minimum, size.natural, ignored, ignored);
    return size;
}

bool WrappingRow::fitsBesideEachOther(int width) const {
    return !second_.get_visible() || width >= widthOf(first_).minimum + spacing_ + widthOf(second_).minimum;
}

/// Beside the first one, with the space between them.
int WrappingRow::widthForSecond(int width) const {
    if (!second_.get_visible())
        return 0;
    const Size second = widthOf(second_);
    return spacing_ + std::clamp(width - spacing_ - widthOf(first_).minimum, second.minimum, second.natural);
}

void WrappingRow::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                                int& minimumBaseline, int& naturalBaseline) const {
    minimumBaseline = -1;
    naturalBaseline = -1;
    const Size first = widthOf(first_);
    const Size second = widthOf(second_);
    if (orientation == Gtk::Orientation::HORIZONTAL) {
        minimum = std::max(first.minimum, second.minimum);
        natural = first.natural + spacing_ + second.natural;
        return;
    }
    // Asked without a width, what is needed at most is the answer.
    const int width = forSize < 0 ? std::max(first.minimum, second.minimum) : forSize;
    if (fitsBesideEachOther(width)) {
        const int forSecond = widthForSecond(width);
        const Size left = heightOf(first_, width - forSecond);
        const Size right = heightOf(second_, forSecond - spacing_);
        minimum = std::max(left.minimum, right.minimum);
        natural = std::max(left.natural, right.natural);
    } else {
        const Size above = heightOf(first_, width);
        const Size below = heightOf(second_, width);
        minimum = above.minimum + spacing_ + below.minimum;
        natural = above.natural + spacing_ + below.natural;
    }
}

void WrappingRow::size_allocate_vfunc(int width, int height, int baseline) {
    if (fitsBesideEachOther(width)) {
        const int forSecond = widthForSecond(width);
        first_.size_allocate({0, 0, width - forSecond, height}, baseline);
        if (forSecond > 0)
            second_.size_allocate({width - forSecond + spacing_, 0, forSecond - spacing_, height}, baseline);
    } else {
        const int above = heightOf(first_, width).minimum;
        first_.size_allocate({0, 0, width, above}, baseline);
        second_.size_allocate({0, above + spacing_, width, height - above - spacing_}, baseline);
    }
}

} // namespace corvanta
