#pragma once

#include "Platform/gtk/SignalConnection.hpp"

#include <gtkmm/widget.h>

#include <filesystem>
#include <functional>
#include <vector>

namespace corvanta {

/// Takes the files that are dropped anywhere on a widget, before what is in it: a text would take a file's
/// name for a text. Whatever else is dropped is left to what is in the widget.
class FileDrop {
public:
    /// `onFile` is called for each file of this machine that falls. `widget` outlives this object.
    FileDrop(Gtk::Widget& widget, std::function<void(const std::filesystem::path&)> onFile);

private:
    static std::vector<std::filesystem::path> localFiles(const GValue* files);
    void lookAhead();
    bool take(const GValue* files);

    std::function<void(const std::filesystem::path&)> onFile_;
    /// The widget's.
    GtkDropTarget* target_;
    SignalConnection arrived_;
    SignalConnection dropped_;
};

} // namespace corvanta
