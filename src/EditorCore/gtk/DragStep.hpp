#pragma once

#include "Platform/Subscription.hpp"

#include <gdkmm/drag.h>
#include <gtkmm/dropcontrollermotion.h>
#include <gtkmm/textview.h>

namespace corvanta {

/// Makes one user action of moving text within a widget by drag and drop. The toolkit makes two: it inserts
/// the text when it is dropped, and takes the old one away when the display server has told that all is done.
class DragStep {
public:
    /// `view` outlives this object.
    explicit DragStep(Gtk::TextView& view);
    DragStep(const DragStep&) = delete;
    DragStep& operator=(const DragStep&) = delete;
    ~DragStep();

private:
    void follow();
    void begin();
    void end();

    Gtk::TextView& view_;
    Glib::RefPtr<Gtk::DropControllerMotion> controller_;
    bool isOpen_ = false;

    Subscription entered_;
    Subscription dropped_;
    Subscription finished_;
    Subscription cancelled_;
};

} // namespace corvanta
