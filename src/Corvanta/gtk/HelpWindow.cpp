#include "Corvanta/gtk/HelpWindow.hpp"

#include "Corvanta/HelpTopic.hpp"
#include "DesignSystem/Mass.hpp"
#include "DesignSystem/t.hpp"

#include <adwaita.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

namespace corvanta {

namespace {

constexpr int widestColumn = 520;
constexpr int leastWidth = 480;
constexpr int defaultHeight = 620;

Gtk::Label& paragraph(const std::string& text, const char* styleClass) {
    auto* label = Gtk::make_managed<Gtk::Label>(text);
    label->set_wrap(true);
    label->set_xalign(0);
    label->set_selectable(true);
    // Otherwise the whole text is marked as soon as the window opens.
    label->set_focusable(false);
    label->add_css_class(styleClass);
    return *label;
}

} // namespace

HelpWindow::HelpWindow() {
    set_title(t("Corvanta-Hilfe"));
    set_default_size(widestColumn + 2 * Mass::weit, defaultHeight);
    set_size_request(leastWidth, -1);

    auto* column = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, Mass::knapp);
    column->set_margin(Mass::weit);
    column->append(paragraph(t("Corvanta-Hilfe"), "schrift-zahl"));
    for (const HelpTopic& topic : HelpTopic::topics) {
        Gtk::Label& title = paragraph(t(topic.titleKey), "schrift-titel");
        title.set_margin_top(Mass::gross);
        column->append(title);
        column->append(paragraph(t(topic.bodyKey), "schrift-text"));
    }
    Gtk::Label& credit =
        paragraph(t("Angeregt von den handgeschriebenen Seiten des frühen Webs. Gestaltet und "
                    "programmiert vom Corvanta-Team."),
                  "schrift-klein");
    credit.add_css_class("dim-label");
    credit.set_margin_top(Mass::block);
    column->append(credit);

    GtkWidget* clamp = adw_clamp_new();
    adw_clamp_set_maximum_size(ADW_CLAMP(clamp), widestColumn + 2 * Mass::weit);
    adw_clamp_set_child(ADW_CLAMP(clamp), GTK_WIDGET(column->gobj()));
    auto* scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
    scrolled->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    gtk_scrolled_window_set_child(scrolled->gobj(), clamp);
    // The only thing here that takes the keyboard.
    gtk_accessible_update_property(GTK_ACCESSIBLE(scrolled->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   t("Corvanta-Hilfe").c_str(), -1);
    set_child(*scrolled);
}

} // namespace corvanta
