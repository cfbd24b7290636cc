#pragma once

#include "EditorCore/gtk/GtkTextStorage.hpp"
#include "Platform/Subscription.hpp"
#include "Platform/gtk/SignalConnection.hpp"

#include <gtkmm/textview.h>

namespace corvanta {

/// Lets a view show the start of a large text at once, and puts the rest of the text into its buffer when
/// that has been painted: for the text widget, to take in ten megabytes is more work than to start.
class LateCompletion {
public:
    /// `view`, a source view, shows the buffer of `storage`; both outlive this.
    LateCompletion(Gtk::TextView& view, GtkTextStorage& storage);

private:
    void followPictures();
    void didPaint();

    Gtk::TextView& view_;
    GtkTextStorage& storage_;
    Subscription mapped_;
    Subscription unmapped_;
    SignalConnection painted_;
    int picturesToCome_ = 0;
};

} // namespace corvanta
