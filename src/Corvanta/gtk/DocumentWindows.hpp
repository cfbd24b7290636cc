#pragma once

#include "Corvanta/ActivationSignals.hpp"
#include "Corvanta/DocumentController.hpp"
#include "Corvanta/LaunchDocuments.hpp"
#include "Corvanta/gtk/DocumentWindow.hpp"
#include "Corvanta/gtk/WindowServices.hpp"
#include "Documents/Session.hpp"
#include "Platform/FileManager.hpp"

#include <gtkmm/application.h>
#include <gtkmm/filechoosernative.h>

#include <filesystem>
#include <functional>
#include <list>
#include <memory>

namespace corvanta {

/// The windows of all open documents.
class DocumentWindows final : public LaunchDocuments {
public:
    /// What it takes to have documents; all of it outlives this object.
    struct DocumentServices {
        const FileManager& fileManager;
        UserDefaults& userDefaults;
        OpenDocument::Services protection;
    };

    /// `application` outlives this object.
    DocumentWindows(Gtk::Application& application, const DocumentServices& documents,
                    WindowServices services);

    /// Tells when the user turns to a document window.
    ActivationSignals activation;

    /// Opens the document in the file at `path` in a window, or shows the window that it is open in.
    void openDocument(const std::filesystem::path& path);

    void openUntitled();

    /// What of the last session comes back.
    enum class Restoration { everything, unsavedOnly };

    /// Shows again what was left unsaved, and the other windows of `lastSession` if they are wanted. Says so
    /// unless everything is as the user left it.
    void restore(const Session& lastSession, Restoration restoration);

    /// Says that the last starts died, and that this one therefore shows nothing of before and no preview;
    /// calls `onRestore` if the user wants it all the same.
    void sayThatTheLastStartsDied(const std::function<void()>& onRestore);

    /// What is on the screen.
    Session session() const;

    /// Emitted when something of the session changed.
    sigc::signal<void()>& signalSessionChanged() { return sessionChanged_; }

    /// Opens one of the files in the list of recent ones.
    void openRecent(std::size_t number);
    void clearRecent() { controller_.recentDocuments().clear(); }

    /// Brings what was typed to the disk, because the program is about to be ended without questions.
    void bringToDisk() { controller_.bringToDisk(); }

    void chooseFileToOpen();

    /// Asks what becomes of the unsaved changes, one window after the other. After the last answer
    /// `whenAnswered` is called and all windows close, unless the user wanted to stay.
    void quit(const std::function<void()>& whenAnswered);

    /// The window in front, or the last one that was opened; nothing when there is none.
    DocumentWindow* frontmost();

    /// Opens a new document with this text, which is saved nowhere.
    void openUntitled(const SharedText& text);

    /// Puts the caret on a line, the first being 1, of the document in the file at `path`, if it is open.
    void goToLine(const std::filesystem::path& path, int line);

    void present(std::size_t number);

    /// Shows all texts in the language that is in use now.
    void updateLanguage();

    std::vector<Document> documents() const override;
    bool hasFileLocation(Document document) const override;
    bool shows(Document document, std::string_view text) const override;
    std::optional<Document> openUntitledDocumentAndDisplay() override;
    void close(Document document) override;

private:
    struct Entry {
        Document name;
        std::unique_ptr<DocumentWindow> window;
    };

    void read(const std::filesystem::path& path);
    void restore(WaitingJournal& journal, const Session::Window* state, bool isExpected);
    void reopen(const Session::Window& state);
    void askBeforeQuitting(std::vector<Document> remaining, const std::function<void()>& whenAnswered);
    void listRecentFiles();
    Entry& show(OpenDocument& document, const Session::Window* state = nullptr);
    void forget(DocumentWindow& window);
    void addTurningActions(DocumentWindow& window);
    void listWindows();
    /// Brings the window that was opened after this one to the front.
    void presentNext(const DocumentWindow& window);
    /// The same for the one before it.
    void presentPrevious(const DocumentWindow& window);
    std::list<Entry>::iterator entryOf(const DocumentWindow& window);
    const Entry* find(Document document) const;
    DocumentWindow* windowShowing(const OpenDocument& document);
    DocumentWindow& windowForDialogs();

    Gtk::Application& application_;
    const FileManager& fileManager_;
    WindowServices services_;
    /// Before the windows, which refer to its documents.
    DocumentController controller_;
    Subscription recentFilesChanged_;
    sigc::signal<void()> sessionChanged_;
    /// The window that the user turned to last.
    DocumentWindow* lastActive_ = nullptr;
    std::list<Entry> entries_;
    Document nextName_ = 1;
    Glib::RefPtr<Gtk::FileChooserNative> fileChooser_;
};

} // namespace corvanta
