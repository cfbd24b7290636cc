#include "ClaudeAssistant/gtk/ClaudeSettingsView.hpp"

#include "DesignSystem/Mass.hpp"
#include "DesignSystem/gtk/Formular.hpp"
#include "DesignSystem/t.hpp"

#include <gtkmm/box.h>

namespace corvanta {

ClaudeSettingsView::ClaudeSettingsView(ClaudeAssistantViewModel& assistant)
    : Gtk::Widget(GTK_WIDGET(adw_preferences_page_new())), assistant_(assistant), model_(assistant) {
    auto* page = ADW_PREFERENCES_PAGE(gobj());
    adw_preferences_page_set_title(page, t("Claude").c_str());
    adw_preferences_page_set_icon_name(page, "starred-symbolic");
    // A part of its own, so that it stands above the line for the key.
    adw_preferences_group_add(
        Formular::gruppe(page),
        Formular::erklaerung(
            t("Mit deinem eigenen Anthropic-API-Schlüssel kann Claude dir beim Schreiben, Erklären und "
              "Prüfen von Code helfen. Ohne Schlüssel funktioniert Corvanta vollständig – der Assistent "
              "bleibt dann ausgeblendet.")));
    AdwPreferencesGroup* group = Formular::gruppe(page);
    addKey(group);
    addButtons(group);
    addState(group);
    draftChanged_ = model_.draftKey.subscribe([this](const std::string&) { showState(); });
    stateChanged_ = assistant_.isEnabled.subscribe([this](bool) { showState(); });
    showState();
}

void ClaudeSettingsView::addKey(AdwPreferencesGroup* group) {
    key_.set_hexpand(true);
    key_.property_text().signal_changed().connect([this] {
        if (key_.get_text().raw() != *model_.draftKey)
            model_.draftKey = key_.get_text().raw();
    });
    adw_preferences_group_add(group, Formular::zeile(t("API-Schlüssel"), key_));
    adw_preferences_group_add(
        group,
        Formular::erklaerung(t("Der Schlüssel wird ausschließlich im macOS-Schlüsselbund gespeichert – "
                               "niemals im Klartext auf der Festplatte.")));
}

void ClaudeSettingsView::addButtons(AdwPreferencesGroup* group) {
    save_.set_label(t("Speichern"));
    save_.add_css_class("suggested-action");
    save_.signal_clicked().connect([this] { model_.save(); });
    remove_.set_label(t("Entfernen"));
    remove_.add_css_class("destructive-action");
    remove_.signal_clicked().connect([this] { model_.remove(); });
    auto* buttons = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, Mass::klein);
    buttons->append(save_);
    buttons->append(remove_);
    adw_preferences_group_add(group, GTK_WIDGET(buttons->gobj()));
}

void ClaudeSettingsView::addState(AdwPreferencesGroup* group) {
    stateSymbol_.set_from_icon_name("emblem-ok-symbolic");
    stateSymbol_.add_css_class("success");
    auto* state = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, Mass::knapp);
    state->set_margin_top(Mass::mittel);
    state->append(stateSymbol_);
    state->append(state_);
    adw_preferences_group_add(group, GTK_WIDGET(state->gobj()));
}

void ClaudeSettingsView::showState() {
    const bool isEnabled = *assistant_.isEnabled;
    if (key_.get_text().raw() != *model_.draftKey)
        key_.set_text(*model_.draftKey);
    save_.set_sensitive(model_.canSave());
    remove_.set_sensitive(model_.canRemove());
    stateSymbol_.set_visible(isEnabled);
    state_.set_text(isEnabled ? t("Aktiv") : t("Nicht aktiviert"));
}

} // namespace corvanta
