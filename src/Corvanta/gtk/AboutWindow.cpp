#include "Corvanta/gtk/AboutWindow.hpp"

#include "Corvanta/Unterstuetzung.hpp"
#include "DesignSystem/Mass.hpp"
#include "DesignSystem/t.hpp"

#include <gtkmm/scrolledwindow.h>

namespace corvanta {

namespace {

constexpr int iconSize = 96;
/// In characters; the paragraphs give the window its width.
constexpr int lineLength = 44;

Gtk::Label& centred(const std::string& text, const char* styleClass) {
    auto* label = Gtk::make_managed<Gtk::Label>(text);
    label->set_wrap(true);
    label->set_justify(Gtk::Justification::CENTER);
    label->set_max_width_chars(lineLength);
    label->add_css_class(styleClass);
    return *label;
}

} // namespace

AboutWindow::AboutWindow(AboutModel& model, Workspace& workspace)
    : model_(model),
      workspace_(workspace),
      column_(Gtk::Orientation::VERTICAL, Mass::klein),
      result_(Gtk::Orientation::HORIZONTAL, Mass::knapp) {
    set_title(t("Über Corvanta"));
    set_resizable(false);
    column_.set_margin(Mass::weit);
    // A large text does not fit on a small screen.
    auto* scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
    scrolled->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scrolled->set_propagate_natural_width(true);
    scrolled->set_propagate_natural_height(true);
    scrolled->set_child(column_);
    set_child(*scrolled);
    addProduct();
    addUpdate();
    addSupport();
    checkingChanged_ = model_.update.isChecking.subscribe([this](bool) { showUpdate(); });
    resultChanged_ = model_.update.result.subscribe([this](const auto&) { showUpdate(); });
    showUpdate();
    signal_map().connect([this] { model_.didAppear(); });
}

void AboutWindow::addProduct() {
    auto* icon = Gtk::make_managed<Gtk::Image>();
    icon->set_from_icon_name("de.corvanta.Corvanta");
    icon->set_pixel_size(iconSize);
    column_.append(*icon);
    column_.append(centred(t("Corvanta"), "schrift-zahl"));
    column_.append(centred(t("Version %@", UpdateCheck::currentVersion()), "schrift-klein"));
    column_.append(
        centred(t("Ein schlanker HTML-, CSS-, JavaScript- und PHP-Editor mit Live-Vorschau für macOS."),
                "schrift-text"));
    Gtk::Label& credit = centred(t("Angeregt von den handgeschriebenen Seiten des frühen Webs.\n"
                                   "Gestaltet und programmiert vom Corvanta-Team."),
                                 "schrift-klein");
    credit.add_css_class("dim-label");
    column_.append(credit);
}

void AboutWindow::addUpdate() {
    result_.set_halign(Gtk::Align::CENTER);
    result_.set_margin_top(Mass::mittel);
    result_.append(spinner_);
    result_.append(symbol_);
    text_.set_wrap(true);
    text_.set_max_width_chars(lineLength);
    result_.append(text_);
    openPage_.set_label(t("Seite öffnen"));
    openPage_.signal_clicked().connect([this] { workspace_.open(UpdateCheck::downloadPageURL()); });
    result_.append(openPage_);
    column_.append(result_);

    check_.set_label(t("Nach Update suchen"));
    check_.set_halign(Gtk::Align::CENTER);
    check_.signal_clicked().connect([this] { model_.update.check(); });
    column_.append(check_);
}

void AboutWindow::addSupport() {
    Gtk::Label& title = centred(t("Mitmachen"), "schrift-titel");
    title.set_margin_top(Mass::block);
    column_.append(title);
    column_.append(centred(
        t("Dieses Programm ist kostenlos und bleibt es. Was es kann, verdankt es den Rückmeldungen seiner "
          "Nutzer: Jeder gemeldete Sonderfall, jeder Hinweis auf eine unklare Beschriftung hat es ein Stück "
          "besser gemacht."),
        "schrift-klein"));
    auto* donate = Gtk::make_managed<Gtk::Button>(t("Spenden"));
    donate->set_halign(Gtk::Align::CENTER);
    donate->signal_clicked().connect([this] { workspace_.open(Unterstuetzung::spende()); });
    column_.append(*donate);
}

void AboutWindow::showUpdate() {
    const bool isChecking = *model_.update.isChecking;
    const auto& result = *model_.update.result;
    check_.set_sensitive(!isChecking);
    spinner_.set_visible(isChecking);
    spinner_.set_spinning(isChecking);
    openPage_.set_visible(false);
    if (!result) {
        show(nullptr, "");
    } else if (const auto* available = std::get_if<UpdateCheck::UpdateAvailable>(&*result)) {
        show("software-update-available-symbolic", t("Version %@ ist verfügbar.", available->version));
        openPage_.set_visible(true);
    } else if (std::holds_alternative<UpdateCheck::UpToDate>(*result)) {
        show("emblem-ok-symbolic", t("Version %@ ist aktuell.", UpdateCheck::currentVersion()));
    } else {
        show("dialog-warning-symbolic",
             t("Die Prüfung ist fehlgeschlagen. Besteht eine Internetverbindung?"));
    }
}

void AboutWindow::show(const char* symbol, const std::string& text) {
    symbol_.set_visible(symbol != nullptr);
    if (symbol != nullptr)
        symbol_.set_from_icon_name(symbol);
    text_.set_visible(!text.empty());
    text_.set_text(text);
}

} // namespace corvanta
