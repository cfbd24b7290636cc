#pragma once

#include "Platform/Subscription.hpp"

#include <gtkmm/messagedialog.h>
#include <gtkmm/window.h>

#include <functional>
#include <memory>
#include <string>

namespace corvanta {

/// What a document window asks and tells the user, one thing at a time, and only while the user is at this
/// window: a dialog of a window that is not on the screen yet would leave the keyboard nowhere. All texts are
/// in the language in use.
class DocumentQuestions {
public:
    /// `window` outlives this object.
    explicit DocumentQuestions(Gtk::Window& window) : window_(window) {}

    /// Tells of something that went wrong.
    void report(const std::string& message, const std::string& reason);

    /// Tells of something that nobody need do anything about. `explanation` may be empty.
    void inform(const std::string& message, const std::string& explanation);

    /// Asks a question; `onYes` is called when the answer is the one on `yesButton`.
    void ask(const std::string& question, const std::string& explanation, const std::string& yesButton,
             std::function<void()> onYes);

    /// Asks what becomes of the changes in the document `name`.
    void askBeforeClosing(const std::string& name, std::function<void()> onSave,
                          std::function<void()> onDiscard);

    /// Asks whether the document `name` becomes the file as another program wrote it, or stays as it is.
    void askWhichVersion(const std::string& name, std::function<void()> onLoad, std::function<void()> onKeep);

private:
    Gtk::MessageDialog& make(const std::string& message, const std::string& explanation,
                             Gtk::MessageType type);

    void tell(Gtk::MessageDialog& dialog);
    void present(Gtk::MessageDialog& dialog);
    void presentWaiting();

    Gtk::Window& window_;
    std::unique_ptr<Gtk::MessageDialog> dialog_;
    Subscription windowBecameActive_;
};

} // namespace corvanta
