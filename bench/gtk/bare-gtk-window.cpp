// A window with some lines of text and nothing else: no program of this toolkit can start faster.

#include <gtkmm/application.h>
#include <gtkmm/label.h>
#include <gtkmm/window.h>

#include <string>

int main() {
    const auto application = Gtk::Application::create({}, Gio::Application::Flags::NON_UNIQUE);
    application->signal_activate().connect([&application] {
        std::string text;
        for (int line = 1; line <= 40; ++line)
            text += "Zeile " + std::to_string(line) + ": der Text eines Fensters ohne alles andere.\n";

        auto* label = Gtk::make_managed<Gtk::Label>(text);
        label->set_xalign(0);
        auto* window = Gtk::make_managed<Gtk::Window>();
        window->set_default_size(1200, 900);
        window->set_child(*label);
        application->add_window(*window);
        window->present();
    });
    return application->run();
}
