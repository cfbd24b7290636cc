#include "Settings/gtk/EditorSettingsView.hpp"

#include "DesignSystem/gtk/Formular.hpp"
#include "DesignSystem/t.hpp"
#include "EditorCore/EditorTheme.hpp"

#include <fmt/format.h>
#include <gtkmm/stringlist.h>

#include <algorithm>
#include <string>

namespace corvanta {

namespace {

std::string titleOf(const EditorTheme& theme) {
    if (theme.id == "klassisch")
        return t("Klassisch");
    if (theme.id == "kontrast")
        return t("Kontrast");
    return t("Dezent (Standard)");
}

} // namespace

EditorSettingsView::EditorSettingsView(AppSettings& settings)
    : Gtk::Widget(GTK_WIDGET(adw_preferences_page_new())), settings_(settings) {
    auto* page = ADW_PREFERENCES_PAGE(gobj());
    adw_preferences_page_set_title(page, t("Editor").c_str());
    adw_preferences_page_set_icon_name(page, "text-editor-symbolic");
    AdwPreferencesGroup* group = Formular::gruppe(page);
    addTheme(group);
    addFontSize(group);
}

void EditorSettingsView::addTheme(AdwPreferencesGroup* group) {
    const auto titles = Gtk::StringList::create({});
    for (const EditorTheme* theme : EditorTheme::all())
        titles->append(titleOf(*theme));
    theme_ = ADW_COMBO_ROW(adw_combo_row_new());
    adw_preferences_row_set_title(ADW_PREFERENCES_ROW(theme_), t("Farbschema").c_str());
    adw_combo_row_set_model(theme_, G_LIST_MODEL(titles->gobj()));
    adw_preferences_group_add(group, GTK_WIDGET(theme_));
    showTheme();
    themeChosen_ = SignalConnection(
        theme_, "notify::selected",
        +[](AdwComboRow*, GParamSpec*, gpointer self) {
            static_cast<EditorSettingsView*>(self)->themeChosen();
        },
        this);
    themeChanged_ = settings_.editorThemeID.subscribe([this](const std::string&) { showTheme(); });
}

void EditorSettingsView::showTheme() {
    const auto& themes = EditorTheme::all();
    const auto* const shown = std::ranges::find(themes, &EditorTheme::theme(*settings_.editorThemeID));
    adw_combo_row_set_selected(theme_, static_cast<guint>(shown - themes.begin()));
}

void EditorSettingsView::themeChosen() {
    const EditorTheme* chosen = EditorTheme::all().at(adw_combo_row_get_selected(theme_));
    // An id that no theme has is shown as the standard theme, and stays until another one is chosen.
    if (chosen != &EditorTheme::theme(*settings_.editorThemeID))
        settings_.editorThemeID = chosen->id;
}

void EditorSettingsView::addFontSize(AdwPreferencesGroup* group) {
    fontSize_.set_range(smallestFontSize, largestFontSize);
    fontSize_.set_increments(1, 2);
    fontSize_.set_size_request(200, -1);
    fontSizeMoved_ = fontSize_.signal_value_changed().connect(
        [this] { settings_.editorFontSize = fontSize_.get_value(); });
    fontSizeChanged_ = settings_.editorFontSize.subscribe([this](double) { showFontSize(); });
    showFontSize();
    adw_preferences_group_add(group, Formular::zeile(t("Schriftgröße"), fontSize_, &fontSizeValue_));
}

void EditorSettingsView::showFontSize() {
    // Showing a stored value that the slider cannot reach must not change it.
    fontSizeMoved_.block();
    fontSize_.set_value(*settings_.editorFontSize);
    fontSizeMoved_.unblock();
    fontSizeValue_.set_text(fmt::format("{} pt", static_cast<long long>(*settings_.editorFontSize)));
}

} // namespace corvanta
