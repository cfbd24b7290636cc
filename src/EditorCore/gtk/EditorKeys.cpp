#include "EditorCore/gtk/EditorKeys.hpp"

#include "EditorCore/gtk/IndentingTextView.hpp"

namespace corvanta {

namespace {

bool asksForOtherIndentation(guint key) {
    return key == GDK_KEY_Tab || key == GDK_KEY_KP_Tab || key == GDK_KEY_ISO_Left_Tab;
}

/// Whether these keys ask for a new line. With Control or Alt, Return belongs to commands.
bool asksForNewline(guint key, Gdk::ModifierType modifiers) {
    const bool isReturn = key == GDK_KEY_Return || key == GDK_KEY_KP_Enter || key == GDK_KEY_ISO_Enter;
    const auto commandModifiers = Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::ALT_MASK;
    return isReturn && (modifiers & commandModifiers) == Gdk::ModifierType{};
}

} // namespace

EditorKeys::EditorKeys(IndentingTextView& view) : view_(view) {
    // Before the widget's own controller, which would take the keys: the widget was made in C, so that its
    // virtual functions cannot be overridden.
    const auto controller = Gtk::EventControllerKey::create();
    controller->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    controller->signal_key_pressed().connect(
        [this, keys = controller.get()](guint key, guint, Gdk::ModifierType modifiers) {
            return takeKey(key, modifiers, *keys);
        },
        false);
    view_.add_controller(controller);
}

bool EditorKeys::takeKey(guint key, Gdk::ModifierType modifiers, Gtk::EventControllerKey& controller) {
    view_.textStorage().complete();
    const bool control = (modifiers & Gdk::ModifierType::CONTROL_MASK) != Gdk::ModifierType{};
    const bool shift = (modifiers & Gdk::ModifierType::SHIFT_MASK) != Gdk::ModifierType{};
    const bool alt = (modifiers & Gdk::ModifierType::ALT_MASK) != Gdk::ModifierType{};
    const guint letter = gdk_keyval_to_lower(key);
    if (control && !alt && (letter == GDK_KEY_z || letter == GDK_KEY_y)) {
        if (letter == GDK_KEY_y || shift)
            view_.redo();
        else
            view_.undo();
        return true;
    }
    if (!control && !alt && (key == GDK_KEY_Home || key == GDK_KEY_KP_Home))
        return !isForInputMethod(controller) && goToFirstNonBlank(shift);
    if (!view_.get_editable())
        return false;
    if (asksForNewline(key, modifiers)) {
        if (!isForInputMethod(controller))
            view_.insertNewline();
        return true;
    }
    const bool moves = shift || view_.get_buffer()->get_has_selection();
    if (!control && !alt && moves && asksForOtherIndentation(key)) {
        if (!isForInputMethod(controller))
            view_.shiftLines(shift);
        return true;
    }
    // The input method deletes a selection before it inserts what was typed over it; together it is one step.
    if (!view_.get_buffer()->get_has_selection())
        return false;
    view_.get_buffer()->begin_user_action();
    const bool isTaken = isForInputMethod(controller);
    view_.get_buffer()->end_user_action();
    return isTaken;
}

/// Moves the caret to the line's first character that is no blank; from there, and on the further rows of a
/// wrapped line, the widget moves it to the start. False when nothing was done.
bool EditorKeys::goToFirstNonBlank(bool selects) {
    const Glib::RefPtr<Gtk::TextBuffer> buffer = view_.get_buffer();
    const Gtk::TextBuffer::iterator caret = buffer->get_iter_at_mark(buffer->get_insert());
    Gtk::TextBuffer::iterator row = caret;
    view_.backward_display_line_start(row);
    if (!row.starts_line())
        return false;
    Gtk::TextBuffer::iterator target = caret;
    target.set_line_offset(0);
    while (!target.ends_line() && (*target == ' ' || *target == '\t'))
        target.forward_char();
    if (target == caret)
        return false;
    view_.reset_im_context();
    if (selects)
        buffer->move_mark(buffer->get_insert(), target);
    else
        buffer->place_cursor(target);
    view_.revealSelection();
    return true;
}

/// An input method may want Return for itself, to take what is being composed.
bool EditorKeys::isForInputMethod(Gtk::EventControllerKey& controller) {
    GdkEvent* event = gtk_event_controller_get_current_event(controller.Gtk::EventController::gobj());
    return event != nullptr && gtk_text_view_im_context_filter_keypress(view_.gobj(), event) != FALSE;
}

} // namespace corvanta
