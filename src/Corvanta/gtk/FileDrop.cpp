#include "Corvanta/gtk/FileDrop.hpp"

#include <gtk/gtk.h>

#include <memory>
#include <utility>

namespace corvanta {

FileDrop::FileDrop(Gtk::Widget& widget, std::function<void(const std::filesystem::path&)> onFile)
    : onFile_(std::move(onFile)), target_(gtk_drop_target_new(GDK_TYPE_FILE_LIST, GDK_ACTION_COPY)) {
    gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(target_), GTK_PHASE_CAPTURE);
    gtk_drop_target_set_preload(target_, TRUE);
    arrived_ = SignalConnection(
        target_, "notify::value",
        +[](GtkDropTarget*, GParamSpec*, gpointer self) { static_cast<FileDrop*>(self)->lookAhead(); }, this);
    dropped_ = SignalConnection(
        target_, "drop",
        +[](GtkDropTarget*, const GValue* files, double, double, gpointer self) -> gboolean {
            return static_cast<FileDrop*>(self)->take(files) ? TRUE : FALSE;
        },
        this);
    gtk_widget_add_controller(widget.gobj(), GTK_EVENT_CONTROLLER(target_));
}

/// A link to a page of the web looks like a list of files until it is read.
void FileDrop::lookAhead() {
    const GValue* files = gtk_drop_target_get_value(target_);
    if (files != nullptr && localFiles(files).empty())
        gtk_drop_target_reject(target_);
}

bool FileDrop::take(const GValue* files) {
    const std::vector<std::filesystem::path> paths = localFiles(files);
    for (const std::filesystem::path& path : paths)
        onFile_(path);
    return !paths.empty();
}

std::vector<std::filesystem::path> FileDrop::localFiles(const GValue* files) {
    std::vector<std::filesystem::path> paths;
    const std::unique_ptr<GSList, decltype(&g_slist_free)> list(
        gdk_file_list_get_files(static_cast<GdkFileList*>(g_value_get_boxed(files))), &g_slist_free);
    for (const GSList* file = list.get(); file != nullptr; file = file->next) {
        // What is not on this machine has no path.
        if (const char* path = g_file_peek_path(G_FILE(file->data)))
            paths.emplace_back(path);
    }
    return paths;
}

} // namespace corvanta
