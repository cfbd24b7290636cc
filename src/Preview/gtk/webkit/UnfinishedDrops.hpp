#pragma once

#include "Platform/gtk/SignalConnection.hpp"

#include <gtk/gtk.h>

namespace corvanta {

/// Ends what the engine leaves unfinished: on X11 it takes in what falls on the page, but does not tell
/// whoever let it fall when both copying and moving were offered. The picture that is dragged would stay on
/// the screen for ever, and the widget it comes from would go on waiting instead of listening to the pointer.
class UnfinishedDrops {
public:
    /// `parent` has the engine's widget in it and outlives this object.
    explicit UnfinishedDrops(GtkWidget* parent);

private:
    SignalConnection eventCame_;
};

} // namespace corvanta
