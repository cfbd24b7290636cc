#include "Preview/gtk/GrantedFolders.hpp"

#include "DesignSystem/t.hpp"

#include <glibmm/convert.h>
#include <glibmm/main.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

namespace corvanta {

GrantedFolders::GrantedFolders(PreviewFolderAccess& access) : access_(access) {
    set_icon_name("folder-symbolic");
    popover_.set_child(rows_);
    set_popover(popover_);
    foldersChanged_ = access_.releasedFolders.subscribe(
        [this](const PreviewFolderAccess::Folders& folders) { list(folders); });
    updateLanguage();
}

void GrantedFolders::updateLanguage() {
    set_tooltip_text(t("Freigegebene Ordner"));
    list(*access_.releasedFolders);
}

void GrantedFolders::list(const PreviewFolderAccess::Folders& folders) {
    while (Gtk::Widget* row = rows_.get_first_child())
        rows_.remove(*row);
    for (const std::filesystem::path& folder : folders)
        add(folder);
    set_visible(!folders.empty());
}

void GrantedFolders::add(const std::filesystem::path& folder) {
    auto* row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 6);
    auto* name = Gtk::make_managed<Gtk::Label>(Glib::filename_display_name(folder.native()));
    name->set_xalign(0);
    name->set_hexpand(true);
    name->set_ellipsize(Pango::EllipsizeMode::START);
    name->set_width_chars(30);
    name->set_tooltip_text(name->get_text());
    row->append(*name);
    auto* end = Gtk::make_managed<Gtk::Button>();
    end->set_icon_name("list-remove-symbolic");
    end->set_tooltip_text(t("Freigabe beenden"));
    end->set_has_frame(false);
    // Later, because ending the grant removes the button that is being clicked.
    end->signal_clicked().connect([&access = access_, folder] {
        Glib::signal_idle().connect_once([&access, folder] { access.release(folder); });
    });
    row->append(*end);
    rows_.append(*row);
}

} // namespace corvanta
