#include "EditorCore/gtk/IndentingTextView.hpp"

#include "DesignSystem/t.hpp"
#include "EditorCore/IndentationEngine.hpp"
#include "EditorCore/LineShift.hpp"

#include <gtkmm/window.h>
#include <gtksourceview/gtksource.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

namespace corvanta {

namespace {

/// Distance between the pane's edge and the text, in points.
constexpr int inset = 8;

/// A tab is shown as wide as this many characters.
constexpr unsigned tabWidth = 4;

GtkTextBuffer* plainSourceBuffer() {
    GtkSourceBuffer* buffer = gtk_source_buffer_new(nullptr);
    gtk_source_buffer_set_highlight_syntax(buffer, FALSE);
    gtk_source_buffer_set_highlight_matching_brackets(buffer, TRUE);
    gtk_source_buffer_set_implicit_trailing_newline(buffer, FALSE);
    gtk_text_buffer_set_enable_undo(GTK_TEXT_BUFFER(buffer), FALSE);
    return GTK_TEXT_BUFFER(buffer);
}

/// Set up before it has a text: each of these has all lines of a text laid out anew.
GtkTextView* plainSourceView() {
    GtkWidget* widget = gtk_source_view_new();
    auto* view = GTK_TEXT_VIEW(widget);
    gtk_text_view_set_wrap_mode(view, GTK_WRAP_WORD_CHAR);
    gtk_text_view_set_left_margin(view, inset);
    gtk_text_view_set_right_margin(view, inset);
    gtk_text_view_set_top_margin(view, inset);
    gtk_text_view_set_bottom_margin(view, inset);
    gtk_text_view_set_monospace(view, TRUE);
    gtk_text_view_set_input_hints(view, GTK_INPUT_HINT_NO_SPELLCHECK);

    auto* sourceView = GTK_SOURCE_VIEW(widget);
    gtk_source_view_set_tab_width(sourceView, tabWidth);
    gtk_source_view_set_highlight_current_line(sourceView, TRUE);
    // The line numbers also keep the view drawing at every key: without them a letter typed into a long text
    // waits for the widget's idle work before it is seen.
    gtk_source_view_set_show_line_numbers(sourceView, TRUE);

    GtkTextBuffer* buffer = plainSourceBuffer();
    gtk_text_view_set_buffer(view, buffer);
    g_object_unref(buffer);
    return view;
}

/// `place`, or the start of the line end that it cuts in two: the widget cannot draw a caret there.
Gtk::TextBuffer::iterator outsideLineEnd(Gtk::TextBuffer::iterator place) {
    Gtk::TextBuffer::iterator before = place;
    if (*place == '\n' && before.backward_char() && *before == '\r')
        return before;
    return place;
}

} // namespace

IndentingTextView::IndentingTextView(const SharedText& text, UndoHistory& history)
    : Gtk::TextView(plainSourceView()),
      textStorage_(get_buffer(), text, history),
      history_(history),
      lateCompletion_(*this, textStorage_),
      keys_(*this),
      dragStep_(*this) {
    updateLanguage();
    const Glib::RefPtr<Gtk::TextBuffer> buffer = get_buffer();
    buffer->place_cursor(buffer->begin());
    followSteps();
}

void IndentingTextView::updateLanguage() {
    gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   t("Quelltext").c_str(), GTK_ACCESSIBLE_PROPERTY_MULTI_LINE, TRUE, -1);
}

TextRange IndentingTextView::selectedRange() const {
    Gtk::TextBuffer::const_iterator first;
    Gtk::TextBuffer::const_iterator last;
    get_buffer()->get_selection_bounds(first, last);
    const std::int64_t location = textStorage_.position(first).codeUnit;
    return {location, textStorage_.position(last).codeUnit - location};
}

void IndentingTextView::setSelectedRange(TextRange range) {
    const auto place = [this](std::int64_t codeUnit) {
        return outsideLineEnd(textStorage_.iterator(text().atCodeUnit(codeUnit)));
    };
    get_buffer()->select_range(place(range.end()), place(range.location));
}

void IndentingTextView::insertText(std::string_view inserted, TextRange replacementRange) {
    const TextPosition start = text().atCodeUnit(replacementRange.location);
    get_buffer()->begin_user_action();
    replace({{replacementRange, std::string(inserted)}});
    setSelectedRange({text().atByte(start.byte + static_cast<std::int64_t>(inserted.size())).codeUnit, 0});
    get_buffer()->end_user_action();
    revealSelection();
}

bool IndentingTextView::replaceWholeText(const SharedText& text) {
    if (!get_editable())
        return false;
    get_buffer()->begin_user_action();
    textStorage_.replaceText(text);
    get_buffer()->end_user_action();
    return true;
}

