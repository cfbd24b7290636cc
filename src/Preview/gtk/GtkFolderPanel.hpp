#pragma once

#include "Preview/FolderPanel.hpp"

#include <gtkmm/filechooserdialog.h>
#include <gtkmm/widget.h>

#include <filesystem>
#include <functional>
#include <optional>

namespace corvanta {

/// The desktop's dialog for choosing a folder, modal for the window of a widget.
class GtkFolderPanel final : public FolderPanel {
public:
    /// `widget` outlives the panel.
    explicit GtkFolderPanel(Gtk::Widget& widget) : widget_(widget) {}
    ~GtkFolderPanel() override { close(); }

    GtkFolderPanel(const GtkFolderPanel&) = delete;
    GtkFolderPanel& operator=(const GtkFolderPanel&) = delete;

    void choose(const Question& question,
                std::function<void(const std::optional<std::filesystem::path>&)> chosen) override;

private:
    void close();

    Gtk::Widget& widget_;
    /// Belongs to the toolkit until it is closed.
    Gtk::FileChooserDialog* dialog_ = nullptr;
};

} // namespace corvanta
