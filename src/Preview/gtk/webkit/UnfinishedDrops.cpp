#include "Preview/gtk/webkit/UnfinishedDrops.hpp"

#include "Platform/gtk/GObjectReference.hpp"

#include <glibmm/main.h>

#include <memory>

namespace corvanta {

namespace {

/// The engine answers with all actions that were offered, which is an answer only when there is one.
bool isAnsweredByTheEngine(GdkDrop* drop) {
    return gdk_drag_action_is_unique(gdk_drop_get_actions(drop)) != FALSE;
}

} // namespace

UnfinishedDrops::UnfinishedDrops(GtkWidget* parent) {
    GtkEventController* events = gtk_event_controller_legacy_new();
    gtk_event_controller_set_propagation_phase(events, GTK_PHASE_CAPTURE);
    eventCame_ = SignalConnection(
        events, "event",
        +[](GtkEventControllerLegacy*, GdkEvent* event, gpointer) -> gboolean {
            if (gdk_event_get_event_type(event) != GDK_DROP_START)
                return FALSE;
            GdkDrop* drop = gdk_dnd_event_get_drop(event);
            if (!isAnsweredByTheEngine(drop)) {
                // The engine has taken it in when the event has gone its way. What was moved within the page
                // it has taken out there itself; nobody else is to remove anything.
                const auto kept = std::make_shared<GObjectReference<GdkDrop>>(GDK_DROP(g_object_ref(drop)));
                Glib::signal_idle().connect_once([kept] { gdk_drop_finish(kept->get(), GDK_ACTION_COPY); },
                                                 Glib::PRIORITY_HIGH);
            }
            return FALSE;
        },
        nullptr);
    gtk_widget_add_controller(parent, events);
}

} // namespace corvanta
