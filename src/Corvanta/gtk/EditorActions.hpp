#pragma once

#include "Corvanta/DocumentWindowContent.hpp"
#include "Corvanta/gtk/ContentView.hpp"
#include "Corvanta/gtk/EditTarget.hpp"
#include "Platform/Subscription.hpp"

#include <giomm/simpleaction.h>
#include <gtkmm/applicationwindow.h>

#include <vector>

namespace corvanta {

/// The menu commands that act on the text and the panes of a document window.
class EditorActions {
public:
    /// Adds the actions to `window`. All of them outlive this object.
    EditorActions(Gtk::ApplicationWindow& window, DocumentWindowContent& content, ContentView& view);

private:
    void addSearching();
    void addEditing();
    void addInserting();
    void addClipboard();
    void enableHistory();
    void enableWhatNeedsASelection();
    void addPanel(const char* name, Published<bool>& isVisible);

    Gtk::ApplicationWindow& window_;
    EditorViewModel& editor_;
    ContentView& view_;
    EditTarget editTarget_;
    Glib::RefPtr<Gio::SimpleAction> undo_;
    Glib::RefPtr<Gio::SimpleAction> redo_;
    std::vector<Glib::RefPtr<Gio::SimpleAction>> selectionActions_;
    Subscription textChanged_;
    Subscription selectionChanged_;
    std::vector<Subscription> panels_;
};

} // namespace corvanta
