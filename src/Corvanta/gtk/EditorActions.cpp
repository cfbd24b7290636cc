#include "Corvanta/gtk/EditorActions.hpp"

#include "Corvanta/InsertTemplate.hpp"

#include <glibmm/variant.h>

#include <utility>

namespace corvanta {

EditorActions::EditorActions(Gtk::ApplicationWindow& window, DocumentWindowContent& content,
                             ContentView& view)
    : window_(window),
      editor_(content.editorViewModel),
      view_(view),
      editTarget_(window, view.codeEditor().textView(), view.preview()) {
    addSearching();
    addEditing();
    addInserting();
    addClipboard();
    addPanel("show-preview", content.isPreviewVisible);
    addPanel("show-assistant", content.isAssistantVisible);
}

void EditorActions::addSearching() {
    window_.add_action("find", [this] { editor_.showFindBar(); });
    window_.add_action("replace", [this] { editor_.showReplaceBar(); });
    window_.add_action("find-next", [this] { editor_.findNext(); });
    window_.add_action("find-previous", [this] { editor_.findPrevious(); });
    window_.add_action("find-selection", [this] { editor_.useSelectionForFind(); });
}

void EditorActions::addEditing() {
    IndentingTextView& text = view_.codeEditor().textView();
    undo_ = window_.add_action("undo", [&text] { text.undo(); });
    redo_ = window_.add_action("redo", [&text] { text.redo(); });
    textChanged_ = Subscription(text.signalTextDidChange().connect([this] { enableHistory(); }));
    enableHistory();
    window_.add_action("format", [this] { editor_.reformatIndentation(); });
    window_.add_action("comment", [this] { editor_.toggleComment(); });
}

void EditorActions::enableHistory() {
    const IndentingTextView& text = view_.codeEditor().textView();
    undo_->set_enabled(text.canUndo());
    redo_->set_enabled(text.canRedo());
}

void EditorActions::addInserting() {
    window_.add_action_with_parameter(
        "insert", Glib::VARIANT_TYPE_INT32, [this](const Glib::VariantBase& number) {
            const int chosen = Glib::VariantBase::cast_dynamic<Glib::Variant<int>>(number).get();
            const InsertTemplate& fragment = InsertTemplate::all.at(static_cast<std::size_t>(chosen));
            editor_.insertAtCursor(fragment.text, fragment.cursorOffset);
        });
}

void EditorActions::addClipboard() {
    using Command = EditTarget::Command;
    const auto add = [this](const char* name, Command command) {
        return window_.add_action(name, [this, command] { editTarget_.perform(command); });
    };
    add("paste", Command::paste);
    add("select-all", Command::selectAll);
    selectionActions_ = {add("cut", Command::cut), add("copy", Command::copy),
                         add("delete", Command::remove)};
    selectionChanged_ =
        Subscription(editTarget_.signalSelectionChanged().connect([this] { enableWhatNeedsASelection(); }));
    enableWhatNeedsASelection();
}

void EditorActions::enableWhatNeedsASelection() {
    const bool hasSelection = editTarget_.hasSelection();
    for (const auto& action : selectionActions_)
        action->set_enabled(hasSelection);
}

void EditorActions::addPanel(const char* name, Published<bool>& isVisible) {
    const auto action = window_.add_action_bool(
        name, [&isVisible] { isVisible = !*isVisible; }, *isVisible);
    panels_.push_back(isVisible.subscribe([action](bool shown) { action->change_state(shown); }));
}

} // namespace corvanta
