#pragma once

#include "ClaudeAssistant/ClaudeAssistantViewModel.hpp"
#include "Platform/Published.hpp"

#include <string>

namespace corvanta {

/// What the settings pane for the API key holds beside the key itself. Used on the main thread only.
class ClaudeSettingsModel {
public:
    /// `assistant` must outlive this object.
    explicit ClaudeSettingsModel(ClaudeAssistantViewModel& assistant) : assistant_(assistant) {}

    /// Whether the draft holds anything beside white space and line breaks.
    bool canSave() const;

    /// Whether there is a key to be removed.
    bool canRemove() const { return *assistant_.isEnabled; }

    /// Makes the draft, without white space and line breaks at both ends, the key.
    void save();

    /// Removes the key and empties the draft.
    void remove();

    /// What the user has entered and not saved.
    Published<std::string> draftKey;
    Published<bool> didSave{false};

private:
    ClaudeAssistantViewModel& assistant_;
};

} // namespace corvanta
