#include "Preview/gtk/PreviewHint.hpp"

#include "DesignSystem/t.hpp"

#include <glibmm/ustring.h>

namespace corvanta {

namespace {

/// In characters; a text that breaks more often is hard to read.
constexpr int leastLine = 24;

} // namespace

PreviewHint::PreviewHint(PreviewFolderAccess& access)
    : Gtk::Box(Gtk::Orientation::HORIZONTAL), grantedFolders_(access) {
    symbol_.set_from_icon_name("image-x-generic-symbolic");
    for (Gtk::Label* label : {&text_, &missing_}) {
        label->set_xalign(0);
        label->set_wrap(true);
        label->set_wrap_mode(Pango::WrapMode::WORD_CHAR);
        label->set_width_chars(leastLine);
        label->add_css_class("schrift-klein");
        label->add_css_class("dim-label");
        lines_.append(*label);
    }
    lines_.set_hexpand(true);
    row_.set_hexpand(true);
    lines_.set_valign(Gtk::Align::CENTER);
    grantButton_.set_valign(Gtk::Align::CENTER);
    grantedFolders_.set_valign(Gtk::Align::CENTER);

    symbol_.add_css_class("dim-label");
    set_margin(6);
    message_.append(symbol_);
    message_.append(lines_);
    buttons_.append(grantButton_);
    buttons_.append(grantedFolders_);
    append(row_);
    set_visible(false);
}

void PreviewHint::updateLanguage(const PreviewPane& pane) {
    grantedFolders_.updateLanguage();
    show(pane);
}

void PreviewHint::show(const PreviewPane& pane) {
    const std::optional<PreviewPane::Obstacle> obstacle = pane.obstacle();
    set_visible(obstacle.has_value());
    if (!obstacle)
        return;
    text_.set_text(PreviewPane::hint(*obstacle));
    grantButton_.set_label(t("Ordner freigeben …"));
    grantButton_.set_visible(obstacle == PreviewPane::Obstacle::needsFolder);
    const std::optional<std::string> missing = pane.missingResourceLine();
    missing_.set_visible(missing.has_value());
    // A page may ask for any bytes as a path.
    missing_.set_text(Glib::ustring(missing.value_or(std::string())).make_valid());
}

} // namespace corvanta
