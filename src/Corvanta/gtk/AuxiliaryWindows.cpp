#include "Corvanta/gtk/AuxiliaryWindows.hpp"

#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

#include <utility>

namespace corvanta {

namespace {

/// As on a dialog, and as on a document.
void closeByKeys(Gtk::Window& window) {
    const auto keys = Gtk::ShortcutController::create();
    keys->add_shortcut(Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string("Escape|<Control>w"),
                                             Gtk::NamedAction::create("window.close")));
    window.add_controller(keys);
}

} // namespace

AuxiliaryWindows::AuxiliaryWindows(Gtk::Application& application, MainQueue& mainQueue, Makers makers)
    : application_(application),
      mainQueue_(mainQueue),
      settings_{std::move(makers.settings), nullptr},
      help_{std::move(makers.help), nullptr},
      shortcuts_{std::move(makers.shortcuts), nullptr},
      about_{std::move(makers.about), nullptr} {}

void AuxiliaryWindows::show(Slot& slot) {
    if (!slot.window) {
        slot.window = slot.make();
        application_.add_window(*slot.window);
        closeByKeys(*slot.window);
        slot.window->signal_close_request().connect(
            [this, &slot] {
                close(slot);
                return true;
            },
            false);
    }
    slot.window->present();
}

void AuxiliaryWindows::close(Slot& slot) {
    slot.window->set_visible(false);
    application_.remove_window(*slot.window);
    // Destroyed later, because the window is still busy telling us.
    mainQueue_.async([last = std::shared_ptr<Gtk::Window>(std::move(slot.window))] {});
}

void AuxiliaryWindows::closeAll() {
    for (Slot* slot : {&settings_, &help_, &shortcuts_, &about_}) {
        if (slot->window)
            close(*slot);
    }
}

void AuxiliaryWindows::updateLanguage() {
    for (Slot* slot : {&settings_, &help_, &shortcuts_, &about_}) {
        if (!slot->window)
            continue;
        close(*slot);
        show(*slot);
    }
}

} // namespace corvanta
