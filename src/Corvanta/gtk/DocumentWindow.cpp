#include "Corvanta/gtk/DocumentWindow.hpp"

#include "Corvanta/DocumentError.hpp"
#include "Corvanta/FileErrorText.hpp"
#include "Corvanta/gtk/EditorMenus.hpp"
#include "Corvanta/gtk/FileFilters.hpp"
#include "DesignSystem/t.hpp"

#include <glibmm/miscutils.h>

#include <algorithm>
#include <cstdint>

namespace corvanta {

namespace {

constexpr int defaultWidth = 1200;
constexpr int defaultHeight = 800;

/// `folder` with "~" for the home folder.
std::string shortened(const std::filesystem::path& folder) {
    const std::filesystem::path fromHome = folder.lexically_relative(Glib::get_home_dir());
    if (fromHome.empty() || *fromHome.begin() == "..")
        return folder.string();
    return fromHome == "." ? "~" : "~/" + fromHome.string();
}

} // namespace

DocumentWindow::DocumentWindow(DocumentController& controller, OpenDocument& document,
                               const WindowServices& services)
    : controller_(controller),
      document_(document),
      services_(services),
      content_(document_.document, services.preview.mainQueue, services.preview.log),
      questions_(*this),
      column_(Gtk::Orientation::VERTICAL),
      contentView_(content_, document_.fileLocation(), services),
      editorActions_(*this, content_, contentView_) {
    addActions();
    arrange();
    showTitle();
    textChanged_ = content_.editorViewModel.text.subscribe([this](const auto&) { textDidChange(); });
    signal_close_request().connect([this] { return closeRequested(); }, false);
    content_.isPreviewVisible = services.showsPreview;
    startPreviewAfterFirstFrame();
    watchFile();
    contentView_.codeEditor().textView().grab_focus();
}

void DocumentWindow::addActions() {
    add_action("save", [this] { save(); });
    add_action("save-as", [this] { saveAs(); });
    add_action("duplicate", [this] { duplicateRequested_.emit(); });
    revertAction_ = add_action("revert", [this] { askToRevert(); });
    add_action("close-document", [this] { close(); });
    add_action("minimise", [this] { minimize(); });
    add_action("full-screen", [this] { is_fullscreen() ? unfullscreen() : fullscreen(); });
}

void DocumentWindow::arrange() {
    set_default_size(defaultWidth, defaultHeight);
    contentView_.setCodeWidth(defaultWidth / 2);
    gtk_window_set_titlebar(GTK_WINDOW(gobj()), toolbar_.widget());
    contentView_.set_expand(true);
    column_.append(contentView_);
    set_child(column_);
    showMenuBar();
}

void DocumentWindow::showMenuBar() {
    if (menuBar_)
        column_.remove(*menuBar_);
    menuBar_ = std::make_unique<Gtk::PopoverMenuBar>(
        EditorMenus::menuBar(services_.recentFiles, services_.openWindows));
    gtk_accessible_update_property(GTK_ACCESSIBLE(menuBar_->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   t("Menü").c_str(), -1);
    column_.prepend(*menuBar_);
}

void DocumentWindow::updateLanguage() {
    showMenuBar();
    toolbar_.updateLanguage();
    contentView_.updateLanguage();
    showTitle();
}

void DocumentWindow::showTitle() {
    const std::string name = (document_.isEdited() ? "• " : "") + displayName();
    const auto& file = document_.fileLocation();
    revertAction_->set_enabled(file && document_.isEdited());
    toolbar_.showTitle(name, file ? shortened(file->parent_path()) : "");
    const std::string title = name + " – Corvanta";
    if (title == get_title().raw())
        return;
    set_title(title);
    renamed_.emit();
}

void DocumentWindow::textDidChange() {
    reportOnceThatTheJournalFails(document_.textDidChange());
    showTitle();
    stateChanged_.emit();
}

void DocumentWindow::reportOnceThatTheJournalFails(const std::error_code& error) {
    if (!error || isJournalFailureReported_)
        return;
    isJournalFailureReported_ = true;
    // Later, so that the key that was pressed is shown first.
    journalReport_ = services_.preview.mainQueue.after({}, [this, error] {
        questions_.report(t("Der ungesicherte Text von „%@“ kann nicht aufbewahrt werden.", displayName()),
                          t(fileErrorText(error)));
    });
}

std::string DocumentWindow::displayName() const {
    return document_.fileLocation() ? document_.displayName() : t("Ohne Titel");
}

void DocumentWindow::startPreviewAfterFirstFrame() {
    signal_realize().connect([this] {
        GdkFrameClock* clock = gtk_widget_get_frame_clock(GTK_WIDGET(gobj()));
        firstFrame_ = SignalConnection(
            clock, "after-paint",
            +[](GdkFrameClock*, gpointer self) {
                auto* window = static_cast<DocumentWindow*>(self);
                window->firstFrame_ = SignalConnection();
                window->startPreviewOnceVisible();
            },
            this);
    });
}

/// A hidden preview costs nothing and cannot do any harm.
void DocumentWindow::startPreviewOnceVisible() {
    if (*content_.isPreviewVisible) {
        previewShown_ = Subscription();
        contentView_.preview().start();
    } else {
        previewShown_ = content_.isPreviewVisible.subscribe([this](bool) { startPreviewOnceVisible(); });
    }
}

void DocumentWindow::watchFile() {
    fileMonitor_.reset();
    if (!document_.fileLocation())
        return;
    try {
        fileMonitor_ = Gio::File::create_for_path(document_.fileLocation()->string())->monitor_file();
        fileMonitor_->signal_changed().connect(
            [this](const auto&, const auto&, auto) { document_.lookForOutsideChanges(); });
    } catch (const Glib::Error&) {
        // The system watches only so many files; then the change is found when the window becomes active.
        fileMonitor_.reset();
    }
}

Session::Window DocumentWindow::state() const {
    const IndentingTextView& textView = contentView_.codeEditor().textView();
    Session::Window state;
    state.file = document_.fileLocation();
    state.journal = document_.journalName();
    state.caret = textView.selectedRange().location;
    state.selectionLength = textView.selectedRange().length;
    state.firstLine = textView.firstVisibleLine();
    state.showsPreview = *content_.isPreviewVisible;
    state.showsAssistant = *content_.isAssistantVisible;
    get_default_size(state.width, state.height);
    state.isMaximized = is_maximized();
    state.codeWidth = contentView_.codeWidth();
    if (state.isMaximized && get_width() > 0)
        state.codeWidth = state.codeWidth * state.width / get_width();
    return state;
}

void DocumentWindow::takeOverState(const Session::Window& state) {
    if (state.width > 0 && state.height > 0) {
        set_default_size(state.width, state.height);
        contentView_.setCodeWidth(state.codeWidth > 0 ? state.codeWidth : state.width / 2);
    }
    if (state.isMaximized)
        maximize();
    content_.isPreviewVisible = state.showsPreview && services_.showsPreview;
    content_.isAssistantVisible = state.showsAssistant;
    IndentingTextView& textView = contentView_.codeEditor().textView();
    const std::int64_t length = textView.text().end().codeUnit;
    const std::int64_t caret = std::clamp<std::int64_t>(state.caret, 0, length);
    textView.setSelectedRange({caret, std::clamp<std::int64_t>(state.selectionLength, 0, length - caret)});
    textView.scrollToLine(state.firstLine);
}

void DocumentWindow::save() {
    saveThen([] {});
}

void DocumentWindow::saveAs() {
    chooseFileThenSave([] {});
}

bool DocumentWindow::saveAs(const std::filesystem::path& path) {
    if (reportIfFailed(controller_.saveAs(document_, path)))
        return false;
    showTitle();
    contentView_.setDocumentURL(document_.fileLocation());
    watchFile();
    return true;
}

void DocumentWindow::saveThen(const std::function<void()>& whenSaved) {
    if (!document_.fileLocation()) {
        chooseFileThenSave(whenSaved);
        return;
    }
    const std::error_code error = document_.save();
    if (error == DocumentError::fileChangedOutside) {
        questions_.askWhichVersion(
            displayName(), [this] { revert(); }, [this, whenSaved] { saveOverOutsideChangeThen(whenSaved); });
    } else if (!reportIfFailed(error)) {
        showTitle();
        whenSaved();
    }
}

void DocumentWindow::saveOverOutsideChangeThen(const std::function<void()>& whenSaved) {
    if (reportIfFailed(document_.saveOverOutsideChange()))
        return;
    showTitle();
    whenSaved();
}

void DocumentWindow::fileDidChange(const OutsideChanges::Finding& finding) {
    switch (document_.reactionTo(finding)) {
    case OpenDocument::Reaction::none:
        break;
    case OpenDocument::Reaction::follow:
        document_.follow(finding);
        showDocumentText();
        break;
    case OpenDocument::Reaction::ask:
        questions_.askWhichVersion(
            displayName(),
            [this, finding] {
                document_.follow(finding);
                showDocumentText();
            },
            [this, finding] { document_.keepOwnText(finding); });
        break;
    case OpenDocument::Reaction::tell:
        questions_.inform(t("Die Datei „%@“ gibt es nicht mehr.", displayName()),
                          t("Der Text ist noch hier und wird beim Sichern neu geschrieben."));
        break;
    }
    showTitle();
}

void DocumentWindow::askToRevert() {
    questions_.ask(t("Möchtest du zur gesicherten Fassung von „%@“ zurückkehren?", displayName()),
                   t("Alles, was du seitdem geschrieben hast, geht verloren."), t("Zurückkehren"),
                   [this] { revert(); });
}

void DocumentWindow::revert() {
    if (const std::error_code error = controller_.revert(document_)) {
        questions_.report(t("„%@“ konnte nicht geöffnet werden.", displayName()), t(fileErrorText(error)));
        return;
    }
    showDocumentText();
}

/// Puts the document's text into the editor, as one step that can be undone.
void DocumentWindow::showDocumentText() {
    content_.editorViewModel.text = document_.document.text;
    showTitle();
}

void DocumentWindow::chooseFileThenSave(const std::function<void()>& whenSaved) {
    fileChooser_ = Gtk::FileChooserNative::create(t("Sichern unter"), *this, Gtk::FileChooser::Action::SAVE,
                                                  t("Sichern"), t("Abbrechen"));
    fileChooser_->set_modal(true);
    addFilters(*fileChooser_, HTMLDocument::writableContentTypes());
    if (const auto& file = document_.fileLocation())
        fileChooser_->set_file(Gio::File::create_for_path(file->string()));
    else
        fileChooser_->set_current_name(t("Ohne Titel") + ".html");
    fileChooser_->signal_response().connect([this, whenSaved](int response) {
        if (response == GTK_RESPONSE_ACCEPT && saveAs(fileChooser_->get_file()->get_path()))
            whenSaved();
    });
    fileChooser_->show();
}

bool DocumentWindow::reportIfFailed(const std::error_code& error) {
    if (error)
        questions_.report(t("„%@“ konnte nicht gesichert werden.", displayName()), t(fileErrorText(error)));
    return static_cast<bool>(error);
}

void DocumentWindow::askBeforeQuitting(const std::function<void()>& whenAnswered) {
    if (!document_.isEdited()) {
        whenAnswered();
        return;
    }
    present();
    questions_.askBeforeClosing(
        displayName(), [this, whenAnswered] { saveThen(whenAnswered); }, whenAnswered);
}

bool DocumentWindow::closeRequested() {
    if (document_.isEdited()) {
        questions_.askBeforeClosing(
            displayName(), [this] { saveThen([this] { closeForGood(); }); }, [this] { closeForGood(); });
    } else {
        closeForGood();
    }
    return true;
}

void DocumentWindow::closeForGood() {
    set_visible(false);
    closed_.emit();
}

} // namespace corvanta
