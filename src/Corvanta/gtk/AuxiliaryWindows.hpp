#pragma once

#include "Platform/MainQueue.hpp"

#include <gtkmm/application.h>
#include <gtkmm/window.h>

#include <functional>
#include <memory>

namespace corvanta {

/// The windows that belong to no document: settings, help, shortcuts and about, each of them open
/// once at most.
class AuxiliaryWindows {
public:
    using Make = std::function<std::unique_ptr<Gtk::Window>()>;

    /// How the windows are made.
    struct Makers {
        Make settings;
        Make help;
        Make shortcuts;
        Make about;
    };

    /// `application` and `mainQueue` outlive this object.
    AuxiliaryWindows(Gtk::Application& application, MainQueue& mainQueue, Makers makers);

    void showSettings() { show(settings_); }
    void showHelp() { show(help_); }
    void showShortcuts() { show(shortcuts_); }
    void showAbout() { show(about_); }

    void closeAll();

    /// Makes the open windows anew in the language that is in use now.
    void updateLanguage();

private:
    struct Slot {
        Make make;
        std::unique_ptr<Gtk::Window> window;
    };

    void show(Slot& slot);
    void close(Slot& slot);

    Gtk::Application& application_;
    MainQueue& mainQueue_;
    Slot settings_;
    Slot help_;
    Slot shortcuts_;
    Slot about_;
};

} // namespace corvanta
