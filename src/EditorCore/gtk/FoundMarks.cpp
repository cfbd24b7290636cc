#include "EditorCore/gtk/FoundMarks.hpp"

namespace corvanta {

namespace {

/// Seen on light and on dark paper.
const Gdk::RGBA markColor(0.96F, 0.76F, 0.07F, 0.45F);

} // namespace

FoundMarks::FoundMarks(IndentingTextView& textView, FindSession& session)
    : textView_(textView), session_(session), tag_(textView.get_buffer()->create_tag()) {
    tag_->property_background_rgba() = markColor;
    sessionChanged_ = Subscription(session.signalChanged().connect([this] { mark(); }));
    adjustmentReplaced_ =
        Subscription(textView.property_vadjustment().signal_changed().connect([this] { watchScrolling(); }));
    watchScrolling();
}

void FoundMarks::watchScrolling() {
    const Glib::RefPtr<Gtk::Adjustment> adjustment = textView_.get_vadjustment();
    if (!adjustment)
        return;
    scrolled_ = Subscription(adjustment->signal_value_changed().connect([this] { mark(); }));
    resized_ = Subscription(adjustment->property_page_size().signal_changed().connect([this] { mark(); }));
}

void FoundMarks::mark() {
    if (!hasMarks_ && session_.matches().empty())
        return;
    const Glib::RefPtr<Gtk::TextBuffer> buffer = textView_.get_buffer();
    buffer->remove_tag(tag_, buffer->begin(), buffer->end());
    Gdk::Rectangle visible;
    textView_.get_visible_rect(visible);
    Gtk::TextBuffer::iterator first;
    Gtk::TextBuffer::iterator last;
    textView_.get_iter_at_location(first, visible.get_x(), visible.get_y());
    textView_.get_iter_at_location(last, visible.get_x() + visible.get_width(),
                                   visible.get_y() + visible.get_height());
    last.forward_to_line_end();
    GtkTextStorage& storage = textView_.textStorage();
    const auto place = [&storage](std::int64_t byte) {
        return storage.iterator(storage.liveText().atByte(byte));
    };
    const std::vector<FindMatch> matches =
        session_.matches(storage.position(first).byte, storage.position(last).byte);
    for (const FindMatch& match : matches)
        buffer->apply_tag(tag_, place(match.first), place(match.last));
    hasMarks_ = !matches.empty();
}

} // namespace corvanta
