#pragma once

#include <gtkmm/eventcontrollerkey.h>

namespace corvanta {

class IndentingTextView;

/// Takes the keys that mean something else, or more, in the code pane than in the text widget: Return, Tab,
/// Home, undo, and whatever is typed over a selection.
class EditorKeys {
public:
    /// `view` outlives this.
    explicit EditorKeys(IndentingTextView& view);

private:
    bool takeKey(guint key, Gdk::ModifierType modifiers, Gtk::EventControllerKey& controller);
    bool isForInputMethod(Gtk::EventControllerKey& controller);
    bool goToFirstNonBlank(bool selects);

    IndentingTextView& view_;
};

} // namespace corvanta
