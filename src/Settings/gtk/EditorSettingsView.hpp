#pragma once

#include "Platform/Subscription.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Settings/AppSettings.hpp"

#include <adwaita.h>
#include <gtkmm/label.h>
#include <gtkmm/scale.h>
#include <gtkmm/widget.h>

namespace corvanta {

/// The settings of the code pane: its colours and the size of its text.
class EditorSettingsView : public Gtk::Widget {
public:
    static constexpr double smallestFontSize = 10;
    static constexpr double largestFontSize = 24;

    /// `settings` outlives the view.
    explicit EditorSettingsView(AppSettings& settings);

private:
    void addTheme(AdwPreferencesGroup* group);
    void addFontSize(AdwPreferencesGroup* group);
    void showTheme();
    void showFontSize();
    void themeChosen();

    AppSettings& settings_;
    AdwComboRow* theme_ = nullptr;
    Gtk::Scale fontSize_;
    Gtk::Label fontSizeValue_;

    SignalConnection themeChosen_;
    sigc::connection fontSizeMoved_;
    Subscription themeChanged_;
    Subscription fontSizeChanged_;
};

} // namespace corvanta
