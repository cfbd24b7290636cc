#include "ClaudeAssistant/gtk/ClaudeAssistantView.hpp"

#include "DesignSystem/Mass.hpp"
#include "DesignSystem/t.hpp"

namespace corvanta {

ClaudeAssistantView::ClaudeAssistantView(ClaudeAssistantViewModel& assistant)
    : Gtk::Box(Gtk::Orientation::VERTICAL, Mass::mittel),
      stateChanged_(assistant.isEnabled.subscribe([this](bool isEnabled) { showState(isEnabled); })) {
    set_margin(Mass::gross);
    set_valign(Gtk::Align::START);
    title_.set_text(t("Claude-Assistent"));
    title_.set_xalign(0);
    title_.add_css_class("schrift-titel");
    append(title_);
    state_.set_xalign(0);
    state_.set_wrap(true);
    append(state_);
    showState(*assistant.isEnabled);
}

void ClaudeAssistantView::showState(bool isEnabled) {
    state_.set_text(isEnabled ? t("Aktiv")
                              : t("Kein API-Key hinterlegt. Trage ihn in den Einstellungen ein, um den "
                                  "Assistenten zu aktivieren."));
}

} // namespace corvanta
