#pragma once

#include <adwaita.h>
#include <gtkmm/label.h>
#include <gtkmm/widget.h>

#include <string>

namespace corvanta {

/// Pieces of the settings' forms in the toolkit's own style. They belong to the container they are added to.
struct Formular {
    Formular() = delete;

    /// A new part at the end of a page of the form. Shows its lines before all its other contents.
    static AdwPreferencesGroup* gruppe(AdwPreferencesPage* seite);

    /// A row with `titel` at its start and `bedienung` at its end, which a screen reader calls by the title.
    /// `wert`, if there is one, follows and shows what was set.
    static GtkWidget* zeile(const std::string& titel, Gtk::Widget& bedienung, Gtk::Label* wert = nullptr);

    /// The same for a switch, which a click anywhere in the row turns.
    static GtkWidget* schalterzeile(const std::string& titel, Gtk::Widget& schalter);

    /// A paragraph in small letters about what stands above it.
    static GtkWidget* erklaerung(const std::string& text);
};

} // namespace corvanta
