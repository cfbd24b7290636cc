#include "Corvanta/gtk/EditTarget.hpp"

#include <glibmm/main.h>

namespace corvanta {

namespace {

/// What the toolkit's text widgets call a command.
const char* actionName(EditTarget::Command command) {
    switch (command) {
    case EditTarget::Command::cut:
        return "clipboard.cut";
    case EditTarget::Command::copy:
        return "clipboard.copy";
    case EditTarget::Command::paste:
        return "clipboard.paste";
    case EditTarget::Command::remove:
        return "selection.delete";
    case EditTarget::Command::selectAll:
        return "selection.select-all";
    }
    return "";
}

/// In the bar itself, not in one of its menus.
bool isInMenuBar(GtkWidget* widget) {
    return widget != nullptr && gtk_widget_get_ancestor(widget, GTK_TYPE_POPOVER_MENU_BAR) != nullptr &&
           gtk_widget_get_ancestor(widget, GTK_TYPE_POPOVER) == nullptr;
}

} // namespace

EditTarget::EditTarget(Gtk::Window& window, Gtk::TextView& text, PreviewColumn& preview)
    : window_(window),
      text_(text),
      preview_(preview),
      textSelectionMoved_(followSelection(text.get_buffer()->gobj(), "notify::has-selection")),
      focusMoved_(
          window.gobj(), "notify::focus-widget",
          +[](GtkWindow*, GParamSpec*, gpointer self) { static_cast<EditTarget*>(self)->followFocus(); },
          this) {}

EditTarget::~EditTarget() {
    menuClosed_.disconnect();
    remember(nullptr);
}

void EditTarget::followFocus() {
    GtkWidget* focus = gtk_window_get_focus(window_.gobj());
    if (focus != nullptr && hasText(focus))
        remember(focus);
    // A menu that closes leaves the keyboard in the menu bar, where it came from another menu or from the
    // text. Whether one of its neighbours opens instead is known only later.
    if (wasInMenu_ && isInMenuBar(focus)) {
        menuClosed_ = Glib::signal_idle().connect([this] {
            returnFromMenu();
            return false;
        });
    }
    wasInMenu_ = focus == nullptr ? wasInMenu_ : gtk_widget_get_ancestor(focus, GTK_TYPE_POPOVER) != nullptr;
    selectionChanged_.emit();
}

void EditTarget::returnFromMenu() {
    GtkWidget* focus = gtk_window_get_focus(window_.gobj());
    if (isInMenuBar(focus))
        gtk_widget_grab_focus(target());
}

void EditTarget::remember(GtkWidget* widget) {
    if (widget == last_)
        return;
    g_set_weak_pointer(&last_, widget);
    fieldSelectionMoved_.clear();
    if (GTK_IS_TEXT(widget)) {
        fieldSelectionMoved_.push_back(followSelection(widget, "notify::cursor-position"));
        fieldSelectionMoved_.push_back(followSelection(widget, "notify::selection-bound"));
    }
}

SignalConnection EditTarget::followSelection(gpointer object, const char* signal) {
    return {object, signal,
            +[](GObject*, GParamSpec*, gpointer self) {
                static_cast<EditTarget*>(self)->selectionChanged_.emit();
            },
            this};
}

GtkWidget* EditTarget::target() const {
    return last_ != nullptr && gtk_widget_get_mapped(last_) != FALSE ? last_ : GTK_WIDGET(text_.gobj());
}

bool EditTarget::isPage(const GtkWidget* widget) const {
    const PreviewWebView* page = preview_.webView();
    return page != nullptr && widget == GTK_WIDGET(page->webView());
}

bool EditTarget::hasText(GtkWidget* widget) const {
    return GTK_IS_TEXT_VIEW(widget) || GTK_IS_TEXT(widget) || isPage(widget);
}

bool EditTarget::hasSelection() const {
    GtkWidget* target = this->target();
    // Not only the document's text: the toolkit has text views of its own in a window.
    if (GTK_IS_TEXT_VIEW(target))
        return gtk_text_buffer_get_has_selection(gtk_text_view_get_buffer(GTK_TEXT_VIEW(target))) != FALSE;
    if (GTK_IS_TEXT(target))
        return gtk_editable_get_selection_bounds(GTK_EDITABLE(target), nullptr, nullptr) != FALSE;
    return preview_.webView()->hasSelection();
}

void EditTarget::perform(Command command) const {
    GtkWidget* target = this->target();
    if (isPage(target))
        preview_.webView()->performMenuCommand(command);
    else
        gtk_widget_activate_action(target, actionName(command), nullptr);
}

} // namespace corvanta
