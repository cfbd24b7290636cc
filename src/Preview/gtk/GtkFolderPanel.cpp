#include "Preview/gtk/GtkFolderPanel.hpp"

#include "DesignSystem/t.hpp"

#include <giomm/file.h>
#include <gtk/gtk.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <utility>

namespace corvanta {

void GtkFolderPanel::choose(const Question& question,
                            std::function<void(const std::optional<std::filesystem::path>&)> chosen) {
    close();
    GtkRoot* root = gtk_widget_get_root(widget_.gobj());
    // The toolkit's own type, wrapped: it cannot dispose of an instance of a derived one, such as gtkmm's.
    dialog_ = Glib::wrap(GTK_FILE_CHOOSER_DIALOG(gtk_file_chooser_dialog_new(
        t("Ordner freigeben …").c_str(), GTK_IS_WINDOW(root) ? GTK_WINDOW(root) : nullptr,
        GTK_FILE_CHOOSER_ACTION_SELECT_FOLDER, nullptr, nullptr)));
    dialog_->set_modal(true);
    dialog_->set_create_folders(false);
    dialog_->add_button(t("Abbrechen"), GTK_RESPONSE_CANCEL);
    dialog_->add_button(question.prompt, GTK_RESPONSE_ACCEPT);
    dialog_->set_default_response(GTK_RESPONSE_ACCEPT);
    dialog_->set_current_folder(Gio::File::create_for_path(question.folder.native()));

    auto* message = Gtk::make_managed<Gtk::Label>(question.message);
    message->set_wrap(true);
    message->set_xalign(0);
    message->set_margin(12);
    dialog_->get_content_area()->prepend(*message);

    dialog_->signal_response().connect([panel = this, chosen = std::move(chosen)](int response) {
        std::optional<std::filesystem::path> folder;
        if (response == GTK_RESPONSE_ACCEPT) {
            if (const Glib::RefPtr<Gio::File> file = panel->dialog_->get_file();
                file && !file->get_path().empty())
                folder = file->get_path();
        }
        // Closing the dialog destroys this very closure.
        const auto answer = chosen;
        panel->close();
        answer(folder);
    });
    dialog_->show();
}

void GtkFolderPanel::close() {
    if (dialog_ != nullptr)
        gtk_window_destroy(GTK_WINDOW(std::exchange(dialog_, nullptr)->gobj()));
}

} // namespace corvanta
