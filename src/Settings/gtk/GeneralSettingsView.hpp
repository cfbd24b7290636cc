#pragma once

#include "DesignSystem/Sprache.hpp"
#include "Platform/UserDefaults.hpp"
#include "Platform/Workspace.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Settings/AppSettings.hpp"

#include <adwaita.h>
#include <gtkmm/label.h>
#include <gtkmm/scale.h>
#include <gtkmm/switch.h>
#include <gtkmm/widget.h>

#include <string>
#include <vector>

namespace corvanta {

/// The settings of the interface: its language, the size of its text, and whether to look for updates.
class GeneralSettingsView : public Gtk::Widget {
public:
    /// All of them outlive the view.
    GeneralSettingsView(AppSettings& settings, UserDefaults& userDefaults, Sprache& sprache,
                        Workspace& workspace);

private:
    void addLanguage();
    void addTextSize();
    void addUpdateCheck();
    void showTextSize();
    void languageChosen();

    AppSettings& settings_;
    UserDefaults& userDefaults_;
    Sprache& sprache_;
    Workspace& workspace_;

    /// Of the languages in the picker, in its order.
    std::vector<std::string> kennungen_;
    AdwComboRow* language_ = nullptr;
    Gtk::Scale textSize_;
    Gtk::Label textSizeValue_;
    Gtk::Switch checkForUpdates_;

    SignalConnection languageChosen_;
    sigc::connection textSizeMoved_;
    Subscription textSizeChanged_;
    Subscription checkChanged_;
};

} // namespace corvanta
