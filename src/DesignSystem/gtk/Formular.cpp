#include "DesignSystem/gtk/Formular.hpp"

#include "DesignSystem/Mass.hpp"

#include <gtkmm/object.h>

namespace corvanta {

namespace {

GtkWidget* titledRow(const std::string& title, Gtk::Widget& control) {
    GtkWidget* row = adw_action_row_new();
    adw_preferences_row_set_use_markup(ADW_PREFERENCES_ROW(row), FALSE);
    adw_preferences_row_set_title(ADW_PREFERENCES_ROW(row), title.c_str());
    // By keyboard straight to what the line is for.
    gtk_widget_set_focusable(row, FALSE);
    control.set_valign(Gtk::Align::CENTER);
    adw_action_row_add_suffix(ADW_ACTION_ROW(row), control.gobj());
    return row;
}

} // namespace

AdwPreferencesGroup* Formular::gruppe(AdwPreferencesPage* seite) {
    auto* group = ADW_PREFERENCES_GROUP(adw_preferences_group_new());
    adw_preferences_page_add(seite, group);
    return group;
}

GtkWidget* Formular::zeile(const std::string& titel, Gtk::Widget& bedienung, Gtk::Label* wert) {
    GtkWidget* row = titledRow(titel, bedienung);
    gtk_accessible_update_property(GTK_ACCESSIBLE(bedienung.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   titel.c_str(), -1);
    if (wert != nullptr) {
        wert->add_css_class("schrift-klein");
        wert->add_css_class("dim-label");
        adw_action_row_add_suffix(ADW_ACTION_ROW(row), GTK_WIDGET(wert->gobj()));
    }
    return row;
}

GtkWidget* Formular::schalterzeile(const std::string& titel, Gtk::Widget& schalter) {
    GtkWidget* row = titledRow(titel, schalter);
    // This names the switch too; a name of its own would be read beside it.
    adw_action_row_set_activatable_widget(ADW_ACTION_ROW(row), schalter.gobj());
    return row;
}

GtkWidget* Formular::erklaerung(const std::string& text) {
    auto* label = Gtk::make_managed<Gtk::Label>(text);
    label->set_wrap(true);
    label->set_xalign(0);
    label->set_margin_top(Mass::klein);
    label->set_margin_bottom(Mass::klein);
    label->add_css_class("schrift-klein");
    label->add_css_class("dim-label");
    return GTK_WIDGET(label->gobj());
}

} // namespace corvanta
