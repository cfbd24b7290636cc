#include "EditorCore/gtk/GtkTextStorage.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace corvanta {

namespace {

Gdk::RGBA rgba(const Color& color) {
    return {static_cast<float>(color.red) / 255.0F, static_cast<float>(color.green) / 255.0F,
            static_cast<float>(color.blue) / 255.0F};
}

/// How many bytes of `text` to begin with: all of it unless that takes longer than a frame, or else far more
/// than a window shows, up to the end of a line.
std::size_t startLength(std::string_view text) {
    constexpr std::size_t enough = 65536;
    if (text.size() <= 4 * enough)
        return text.size();
    const std::size_t lineEnd = text.substr(0, 2 * enough).find('\n', enough);
    return lineEnd == std::string_view::npos ? text.size() : lineEnd + 1;
}

} // namespace

GtkTextStorage::GtkTextStorage(Glib::RefPtr<Gtk::TextBuffer> buffer, SharedText text, UndoHistory& history)
    : buffer_(std::move(buffer)), text_(std::move(text)), history_(history) {
    fillBuffer();
    for (Paint& paint : paints_)
        paint.tag = buffer_->create_tag();
    fence_ = buffer_->create_tag();

    applyBase();

    // Before the buffer's own handlers, while the places still mean the text before the change.
    insertion_ = Subscription(buffer_->signal_insert().connect(
        [this](const Gtk::TextBuffer::iterator& at, const Glib::ustring& inserted, int) {
            bufferWillInsert(at, inserted);
        },
        false));
    erasure_ = Subscription(buffer_->signal_erase().connect(
        [this](const Gtk::TextBuffer::iterator& first, const Gtk::TextBuffer::iterator& last) {
            bufferWillErase(first, last);
        },
        false));
    tagApplied_ = Subscription(buffer_->signal_apply_tag().connect(
        [this](const Glib::RefPtr<Gtk::TextTag>& tag, const Gtk::TextBuffer::iterator& first,
               const Gtk::TextBuffer::iterator& last) {
            if (!isPainting_ && std::any_of(paints_.begin(), paints_.end(),
                                            [&](const Paint& paint) { return paint.tag == tag; }))
                buffer_->remove_tag(tag, first, last);
        }));
}

void GtkTextStorage::fillBuffer() {
    std::string text = text_.string();
    nulStandIn_ = NulStandIn(text);
    tail_ = nulStandIn_.shown(std::move(text));
    appendToBuffer(startLength(tail_));
    runs_.didInsert(0, length());
    painted_.didInsert(0, length());
}

/// Moves the first `count` bytes of the tail into the buffer.
void GtkTextStorage::appendToBuffer(std::size_t count) {
    isFilling_ = true;
    GtkTextIter end;
    gtk_text_buffer_get_end_iter(buffer_->gobj(), &end);
    // Not through the binding, which would make and check a string of its own: this is most of what opening a
    // large text takes.
    gtk_text_buffer_insert(buffer_->gobj(), &end, tail_.data(), static_cast<int>(count));
    isFilling_ = false;
    if (count == tail_.size())
        tail_ = {};
    else
        tail_.erase(0, count);
}

void GtkTextStorage::complete() {
    if (!isComplete())
        appendToBuffer(tail_.size());
}

void GtkTextStorage::bufferWillInsert(const Gtk::TextBuffer::iterator& at, const Glib::ustring& inserted) {
    if (isFilling_ || inserted.empty())
        return;
    willEdit_.emit();
    std::string meant = nulStandIn_.meant(inserted.raw());
    const TextPosition start = position(at);
    const std::int64_t lengthBefore = length();
    text_.replace(start.byte, start.byte, meant);
    runs_.didInsert(start.codeUnit, length() - lengthBefore);
    painted_.didInsert(start.codeUnit, length() - lengthBefore);
    recordChange(start.byte, start.byte + static_cast<std::int64_t>(meant.size()));
    history_.didEdit({start.byte, {}, std::move(meant)});
}

