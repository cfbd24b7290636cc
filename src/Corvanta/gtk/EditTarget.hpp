#pragma once

#include "Platform/gtk/SignalConnection.hpp"
#include "Preview/gtk/PreviewColumn.hpp"

#include <gtkmm/textview.h>
#include <gtkmm/window.h>
#include <sigc++/connection.h>
#include <sigc++/signal.h>

#include <vector>

namespace corvanta {

/// What the commands of the edit menu act on in a window: the text, the field or the page where the keyboard
/// is. A button that was pressed and the menu itself take the keyboard for a moment, but are not meant; from
/// a menu that was closed the keyboard comes back.
class EditTarget {
public:
    using Command = PreviewWebView::Command;

    /// Acts on `text` until the keyboard is elsewhere, and when that is gone. All of them outlive this
    /// object.
    EditTarget(Gtk::Window& window, Gtk::TextView& text, PreviewColumn& preview);
    ~EditTarget();

    EditTarget(const EditTarget&) = delete;
    EditTarget& operator=(const EditTarget&) = delete;

    void perform(Command command) const;

    /// Whether there is something that can be cut, copied or deleted.
    bool hasSelection() const;

    /// Emitted when `hasSelection` may have changed. Of a page's selection nothing tells; there it is
    /// when the keyboard moves, as it does to a menu that is opened.
    sigc::signal<void()>& signalSelectionChanged() { return selectionChanged_; }

private:
    void followFocus();
    void returnFromMenu();
    void remember(GtkWidget* widget);
    SignalConnection followSelection(gpointer object, const char* signal);
    GtkWidget* target() const;
    bool isPage(const GtkWidget* widget) const;
    bool hasText(GtkWidget* widget) const;

    Gtk::Window& window_;
    Gtk::TextView& text_;
    PreviewColumn& preview_;
    /// Set to null by the toolkit when the widget goes.
    GtkWidget* last_ = nullptr;
    bool wasInMenu_ = false;
    sigc::connection menuClosed_;
    sigc::signal<void()> selectionChanged_;
    SignalConnection textSelectionMoved_;
    std::vector<SignalConnection> fieldSelectionMoved_;
    SignalConnection focusMoved_;
};

} // namespace corvanta
