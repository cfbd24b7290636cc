#pragma once

#include "Corvanta/AboutModel.hpp"
#include "Platform/Subscription.hpp"
#include "Platform/Workspace.hpp"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/spinner.h>
#include <gtkmm/window.h>

namespace corvanta {

/// What the program is, whether there is a newer version, and how to support it.
class AboutWindow : public Gtk::Window {
public:
    /// Both outlive the window.
    AboutWindow(AboutModel& model, Workspace& workspace);

private:
    void addProduct();
    void addUpdate();
    void addSupport();
    void showUpdate();
    void show(const char* symbol, const std::string& text);

    AboutModel& model_;
    Workspace& workspace_;

    Gtk::Box column_;
    Gtk::Box result_;
    Gtk::Spinner spinner_;
    Gtk::Image symbol_;
    Gtk::Label text_;
    Gtk::Button openPage_;
    Gtk::Button check_;

    Subscription checkingChanged_;
    Subscription resultChanged_;
};

} // namespace corvanta