void IndentingTextView::replace(const std::vector<Replacement>& replacements) {
    reset_im_context();
    get_buffer()->begin_user_action();
    // From the end, so that the ranges before are still true.
    for (auto replacement = replacements.rbegin(); replacement != replacements.rend(); ++replacement) {
        const std::int64_t first = text().atCodeUnit(replacement->range.location).byte;
        const std::int64_t last = text().atCodeUnit(replacement->range.end()).byte;
        textStorage_.replace(first, last, replacement->text);
    }
    get_buffer()->end_user_action();
}

bool IndentingTextView::isFirstResponder() const {
    return is_focus();
}

void IndentingTextView::makeFirstResponder() {
    if (get_root() != nullptr)
        grab_focus();
}

bool IndentingTextView::isInKeyWindow() const {
    const auto* window = dynamic_cast<const Gtk::Window*>(get_root());
    return window != nullptr && window->is_active();
}

std::optional<ScrollOrigin> IndentingTextView::scrollOrigin() const {
    if (get_parent() == nullptr)
        return std::nullopt;
    return wantedOrigin_.value_or(
        ScrollOrigin{get_hadjustment()->get_value(), get_vadjustment()->get_value()});
}

void IndentingTextView::scroll(ScrollOrigin origin) {
    wantedOrigin_ = origin;
    if (origin.y > 0)
        textStorage_.complete();
    // The widget finds out little by little how long a text is.
    scrollRangeChanged_ =
        Subscription(get_vadjustment()->signal_changed().connect([this] { scrollAsFarAsPossible(); }));
    scrollAsFarAsPossible();
}

void IndentingTextView::scrollAsFarAsPossible() {
    if (!wantedOrigin_)
        return;
    const ScrollOrigin origin = *wantedOrigin_;
    const Glib::RefPtr<Gtk::Adjustment> vertical = get_vadjustment();
    get_hadjustment()->set_value(origin.x);
    vertical->set_value(origin.y);
    if (vertical->get_value() >= origin.y) {
        wantedOrigin_.reset();
        scrollRangeChanged_ = Subscription();
    }
}

std::int64_t IndentingTextView::firstVisibleLine() const {
    Gdk::Rectangle visible;
    get_visible_rect(visible);
    Gtk::TextBuffer::const_iterator first;
    int top = 0;
    get_line_at_y(first, visible.get_y(), top);
    return first.get_line();
}

void IndentingTextView::scrollToLine(std::int64_t line) {
    textStorage_.complete();
    wantedOrigin_.reset();
    const Glib::RefPtr<Gtk::TextBuffer> buffer = get_buffer();
    const std::int64_t last = buffer->get_line_count() - 1;
    const auto start = buffer->get_iter_at_line(static_cast<int>(std::clamp<std::int64_t>(line, 0, last)));
    // The widget remembers a mark until it has laid the lines before it out.
    const Glib::RefPtr<Gtk::TextMark> mark = buffer->create_mark(start);
    scroll_to(mark, 0, 0, 0);
    buffer->delete_mark(mark);
}

void IndentingTextView::revealSelection() {
    wantedOrigin_.reset();
    scroll_to(get_buffer()->get_insert());
}

void IndentingTextView::goToLine(int line) {
    textStorage_.complete();
    const Glib::RefPtr<Gtk::TextBuffer> buffer = get_buffer();
    buffer->place_cursor(buffer->get_iter_at_line(std::clamp(line, 1, buffer->get_line_count()) - 1));
    wantedOrigin_.reset();
    // Not at the edge: what stands before the line belongs to it.
    constexpr double belowTheTop = 0.3;
    scroll_to(buffer->get_insert(), 0, 0, belowTheTop);
}

/// A step that can be undone is what happens between the toolkit's beginning and end of a user action, or one
/// change outside of such.
void IndentingTextView::followSteps() {
    const Glib::RefPtr<Gtk::TextBuffer> buffer = get_buffer();
    userActionBegun_ = SignalConnection(
        buffer->gobj(), "begin-user-action",
        +[](GtkTextBuffer*, gpointer self) {
            auto* view = static_cast<IndentingTextView*>(self);
            if (view->userActions_++ == 0)
                view->beginStep();
        },
        this);
    userActionEnded_ = SignalConnection(
        buffer->gobj(), "end-user-action",
        +[](GtkTextBuffer*, gpointer self) {
            auto* view = static_cast<IndentingTextView*>(self);
            if (--view->userActions_ == 0)
                view->endStep();
        },
        this);
    willEdit_ = Subscription(textStorage_.signalWillEdit().connect([this] {
        if (userActions_ == 0)
            beginStep();
    }));
    changed_ = Subscription(buffer->signal_changed().connect([this] {
        if (textStorage_.isFilling())
            return;
        hasChangedInStep_ = true;
        if (userActions_ == 0)
            endStep();
    }));
    markMoved_ = Subscription(buffer->signal_mark_set().connect(
        [this](const Gtk::TextBuffer::iterator&, const Glib::RefPtr<Gtk::TextBuffer::Mark>& mark) {
            // A view that goes away gives the selection up, which the user did not do.
            if (get_mapped() &&
                (mark == get_buffer()->get_insert() || mark == get_buffer()->get_selection_bound()))
                selectionDidChange_.emit();
        }));
}

