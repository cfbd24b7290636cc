#include "Settings/gtk/GeneralSettingsView.hpp"

#include "DesignSystem/Mass.hpp"
#include "DesignSystem/Schrift.hpp"
#include "DesignSystem/gtk/Formular.hpp"
#include "DesignSystem/t.hpp"

#include <fmt/format.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/stringlist.h>

#include <algorithm>

namespace corvanta {

namespace {

AdwPreferencesPage* pageOf(Gtk::Widget& view) {
    return ADW_PREFERENCES_PAGE(view.gobj());
}

} // namespace

GeneralSettingsView::GeneralSettingsView(AppSettings& settings, UserDefaults& userDefaults, Sprache& sprache,
                                         Workspace& workspace)
    : Gtk::Widget(GTK_WIDGET(adw_preferences_page_new())),
      settings_(settings),
      userDefaults_(userDefaults),
      sprache_(sprache),
      workspace_(workspace) {
    adw_preferences_page_set_title(pageOf(*this), t("Allgemein").c_str());
    adw_preferences_page_set_icon_name(pageOf(*this), "emblem-system-symbolic");
    addLanguage();
    addTextSize();
    addUpdateCheck();
}

void GeneralSettingsView::addLanguage() {
    AdwPreferencesGroup* group = Formular::gruppe(pageOf(*this));

    kennungen_ = {""};
    const auto names = Gtk::StringList::create({t("System")});
    for (const Sprachsatz& satz : sprache_.verfuegbare()) {
        kennungen_.push_back(satz.kennung);
        names->append(satz.name);
    }
    language_ = ADW_COMBO_ROW(adw_combo_row_new());
    adw_preferences_row_set_title(ADW_PREFERENCES_ROW(language_), t("Sprache").c_str());
    adw_combo_row_set_model(language_, G_LIST_MODEL(names->gobj()));
    const auto chosen = std::ranges::find(kennungen_, sprache_.gewaehlteKennung());
    adw_combo_row_set_selected(language_, chosen == kennungen_.end()
                                              ? GTK_INVALID_LIST_POSITION
                                              : static_cast<guint>(chosen - kennungen_.begin()));
    languageChosen_ = SignalConnection(
        language_, "notify::selected",
        +[](AdwComboRow*, GParamSpec*, gpointer self) {
            static_cast<GeneralSettingsView*>(self)->languageChosen();
        },
        this);
    adw_preferences_group_add(group, GTK_WIDGET(language_));

    adw_preferences_group_add(
        group,
        Formular::erklaerung(
            t("Dort liegt _Vorlage.json mit allen Texten. Eine Kopie davon, umbenannt auf das Sprachkürzel, "
              "ergibt eine weitere Sprache. Sie erscheint nach einem Neustart in der Auswahl. Die Menüs "
              "Ablage, Bearbeiten, Fenster und Hilfe kommen von macOS und folgen ebenfalls erst nach einem "
              "Neustart.")));

    auto* buttons = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, Mass::klein);
    auto* showFolder = Gtk::make_managed<Gtk::Button>(t("Ordner zeigen"));
    showFolder->signal_clicked().connect([this] { workspace_.showInFileManager(sprache_.eigenerOrdner()); });
    buttons->append(*showFolder);
    auto* readAgain = Gtk::make_managed<Gtk::Button>(t("Neu einlesen"));
    readAgain->signal_clicked().connect([this] { sprache_.neuLaden(); });
    buttons->append(*readAgain);
    adw_preferences_group_add(group, GTK_WIDGET(buttons->gobj()));
}

void GeneralSettingsView::languageChosen() {
    const guint selected = adw_combo_row_get_selected(language_);
    if (selected < kennungen_.size())
        sprache_.setGewaehlteKennung(kennungen_[selected]);
}

void GeneralSettingsView::addTextSize() {
    textSize_.set_range(Schrift::kleinstes, Schrift::groesstes);
    textSize_.set_increments(1, 1);
    textSize_.set_digits(0);
    textSize_.set_round_digits(0);
    textSize_.set_size_request(200, -1);
    textSizeMoved_ = textSize_.signal_value_changed().connect(
        [this] { userDefaults_.set(Schrift::schluessel, textSize_.get_value()); });
    textSizeChanged_ = userDefaults_.observe(Schrift::schluessel, [this] { showTextSize(); });
    showTextSize();
    adw_preferences_group_add(Formular::gruppe(pageOf(*this)),
                              Formular::zeile(t("Oberfläche"), textSize_, &textSizeValue_));
}

void GeneralSettingsView::showTextSize() {
    const double size = userDefaults_.get<double>(Schrift::schluessel).value_or(Schrift::vorgabe);
    // Showing a stored value that the slider cannot reach must not change it.
    textSizeMoved_.block();
    textSize_.set_value(size);
    textSizeMoved_.unblock();
    textSizeValue_.set_text(fmt::format("{:.0f} pt", size));
}

void GeneralSettingsView::addUpdateCheck() {
    AdwPreferencesGroup* group = Formular::gruppe(pageOf(*this));
    checkForUpdates_.set_active(*settings_.checkForUpdatesAtLaunch);
    checkForUpdates_.property_active().signal_changed().connect([this] {
        if (checkForUpdates_.get_active() != *settings_.checkForUpdatesAtLaunch)
            settings_.checkForUpdatesAtLaunch = checkForUpdates_.get_active();
    });
    checkChanged_ =
        settings_.checkForUpdatesAtLaunch.subscribe([this](bool isOn) { checkForUpdates_.set_active(isOn); });
    adw_preferences_group_add(group,
                              Formular::schalterzeile(t("Beim Start nach Updates suchen"), checkForUpdates_));
    adw_preferences_group_add(
        group, Formular::erklaerung(
                   t("Fragt beim Start einmal bei " CORVANTA_WEBSITE
                     " nach der aktuellen Version. Dabei wird nichts über dich übertragen, der Server sieht "
                     "nur den Abruf einer öffentlichen Datei. Im Info-Fenster kannst du jederzeit von Hand "
                     "suchen.")));
}

} // namespace corvanta
