#pragma once

#include "ClaudeAssistant/ClaudeAssistantViewModel.hpp"
#include "ClaudeAssistant/ClaudeSettingsModel.hpp"
#include "Platform/Subscription.hpp"

#include <adwaita.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/passwordentry.h>
#include <gtkmm/widget.h>

namespace corvanta {

/// The settings of the assistant: entering and removing the API key, which is never shown in clear text.
class ClaudeSettingsView : public Gtk::Widget {
public:
    /// `assistant` outlives the view.
    explicit ClaudeSettingsView(ClaudeAssistantViewModel& assistant);

private:
    void addKey(AdwPreferencesGroup* group);
    void addButtons(AdwPreferencesGroup* group);
    void addState(AdwPreferencesGroup* group);
    void showState();

    ClaudeAssistantViewModel& assistant_;
    ClaudeSettingsModel model_;
    Gtk::PasswordEntry key_;
    Gtk::Button save_;
    Gtk::Button remove_;
    Gtk::Image stateSymbol_;
    Gtk::Label state_;

    Subscription draftChanged_;
    Subscription stateChanged_;
};

} // namespace corvanta