void GtkTextStorage::bufferWillErase(const Gtk::TextBuffer::iterator& first,
                                     const Gtk::TextBuffer::iterator& last) {
    if (first == last)
        return;
    willEdit_.emit();
    const TextPosition from = position(std::min(first, last));
    const TextPosition to = position(std::max(first, last));
    history_.didEdit({from.byte, text_.substring(from.byte, to.byte), {}});
    text_.replace(from.byte, to.byte, {});
    runs_.didErase({from.codeUnit, to.codeUnit - from.codeUnit});
    painted_.didErase({from.codeUnit, to.codeUnit - from.codeUnit});
    recordChange(from.byte, from.byte);
}

void GtkTextStorage::recordChange(std::int64_t firstByte, std::int64_t lastByte) {
    const TextChange change{firstByte, text_.end().byte - lastByte};
    change_ = change_ ? change_->united(change) : change;
}

TextChange GtkTextStorage::takeChange() {
    const std::int64_t size = text_.end().byte;
    return std::exchange(change_, std::nullopt).value_or(TextChange{size, size});
}

void GtkTextStorage::replace(std::int64_t first, std::int64_t last, const std::string& inserted) {
    complete();
    if (!nulStandIn_.canShow(inserted)) {
        SharedText text = text_;
        text.replace(first, last, inserted);
        replaceText(text);
        return;
    }
    const std::string shown = nulStandIn_.shown(inserted);
    const auto added = static_cast<std::int64_t>(inserted.size());
    // First, so that there is something that can be selected while the old text goes.
    buffer_->insert(iterator(text_.atByte(first)), shown.data(), shown.data() + shown.size());
    erase(first + added, last + added);
}

/// A selection never becomes empty here as long as there is text left, only to be set again: it would be
/// given up and taken again at once, and of the first of these the display server tells only after the
/// second, so that it would be lost.
void GtkTextStorage::erase(std::int64_t first, std::int64_t last) {
    Gtk::TextBuffer::iterator from = iterator(text_.atByte(first));
    Gtk::TextBuffer::iterator to = iterator(text_.atByte(last));
    Gtk::TextBuffer::iterator selectedFrom;
    Gtk::TextBuffer::iterator selectedTo;
    const bool hasSelection = buffer_->get_selection_bounds(selectedFrom, selectedTo);
    if (hasSelection && selectedFrom >= from && selectedTo <= to) {
        Gtk::TextBuffer::iterator before = from;
        Gtk::TextBuffer::iterator behind = to;
        if (behind.forward_char())
            select(to, behind);
        else if (before.backward_char())
            select(before, from);
    }
    buffer_->erase(from, to);
}

/// The caret comes to `caret`, or to the other end if that lies within a line end of two characters, which is
/// no place for the text engine to draw it.
void GtkTextStorage::select(const Gtk::TextBuffer::iterator& caret, const Gtk::TextBuffer::iterator& other) {
    Gtk::TextBuffer::iterator before = caret;
    if (caret.get_char() == '\n' && before.backward_char() && before.get_char() == '\r')
        buffer_->select_range(other, caret);
    else
        buffer_->select_range(caret, other);
}

void GtkTextStorage::replaceText(const SharedText& text) {
    complete();
    const TextChange change = SharedText::change(text_, text);
    const std::string inserted =
        text.substring(change.unchangedBefore, text.end().byte - change.unchangedAfter);
    if (nulStandIn_.canShow(inserted)) {
        replace(change.unchangedBefore, text_.end().byte - change.unchangedAfter, inserted);
        return;
    }
    // All of the text has to be shown in another way.
    const std::string whole = text.string();
    const std::int64_t added = text.end().byte;
    const std::int64_t last = added + text_.end().byte;
    nulStandIn_ = NulStandIn(whole);
    const std::string shown = nulStandIn_.shown(whole);
    buffer_->insert(buffer_->begin(), shown.data(), shown.data() + shown.size());
    erase(added, last);
}

void GtkTextStorage::beginEditing() {}