void IndentingTextView::beginStep() {
    if (!isReplaying_)
        history_.beginStep(selectedRange());
}

void IndentingTextView::endStep() {
    if (isReplaying_)
        return;
    keepCaretOutOfLineEnds();
    history_.endStep(selectedRange());
    if (std::exchange(hasChangedInStep_, false))
        textDidChange_.emit();
}

/// An edit may have put a line feed behind a carriage return at which the caret stands.
void IndentingTextView::keepCaretOutOfLineEnds() {
    const Glib::RefPtr<Gtk::TextBuffer> buffer = get_buffer();
    for (const auto& mark : {buffer->get_insert(), buffer->get_selection_bound()}) {
        const Gtk::TextBuffer::iterator place = mark->get_iter();
        if (const Gtk::TextBuffer::iterator moved = outsideLineEnd(place); moved != place)
            buffer->move_mark(mark, moved);
    }
}

void IndentingTextView::undo() {
    if (!canUndo())
        return;
    if (const std::optional<UndoHistory::Step> step = history_.undo())
        apply(*step);
}

void IndentingTextView::redo() {
    if (!canRedo())
        return;
    if (const std::optional<UndoHistory::Step> step = history_.redo())
        apply(*step);
}

void IndentingTextView::apply(const UndoHistory::Step& step) {
    reset_im_context();
    isReplaying_ = true;
    for (std::size_t i = 0; i < step.edits.size(); ++i) {
        const TextEdit& edit = step.edits[i];
        const std::int64_t last = edit.byte + static_cast<std::int64_t>(edit.removed.size());
        const bool isReplacement = edit.inserted.empty() && i + 1 < step.edits.size() &&
                                   step.edits[i + 1].removed.empty() && step.edits[i + 1].byte == edit.byte;
        textStorage_.replace(edit.byte, last, isReplacement ? step.edits[++i].inserted : edit.inserted);
    }
    setSelectedRange(step.selection);
    isReplaying_ = false;
    hasChangedInStep_ = false;
    textDidChange_.emit();
    revealSelection();
}

void IndentingTextView::insertNewline() {
    const Glib::RefPtr<Gtk::TextBuffer> buffer = get_buffer();
    std::string newline(1, '\n');
    newline += indentation();
    reset_im_context();
    buffer->begin_user_action();
    buffer->erase_selection(true, true);
    buffer->insert_interactive_at_cursor(newline, true);
    buffer->end_user_action();
    revealSelection();
}

/// The widget's own way does the same, but loses the selection now and then: it gives it up and takes it
/// again, and of the first of these the display server tells only after the second.
void IndentingTextView::shiftLines(bool toTheLeft) {
    const LineShift shift = toTheLeft ? LineShift::toTheLeft(text(), selectedRange())
                                      : LineShift::toTheRight(text(), selectedRange());
    std::vector<Replacement> replacements;
    for (const TextRange& range : shift.ranges)
        replacements.push_back({range, std::string(shift.text)});
    get_buffer()->begin_user_action();
    replace(replacements);
    setSelectedRange(shift.selection);
    get_buffer()->end_user_action();
    revealSelection();
}

/// What a line starts with that takes the selection's place.
std::string IndentingTextView::indentation() {
    Gtk::TextBuffer::iterator start;
    Gtk::TextBuffer::iterator end;
    get_buffer()->get_selection_bounds(start, end);
    return IndentationEngine::indentForNewLine(text().substring(0, textStorage_.position(start).byte));
}

void IndentingTextView::setAppearance(Appearance appearance) {
    const char* id = appearance == Appearance::dark ? "Adwaita-dark" : "Adwaita";
    GtkSourceStyleSchemeManager* schemes = gtk_source_style_scheme_manager_get_default();
    gtk_source_buffer_set_style_scheme(GTK_SOURCE_BUFFER(gtk_text_view_get_buffer(gobj())),
                                       gtk_source_style_scheme_manager_get_scheme(schemes, id));
}

} // namespace corvanta
