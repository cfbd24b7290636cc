#include "Corvanta/gtk/DocumentToolbar.hpp"

#include "DesignSystem/t.hpp"

namespace corvanta {

namespace {

/// In points.
constexpr int buttonWidth = 52;

void name(Gtk::Widget& button, const std::string& text) {
    button.set_tooltip_text(text);
    gtk_accessible_update_property(GTK_ACCESSIBLE(button.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, text.c_str(),
                                   -1);
}

} // namespace

DocumentToolbar::DocumentToolbar()
    : title_(ADW_WINDOW_TITLE(adw_window_title_new("", ""))),
      headerBar_(ADW_HEADER_BAR(adw_header_bar_new())) {
    adw_header_bar_set_title_widget(headerBar_, GTK_WIDGET(title_));
    format_.set_icon_name("format-indent-more-symbolic");
    format_.set_action_name("win.format");
    assistant_.set_icon_name("starred-symbolic");
    assistant_.set_action_name("win.show-assistant");
    preview_.set_icon_name("sidebar-show-right-symbolic");
    preview_.set_action_name("win.show-preview");
    // Packed from the end, so the last comes first.
    for (Gtk::Widget* button : {static_cast<Gtk::Widget*>(&preview_), static_cast<Gtk::Widget*>(&assistant_),
                                static_cast<Gtk::Widget*>(&format_)}) {
        button->set_size_request(buttonWidth, -1);
        adw_header_bar_pack_end(headerBar_, button->gobj());
    }
    updateLanguage();
}

void DocumentToolbar::showTitle(const std::string& name, const std::string& place) {
    adw_window_title_set_title(title_, name.c_str());
    adw_window_title_set_subtitle(title_, place.c_str());
}

void DocumentToolbar::updateLanguage() {
    name(format_, t("Syntax formatieren"));
    name(assistant_, t("Claude-Assistent ein-/ausblenden"));
    name(preview_, t("Vorschau ein-/ausblenden"));
}

} // namespace corvanta