void GtkTextStorage::setAttributes(TextRange range, const EditorFont& font, const DynamicColor& foreground) {
    // The highlighter gives all text the same font and base colour, so they are the style of the whole view.
    runs_.clear(range);
    if (font == font_ && foreground == baseColor_)
        return;
    font_ = font;
    baseColor_ = foreground;
    applyBase();
}

void GtkTextStorage::addForeground(TextRange range, SyntaxToken token, const DynamicColor& foreground) {
    Paint& paint = paints_[index(token)];
    if (paint.color != foreground) {
        paint.color = foreground;
        applyColor(paint);
    }
    runs_.add({range, token});
}

void GtkTextStorage::endEditing() {
    runsChanged_.emit();
}

void GtkTextStorage::setAppearance(Appearance appearance) {
    appearance_ = appearance;
    applyBase();
    for (const Paint& paint : paints_)
        applyColor(paint);
}

void GtkTextStorage::applyBase() const {
    const Color color = baseColor_.resolved(appearance_);
    style_->load_from_data(fmt::format("textview {{ font-family: monospace; font-size: {}px; }}"
                                       "textview, textview text {{ color: rgb({}, {}, {}); }}",
                                       font_.size, color.red, color.green, color.blue));
}

void GtkTextStorage::applyColor(const Paint& paint) const {
    paint.tag->property_foreground_rgba() = rgba(paint.color.resolved(appearance_));
}

TextRange GtkTextStorage::codeUnits(const Gtk::TextBuffer::iterator& first,
                                    const Gtk::TextBuffer::iterator& last) const {
    const std::int64_t from = position(first).codeUnit;
    return {from, position(last).codeUnit - from};
}

bool GtkTextStorage::isPainted(const Gtk::TextBuffer::iterator& first,
                               const Gtk::TextBuffer::iterator& last) const {
    const TextRange range = codeUnits(first, last);
    return !painted_.staleRange(range, runs_.overlapping(range));
}

bool GtkTextStorage::paint(const Gtk::TextBuffer::iterator& first, const Gtk::TextBuffer::iterator& last,
                           std::int64_t most) {
    const TextRange range = codeUnits(first, last);
    const std::vector<SyntaxSpan> wanted = runs_.overlapping(range);
    std::optional<TextRange> stale = painted_.staleRange(range, wanted);
    if (!stale)
        return true;
    const bool isAll = stale->length <= most;
    stale->length = std::min(stale->length, most);
    show(overlapping(wanted, *stale), *stale);
    return isAll;
}

bool GtkTextStorage::isBare(const Gtk::TextBuffer::iterator& first,
                            const Gtk::TextBuffer::iterator& last) const {
    return !painted_.staleRange(codeUnits(first, last), {});
}

void GtkTextStorage::strip(const Gtk::TextBuffer::iterator& first, const Gtk::TextBuffer::iterator& last) {
    if (const std::optional<TextRange> painted = painted_.staleRange(codeUnits(first, last), {}))
        show({}, *painted);
}

/// Makes the buffer show `wanted`, which overlap `range`, in it.
void GtkTextStorage::show(std::span<const SyntaxSpan> wanted, TextRange range) {
    const auto place = [this](std::int64_t codeUnit) { return iterator(text_.atCodeUnit(codeUnit)); };
    isPainting_ = true;
    buffer_->apply_tag(fence_, place(range.location), place(range.end()));
    for (const Paint& paint : paints_)
        buffer_->remove_tag(paint.tag, place(range.location), place(range.end()));
    // From the end, so that the buffer finds each place and the tag's next end after few of these pieces.
    for (auto run = wanted.rbegin(); run != wanted.rend(); ++run) {
        const std::int64_t from = std::max(run->range.location, range.location);
        const std::int64_t to = std::min(run->range.end(), range.end());
        buffer_->apply_tag(paints_[index(run->token)].tag, place(from), place(to));
    }
    buffer_->remove_tag(fence_, place(range.location), place(range.end()));
    isPainting_ = false;
    painted_.didPaint(range, wanted);
}

} // namespace corvanta
