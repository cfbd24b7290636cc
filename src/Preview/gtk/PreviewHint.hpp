#pragma once

#include "Platform/gtk/WrappingRow.hpp"
#include "Preview/PreviewPane.hpp"
#include "Preview/gtk/GrantedFolders.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

namespace corvanta {

/// The row above the preview that says why linked files do not show, and how to change that.
class PreviewHint : public Gtk::Box {
public:
    /// `access` outlives the row.
    explicit PreviewHint(PreviewFolderAccess& access);

    /// Says what stands in the way in `pane`; not to be seen when nothing does.
    void show(const PreviewPane& pane);

    /// Shows all texts in the language that is in use now.
    void updateLanguage(const PreviewPane& pane);

    /// The button that asks for the folder.
    Gtk::Button& grantButton() { return grantButton_; }

private:
    static constexpr int spacing = 8;

    Gtk::Box message_{Gtk::Orientation::HORIZONTAL, spacing};
    Gtk::Image symbol_;
    Gtk::Box lines_{Gtk::Orientation::VERTICAL};
    Gtk::Label text_;
    Gtk::Label missing_;
    Gtk::Box buttons_{Gtk::Orientation::HORIZONTAL, spacing};
    Gtk::Button grantButton_;
    GrantedFolders grantedFolders_;
    WrappingRow row_{message_, buttons_, spacing};
};

} // namespace corvanta
