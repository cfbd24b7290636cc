#pragma once

#include "ClaudeAssistant/ClaudeAssistantViewModel.hpp"
#include "Platform/Subscription.hpp"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

namespace corvanta {

/// The assistant's panel beside a document.
class ClaudeAssistantView : public Gtk::Box {
public:
    /// In points.
    static constexpr int minimumWidth = 240;
    static constexpr int maximumWidth = 340;

    /// `assistant` outlives the view.
    explicit ClaudeAssistantView(ClaudeAssistantViewModel& assistant);

private:
    void showState(bool isEnabled);

    Gtk::Label title_;
    Gtk::Label state_;
    Subscription stateChanged_;
};

} // namespace corvanta
