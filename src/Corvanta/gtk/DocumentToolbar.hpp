#pragma once

#include <adwaita.h>
#include <gtkmm/button.h>
#include <gtkmm/togglebutton.h>

#include <string>

namespace corvanta {

/// The title bar of a document window with its three buttons.
class DocumentToolbar {
public:
    DocumentToolbar();

    /// The title bar; it belongs to the window it is given to.
    GtkWidget* widget() const { return GTK_WIDGET(headerBar_); }

    /// `name` is the document's, `place` says where it lies.
    void showTitle(const std::string& name, const std::string& place);

    /// Shows all texts in the language that is in use now.
    void updateLanguage();

private:
    AdwWindowTitle* title_;
    AdwHeaderBar* headerBar_;
    Gtk::Button format_;
    Gtk::ToggleButton assistant_;
    Gtk::ToggleButton preview_;
};

} // namespace corvanta
