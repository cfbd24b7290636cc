#pragma once

#include "Corvanta/DocumentController.hpp"
#include "Corvanta/DocumentWindowContent.hpp"
#include "Corvanta/OpenDocument.hpp"
#include "Corvanta/gtk/ContentView.hpp"
#include "Corvanta/gtk/DocumentQuestions.hpp"
#include "Corvanta/gtk/DocumentToolbar.hpp"
#include "Corvanta/gtk/EditorActions.hpp"
#include "Corvanta/gtk/FileDrop.hpp"
#include "Corvanta/gtk/WindowServices.hpp"
#include "Documents/Session.hpp"
#include "Platform/Subscription.hpp"
#include "Platform/gtk/SignalConnection.hpp"

#include <giomm/filemonitor.h>
#include <giomm/simpleaction.h>
#include <gtkmm/applicationwindow.h>
#include <gtkmm/box.h>
#include <gtkmm/filechoosernative.h>
#include <gtkmm/popovermenubar.h>

#include <filesystem>
#include <functional>
#include <memory>

namespace corvanta {

/// One document on the screen.
class DocumentWindow : public Gtk::ApplicationWindow {
public:
    /// `controller` outlives the window. `document` is one of its documents and lives until the window has
    /// closed it.
    DocumentWindow(DocumentController& controller, OpenDocument& document, const WindowServices& services);

    OpenDocument& document() { return document_; }
    ContentView& contentView() { return contentView_; }
    DocumentQuestions& questions() { return questions_; }

    /// The part of the file menu that is kept up to date for all windows.
    const Glib::RefPtr<Gio::Menu>& recentFiles() const { return services_.recentFiles; }

    /// What is to be there again after the next start.
    Session::Window state() const;

    /// Makes the window look as it did when it was in this state. For a window that was never shown.
    void takeOverState(const Session::Window& state);

    /// Asks what becomes of unsaved changes, if there are any; `whenAnswered` is called unless the user wants
    /// to stay.
    void askBeforeQuitting(const std::function<void()>& whenAnswered);

    /// Emitted when the window has closed for good.
    sigc::signal<void()>& signalClosed() { return closed_; }

    /// Emitted when the window has another title.
    sigc::signal<void()>& signalRenamed() { return renamed_; }

    /// Emitted when the text or something else of the window's state changed.
    sigc::signal<void()>& signalStateChanged() { return stateChanged_; }

    /// Emitted with a file that was dropped on the window.
    sigc::signal<void(const std::filesystem::path&)>& signalFileDropped() { return fileDropped_; }

    /// Emitted when the user wants a copy of the document.
    sigc::signal<void()>& signalDuplicateRequested() { return duplicateRequested_; }

    /// Somebody else changed the document's file.
    void fileDidChange(const OutsideChanges::Finding& finding);

    void save();
    void saveAs();

    /// Saves the document to the file at `path`, which is its own from then on. False when that fails, of
    /// which the user is told.
    bool saveAs(const std::filesystem::path& path);

    /// Closes the document and its window without a question.
    void closeForGood();

    /// Shows all texts in the language that is in use now.
    void updateLanguage();

private:
    void addActions();
    void arrange();
    void showMenuBar();
    void showTitle();
    void startPreviewAfterFirstFrame();
    void startPreviewOnceVisible();
    void watchFile();
    bool closeRequested();
    void chooseFileThenSave(const std::function<void()>& whenSaved);
    void saveThen(const std::function<void()>& whenSaved);
    void saveOverOutsideChangeThen(const std::function<void()>& whenSaved);
    void askToRevert();
    void revert();
    void showDocumentText();
    bool reportIfFailed(const std::error_code& error);

    void textDidChange();
    std::string displayName() const;
    void reportOnceThatTheJournalFails(const std::error_code& error);

    DocumentController& controller_;
    OpenDocument& document_;
    WindowServices services_;
    DocumentWindowContent content_;
    DocumentQuestions questions_;
    DocumentToolbar toolbar_;
    Gtk::Box column_;
    std::unique_ptr<Gtk::PopoverMenuBar> menuBar_;
    ContentView contentView_;
    EditorActions editorActions_;
    Glib::RefPtr<Gio::SimpleAction> revertAction_;

    Glib::RefPtr<Gtk::FileChooserNative> fileChooser_;
    sigc::signal<void()> closed_;
    sigc::signal<void()> renamed_;
    sigc::signal<void()> stateChanged_;
    sigc::signal<void(const std::filesystem::path&)> fileDropped_;
    FileDrop fileDrop_{*this, [this](const std::filesystem::path& path) { fileDropped_.emit(path); }};
    sigc::signal<void()> duplicateRequested_;
    Glib::RefPtr<Gio::FileMonitor> fileMonitor_;
    Subscription textChanged_;
    Subscription previewShown_;
    bool isJournalFailureReported_ = false;
    std::unique_ptr<MainQueue::Handle> journalReport_;
    SignalConnection firstFrame_;
};

} // namespace corvanta
