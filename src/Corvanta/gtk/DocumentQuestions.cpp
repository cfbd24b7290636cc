#include "Corvanta/gtk/DocumentQuestions.hpp"

#include "DesignSystem/t.hpp"

#include <utility>

namespace corvanta {

void DocumentQuestions::report(const std::string& message, const std::string& reason) {
    tell(make(message, reason, Gtk::MessageType::ERROR));
}

void DocumentQuestions::inform(const std::string& message, const std::string& explanation) {
    tell(make(message, explanation, Gtk::MessageType::INFO));
}

void DocumentQuestions::tell(Gtk::MessageDialog& dialog) {
    dialog.add_button(t("OK"), Gtk::ResponseType::OK);
    dialog.set_default_response(Gtk::ResponseType::OK);
    dialog.signal_response().connect([this](int) { dialog_->hide(); });
    present(dialog);
}

void DocumentQuestions::ask(const std::string& question, const std::string& explanation,
                            const std::string& yesButton, std::function<void()> onYes) {
    Gtk::MessageDialog& dialog = make(question, explanation, Gtk::MessageType::QUESTION);
    dialog.add_button(t("Abbrechen"), Gtk::ResponseType::CANCEL);
    dialog.add_button(yesButton, Gtk::ResponseType::YES);
    dialog.signal_response().connect([this, onYes = std::move(onYes)](int response) {
        // The answer may lead to the next question, which ends this one and what it holds.
        const auto yes = onYes;
        dialog_->hide();
        if (response == Gtk::ResponseType::YES)
            yes();
    });
    present(dialog);
}

void DocumentQuestions::askBeforeClosing(const std::string& name, std::function<void()> onSave,
                                         std::function<void()> onDiscard) {
    Gtk::MessageDialog& dialog =
        make(t("Möchtest du die Änderungen an „%@“ sichern?", name),
             t("Ungesicherte Änderungen gehen sonst verloren."), Gtk::MessageType::QUESTION);
    dialog.add_button(t("Nicht sichern"), Gtk::ResponseType::NO);
    dialog.add_button(t("Abbrechen"), Gtk::ResponseType::CANCEL);
    dialog.add_button(t("Sichern"), Gtk::ResponseType::YES);
    dialog.set_default_response(Gtk::ResponseType::YES);
    dialog.signal_response().connect(
        [this, onSave = std::move(onSave), onDiscard = std::move(onDiscard)](int response) {
            const auto save = onSave;
            const auto discard = onDiscard;
            dialog_->hide();
            if (response == Gtk::ResponseType::YES)
                save();
            else if (response == Gtk::ResponseType::NO)
                discard();
        });
    present(dialog);
}

void DocumentQuestions::askWhichVersion(const std::string& name, std::function<void()> onLoad,
                                        std::function<void()> onKeep) {
    Gtk::MessageDialog& dialog = make(t("„%@“ wurde von einem anderen Programm geändert.", name),
                                      t("Möchtest du die geänderte Datei laden oder deine Fassung behalten?"),
                                      Gtk::MessageType::QUESTION);
    dialog.add_button(t("Datei laden"), Gtk::ResponseType::YES);
    dialog.add_button(t("Meine Fassung behalten"), Gtk::ResponseType::NO);
    dialog.set_default_response(Gtk::ResponseType::NO);
    dialog.signal_response().connect(
        [this, onLoad = std::move(onLoad), onKeep = std::move(onKeep)](int response) {
            const auto load = onLoad;
            const auto keep = onKeep;
            dialog_->hide();
            if (response == Gtk::ResponseType::YES)
                load();
            else if (response == Gtk::ResponseType::NO)
                keep();
        });
    present(dialog);
}

void DocumentQuestions::present(Gtk::MessageDialog& dialog) {
    if (window_.is_active()) {
        dialog.present();
        return;
    }
    windowBecameActive_ = Subscription(window_.property_is_active().signal_changed().connect([this] {
        if (window_.is_active())
            presentWaiting();
    }));
}

void DocumentQuestions::presentWaiting() {
    windowBecameActive_ = Subscription();
    dialog_->present();
}

Gtk::MessageDialog& DocumentQuestions::make(const std::string& message, const std::string& explanation,
                                            Gtk::MessageType type) {
    windowBecameActive_ = Subscription();
    dialog_ =
        std::make_unique<Gtk::MessageDialog>(window_, message, false, type, Gtk::ButtonsType::NONE, true);
    dialog_->set_secondary_text(explanation);
    return *dialog_;
}

} // namespace corvanta
