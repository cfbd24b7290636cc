// A window with a web view that shows a page and nothing else: no preview in this toolkit can finish faster.
//
//   bare-webkit-view FILE

#include <giomm/file.h>
#include <gtkmm/application.h>
#include <gtkmm/window.h>
#include <webkit/webkit.h>

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: bare-webkit-view FILE\n";
        return 2;
    }
    const std::string page = Gio::File::create_for_path(argv[1])->get_uri();
    const auto application = Gtk::Application::create({}, Gio::Application::Flags::NON_UNIQUE);
    application->signal_activate().connect([&application, &page] {
        auto* view = WEBKIT_WEB_VIEW(webkit_web_view_new());
        webkit_web_view_load_uri(view, page.c_str());
        auto* window = Gtk::make_managed<Gtk::Window>();
        window->set_default_size(1200, 900);
        gtk_window_set_child(window->gobj(), GTK_WIDGET(view));
        application->add_window(*window);
        window->present();
    });
    return application->run();
}
