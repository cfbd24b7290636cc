#include "EditorCore/gtk/FindBar.hpp"

#include "DesignSystem/t.hpp"

#include <gtkmm/eventcontrollerkey.h>

namespace corvanta {

namespace {

/// In characters; what is shorter is hard to read.
constexpr int leastFieldWidth = 12;

/// Calls `widget` by `text`, for eyes and for screen readers.
void name(Gtk::Widget& widget, const std::string& text) {
    widget.set_tooltip_text(text);
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, text.c_str(),
                                   -1);
}

} // namespace

FindBar::FindBar(IndentingTextView& textView, Published<FindRequest>& request, MainQueue& mainQueue)
    : Gtk::Box(Gtk::Orientation::VERTICAL, spacing),
      textView_(textView),
      request_(request),
      session_(textView, request, mainQueue),
      marks_(textView, session_) {
    build();
    followKeys();
    panelAction_ = Subscription(
        textView.signalFindPanelAction().connect([this](FindPanelAction action) { perform(action); }));
    requestChanged_ = request_.subscribe([this](const FindRequest&) { showRequest(); });
    sessionChanged_ = Subscription(session_.signalChanged().connect([this] { showStatus(); }));
    showRequest();
}

void FindBar::build() {
    set_visible(false);
    set_margin(spacing);
    previous_.set_icon_name("go-up-symbolic");
    next_.set_icon_name("go-down-symbolic");
    close_.set_icon_name("window-close-symbolic");
    for (Gtk::Button* button : std::initializer_list<Gtk::Button*>{
             &previous_, &next_, &close_, &matchesCase_, &isRegularExpression_, &replaceOne_, &replaceAll_})
        button->set_focus_on_click(false);
    for (Gtk::Entry* entry : {&find_, &replace_}) {
        entry->set_hexpand(true);
        entry->set_width_chars(leastFieldWidth);
        entry->set_input_hints(Gtk::InputHints::NO_SPELLCHECK);
    }
    updateLanguage();
    // Wide enough for the counts of a long text, so that the row does not jump while they grow.
    status_.set_width_chars(16);

    for (Gtk::Widget* widget : std::initializer_list<Gtk::Widget*>{&find_, &status_})
        fieldAndStatus_.append(*widget);
    for (Gtk::Widget* widget : std::initializer_list<Gtk::Widget*>{&matchesCase_, &isRegularExpression_,
                                                                   &previous_, &next_, &close_})
        buttons_.append(*widget);
    for (Gtk::Widget* widget : std::initializer_list<Gtk::Widget*>{&replaceOne_, &replaceAll_})
        replaceButtons_.append(*widget);
    append(findRow_);
    append(replaceRow_);

    find_.signal_changed().connect([this] { searchForEntry(); });
    matchesCase_.signal_toggled().connect([this] { searchForEntry(); });
    isRegularExpression_.signal_toggled().connect([this] { searchForEntry(); });
    find_.signal_activate().connect([this] { session_.findNext(); });
    replace_.signal_activate().connect([this] { session_.replace(replace_.get_text()); });
    previous_.signal_clicked().connect([this] { session_.findPrevious(); });
    next_.signal_clicked().connect([this] { session_.findNext(); });
    close_.signal_clicked().connect([this] { close(); });
    replaceOne_.signal_clicked().connect([this] { session_.replace(replace_.get_text()); });
    replaceAll_.signal_clicked().connect([this] { session_.replaceAll(replace_.get_text()); });
}

void FindBar::updateLanguage() {
    name(find_, t("Suchen"));
    name(replace_, t("Ersetzen durch"));
    name(previous_, t("Vorheriger Treffer"));
    name(next_, t("Nächster Treffer"));
    name(close_, t("Suche schließen"));
    name(matchesCase_, t("Groß- und Kleinschreibung beachten"));
    name(isRegularExpression_, t("Regulärer Ausdruck"));
    find_.set_placeholder_text(t("Suchen"));
    replace_.set_placeholder_text(t("Ersetzen durch"));
    replaceOne_.set_label(t("Ersetzen"));
    replaceAll_.set_label(t("Alle ersetzen"));
    status_.set_text(statusText());
}

void FindBar::followKeys() {
    const auto controller = Gtk::EventControllerKey::create();
    controller->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    controller->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType modifiers) {
            const bool shift = (modifiers & Gdk::ModifierType::SHIFT_MASK) != Gdk::ModifierType{};
            if (key == GDK_KEY_Escape) {
                close();
                return true;
            }
            if ((key == GDK_KEY_Return || key == GDK_KEY_KP_Enter) && shift) {
                session_.findPrevious();
                return true;
            }
            return false;
        },
        false);
    add_controller(controller);
}

void FindBar::perform(FindPanelAction action) {
    switch (action) {
    case FindPanelAction::showFindPanel:
        return open(false);
    case FindPanelAction::showReplaceInterface:
        return open(true);
    case FindPanelAction::next:
        return session_.findNext();
    case FindPanelAction::previous:
        return session_.findPrevious();
    case FindPanelAction::setFindString:
        return session_.useSelection();
    }
}

void FindBar::open(bool replaces) {
    set_visible(true);
    replaceRow_.set_visible(replaces);
    session_.setActive(true);
    showStatus();
    find_.grab_focus();
    find_.select_region(0, -1);
}

void FindBar::close() {
    set_visible(false);
    session_.setActive(false);
    textView_.makeFirstResponder();
}

void FindBar::searchForEntry() {
    if (!isShowingRequest_)
        session_.search({find_.get_text(), matchesCase_.get_active(), isRegularExpression_.get_active()});
}

/// The string may come from another window.
void FindBar::showRequest() {
    isShowingRequest_ = true;
    if (find_.get_text().raw() != request_->text)
        find_.set_text(request_->text);
    matchesCase_.set_active(request_->matchesCase);
    isRegularExpression_.set_active(request_->isRegularExpression);
    isShowingRequest_ = false;
}

void FindBar::showStatus() {
    status_.set_text(statusText());
    const bool finds = !session_.matches().empty();
    const bool fails = session_.isActive() && !request_->text.empty() && !finds &&
                       session_.state() != TextSearch::State::searching;
    if (fails)
        find_.add_css_class("error");
    else
        find_.remove_css_class("error");
    // A button that cannot be pressed any more would keep the keyboard from everything.
    if (!finds && (replaceOne_.has_focus() || replaceAll_.has_focus()))
        replace_.grab_focus();
    replaceOne_.set_sensitive(finds);
    replaceAll_.set_sensitive(finds);
}

std::string FindBar::statusText() const {
    if (!session_.isActive() || request_->text.empty())
        return {};
    const std::size_t count = session_.matches().size();
    switch (session_.state()) {
    case TextSearch::State::invalid:
        return t("Ungültiger Ausdruck");
    case TextSearch::State::tooExpensive:
        return t("Ausdruck zu aufwendig");
    case TextSearch::State::searching:
        return count == 0 ? t("Suche läuft …") : t("%lld Treffer …", count);
    case TextSearch::State::complete:
        break;
    }
    if (count == 0)
        return t("Keine Treffer");
    if (const std::optional<std::size_t> selected = session_.selectedMatch())
        return t("%lld von %lld", *selected, count);
    return t("%lld Treffer", count);
}

} // namespace corvanta
