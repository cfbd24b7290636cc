#pragma once

#include "Platform/Subscription.hpp"
#include "Preview/PreviewFolderAccess.hpp"

#include <gtkmm/box.h>
#include <gtkmm/menubutton.h>
#include <gtkmm/popover.h>

#include <filesystem>

namespace corvanta {

/// A button that lists the folders granted to the preview and ends a grant. Not to be seen while there is
/// none.
class GrantedFolders : public Gtk::MenuButton {
public:
    /// `access` outlives the button.
    explicit GrantedFolders(PreviewFolderAccess& access);

    /// Shows all texts in the language that is in use now.
    void updateLanguage();

private:
    void list(const PreviewFolderAccess::Folders& folders);
    void add(const std::filesystem::path& folder);

    PreviewFolderAccess& access_;
    Gtk::Popover popover_;
    Gtk::Box rows_{Gtk::Orientation::VERTICAL};
    Subscription foldersChanged_;
};

} // namespace corvanta
