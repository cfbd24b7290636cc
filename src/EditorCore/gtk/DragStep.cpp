#include "EditorCore/gtk/DragStep.hpp"

#include <gdkmm/drop.h>

namespace corvanta {

DragStep::DragStep(Gtk::TextView& view) : view_(view), controller_(Gtk::DropControllerMotion::create()) {
    entered_ = Subscription(controller_->signal_enter().connect([this](double, double) { follow(); }));
    view_.add_controller(controller_);
}

DragStep::~DragStep() {
    end();
}

/// Follows what is dragged over the widget, when it comes from this program: of others only the drop is
/// heard.
void DragStep::follow() {
    const Glib::RefPtr<Gdk::Drop> drop = controller_->get_drop();
    const Glib::RefPtr<Gdk::Drag> drag = drop ? drop->get_drag() : Glib::RefPtr<Gdk::Drag>();
    if (!drag || isOpen_)
        return;
    dropped_ = Subscription(drag->signal_drop_performed().connect([this] { begin(); }));
    // After the widget, which takes the old text away.
    finished_ = Subscription(drag->signal_dnd_finished().connect([this] { end(); }));
    cancelled_ = Subscription(drag->signal_cancel().connect([this](Gdk::DragCancelReason) { end(); }));
}

void DragStep::begin() {
    // Another program may take as long as it likes for what is dropped there.
    if (isOpen_ || !controller_->contains_pointer())
        return;
    isOpen_ = true;
    view_.get_buffer()->begin_user_action();
}

void DragStep::end() {
    if (!isOpen_)
        return;
    isOpen_ = false;
    view_.get_buffer()->end_user_action();
}

} // namespace corvanta
