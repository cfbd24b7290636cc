#include "Corvanta/gtk/DocumentWindows.hpp"

#include "Corvanta/FileErrorText.hpp"
#include "Corvanta/gtk/EditorMenus.hpp"
#include "Corvanta/gtk/FileFilters.hpp"
#include "DesignSystem/t.hpp"

#include <fmt/format.h>
#include <giomm/simpleaction.h>

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

/// In bytes.
constexpr std::uintmax_t megabyte = std::uintmax_t{1024} * 1024;

/// A file larger than this, in bytes, is opened only after a question: it takes time and a multiple of its
/// size.
constexpr std::uintmax_t largeFile = 64 * megabyte;

constexpr const char* nextWindow = "next-window";
constexpr const char* previousWindow = "previous-window";

/// Who dies right after the first key has a journal that the session does not know yet.
bool belongsTo(const WaitingJournal& journal, const Session::Window& window) {
    return journal.name() == window.journal ||
           (window.file && journal.head() && journal.head()->file == window.file);
}

} // namespace

DocumentWindows::DocumentWindows(Gtk::Application& application, const DocumentServices& documents,
                                 WindowServices services)
    : application_(application),
      fileManager_(documents.fileManager),
      services_(std::move(services)),
      controller_(documents.fileManager, documents.userDefaults, documents.protection,
                  [this](OpenDocument& document, const OutsideChanges::Finding& finding) {
                      if (DocumentWindow* window = windowShowing(document))
                          window->fileDidChange(finding);
                  }),
      recentFilesChanged_(
          documents.userDefaults.observe(RecentDocuments::key, [this] { listRecentFiles(); })) {
    listRecentFiles();
}

void DocumentWindows::openDocument(const std::filesystem::path& path) {
    if (const OpenDocument* document = controller_.find(path)) {
        windowShowing(*document)->present();
        return;
    }
    const std::uintmax_t size = fileManager_.fileSize(path).value_or(0);
    if (size <= largeFile) {
        read(path);
        return;
    }
    windowForDialogs().questions().ask(
        t("„%@“ ist %lld MB groß. Trotzdem öffnen?", path.filename().string(), size / megabyte),
        t("Das Öffnen kann lange dauern und braucht ein Vielfaches davon an Arbeitsspeicher."), t("Öffnen"),
        [this, path] { read(path); });
}

void DocumentWindows::read(const std::filesystem::path& path) {
    std::error_code error;
    if (OpenDocument* document = controller_.open(path, error)) {
        show(*document);
        return;
    }
    controller_.recentDocuments().remove(path);
    windowForDialogs().questions().report(t("„%@“ konnte nicht geöffnet werden.", path.filename().string()),
                                          t(fileErrorText(error)));
}

void DocumentWindows::openUntitled() {
    show(controller_.openUntitled());
}

void DocumentWindows::restore(const Session& lastSession, Restoration restoration) {
    std::vector<WaitingJournal> journals = controller_.waitingJournals();
    for (const Session::Window& state : lastSession.windows) {
        const auto journal = std::ranges::find_if(
            journals, [&](const WaitingJournal& waiting) { return belongsTo(waiting, state); });
        if (journal != journals.end()) {
            restore(*journal, &state, lastSession.hasEndedWell);
            journals.erase(journal);
        } else if (restoration == Restoration::everything && state.file) {
            reopen(state);
        }
    }
    for (WaitingJournal& journal : journals)
        restore(journal, nullptr, false);
}

void DocumentWindows::restore(WaitingJournal& journal, const Session::Window* state, bool isExpected) {
    const WaitingJournal::Recovered recovered = journal.read();
    const bool isChanged = recovered.file == WaitingJournal::File::changed;
    // The file keeps its own window, so that the text that comes back gets one of its own.
    if (isChanged && controller_.find(*journal.head()->file) == nullptr)
        read(*journal.head()->file);
    OpenDocument* document = controller_.restore(journal, recovered);
    if (document == nullptr)
        return;
    const std::string name =
        journal.head() && journal.head()->file ? journal.head()->file->filename().string() : t("Ohne Titel");
    DocumentWindow& window = *show(*document, state).window;
    const bool isWhole = recovered.text && recovered.isWhole;
    if (isExpected && isWhole && !isChanged && recovered.file != WaitingJournal::File::missing)
        return;
    window.questions().inform(t("Der ungesicherte Text von „%@“ wurde wiederhergestellt.", name),
                              isChanged
                                  ? t("Die Datei wurde inzwischen geändert. Beide Fassungen sind geöffnet.")
                              : isWhole ? ""
                                        : t("Ein Teil davon war beschädigt und fehlt."));
}

/// A file that is gone is no loss that the user would have to be told of.
void DocumentWindows::reopen(const Session::Window& state) {
    std::error_code error;
    if (controller_.find(*state.file) != nullptr)
        return;
    if (OpenDocument* document = controller_.open(*state.file, error))
        show(*document, &state);
}

void DocumentWindows::sayThatTheLastStartsDied(const std::function<void()>& onRestore) {
    windowForDialogs().questions().ask(
        t("Corvanta wurde zweimal kurz nach dem Start unerwartet beendet. Vorschau und Wiederherstellung "
          "sind diesmal ausgeschaltet."),
        t("Ungesicherte Texte sind aufbewahrt und kommen beim nächsten Start wieder."), t("Wiederherstellen"),
        onRestore);
}

Session DocumentWindows::session() const {
    Session session;
    std::optional<Session::Window> frontmost;
    for (const Entry& entry : entries_) {
        const Session::Window state = entry.window->state();
        // A new document that nobody has touched comes back by itself.
        if (!state.file && !state.journal)
            continue;
        if (entry.window.get() == lastActive_)
            frontmost = state;
        else
            session.windows.push_back(state);
    }
    if (frontmost)
        session.windows.push_back(*frontmost);
    return session;
}

void DocumentWindows::openRecent(std::size_t number) {
    const std::vector<std::filesystem::path> files = controller_.recentDocuments().files();
    if (number < files.size())
        openDocument(files[number]);
}

void DocumentWindows::listRecentFiles() {
    services_.recentFiles->remove_all();
    const auto files = Gio::Menu::create();
    std::size_t number = 0;
    for (const std::filesystem::path& file : controller_.recentDocuments().files())
        files->append(EditorMenus::label(file.filename().string()),
                      fmt::format("app.open-recent({})", number++));
    const auto clearing = Gio::Menu::create();
    clearing->append(EditorMenus::label(t("Liste leeren")), "app.clear-recent");
    services_.recentFiles->append_section(files);
    services_.recentFiles->append_section(clearing);
}

void DocumentWindows::openUntitled(const SharedText& text) {
    DocumentWindow& window = *find(*openUntitledDocumentAndDisplay())->window;
    IndentingTextView& textView = window.contentView().codeEditor().textView();
    textView.replaceWholeText(text);
    textView.setSelectedRange({0, 0});
}

void DocumentWindows::goToLine(const std::filesystem::path& path, int line) {
    if (const OpenDocument* document = controller_.find(path))
        windowShowing(*document)->contentView().codeEditor().textView().goToLine(line);
}

void DocumentWindows::chooseFileToOpen() {
    fileChooser_ = Gtk::FileChooserNative::create(
        t("Öffnen"), windowForDialogs(), Gtk::FileChooser::Action::OPEN, t("Öffnen"), t("Abbrechen"));
    fileChooser_->set_modal(true);
    fileChooser_->set_select_multiple(true);
    addFilters(*fileChooser_, HTMLDocument::readableContentTypes());
    fileChooser_->signal_response().connect([this](int response) {
        if (response != GTK_RESPONSE_ACCEPT)
            return;
        const auto files = fileChooser_->get_files();
        for (guint i = 0; i < files->get_n_items(); ++i) {
            // Not through gtkmm's list, which makes nothing of a local file: it knows the interface only.
            auto* file = static_cast<GFile*>(g_list_model_get_item(files->gobj(), i));
            openDocument(Glib::wrap(file)->get_path());
        }
    });
    fileChooser_->show();
}

DocumentWindows::Entry& DocumentWindows::show(OpenDocument& document, const Session::Window* state) {
    Entry& entry = entries_.emplace_back(
        Entry{nextName_++, std::make_unique<DocumentWindow>(controller_, document, services_)});
    DocumentWindow& window = *entry.window;
    if (state != nullptr)
        window.takeOverState(*state);
    application_.add_window(window);
    addTurningActions(window);
    window.signalClosed().connect([this, closed = &window] { forget(*closed); });
    window.signalRenamed().connect([this] { listWindows(); });
    window.signalStateChanged().connect([this] { sessionChanged_.emit(); });
    window.signalFileDropped().connect([this](const std::filesystem::path& path) { openDocument(path); });
    window.signalDuplicateRequested().connect(
        [this, original = &document] { show(controller_.duplicate(*original)); });
    window.property_is_active().signal_changed().connect([this, active = &window] {
        sessionChanged_.emit();
        if (!active->is_active())
            return;
        lastActive_ = active;
        active->document().lookForOutsideChanges();
        activation.windowDidBecomeMain.emit();
        activation.windowDidBecomeKey.emit();
        activation.applicationDidBecomeActive.emit();
    });
    listWindows();
    window.present();
    sessionChanged_.emit();
    return entry;
}

void DocumentWindows::forget(DocumentWindow& window) {
    const auto closed = entryOf(window);
    if (closed == entries_.end())
        return;
    /// The window is destroyed before the document it refers to.
    struct Closed {
        std::unique_ptr<OpenDocument> document;
        std::unique_ptr<DocumentWindow> window;
    };
    // Destroyed later, because the window is still busy telling us.
    const auto last = std::make_shared<Closed>();
    last->document = controller_.close(window.document());
    last->window = std::move(closed->window);
    services_.preview.mainQueue.async([last] {});
    if (lastActive_ == &window)
        lastActive_ = nullptr;
    entries_.erase(closed);
    listWindows();
    sessionChanged_.emit();
}

std::list<DocumentWindows::Entry>::iterator DocumentWindows::entryOf(const DocumentWindow& window) {
    return std::ranges::find(entries_, &window, [](const Entry& entry) { return entry.window.get(); });
}

void DocumentWindows::addTurningActions(DocumentWindow& window) {
    window.add_action(nextWindow, [this, &window] { presentNext(window); });
    window.add_action(previousWindow, [this, &window] { presentPrevious(window); });
}

void DocumentWindows::listWindows() {
    for (const Entry& entry : entries_) {
        for (const char* turning : {nextWindow, previousWindow})
            std::dynamic_pointer_cast<Gio::SimpleAction>(entry.window->lookup_action(turning))
                ->set_enabled(entries_.size() > 1);
    }
    services_.openWindows->remove_all();
    std::size_t number = 0;
    for (const Entry& entry : entries_)
        services_.openWindows->append(EditorMenus::label(entry.window->get_title().raw()),
                                      fmt::format("app.present-window({})", number++));
}

void DocumentWindows::present(std::size_t number) {
    if (number < entries_.size())
        std::next(entries_.begin(), static_cast<std::ptrdiff_t>(number))->window->present();
}

void DocumentWindows::presentNext(const DocumentWindow& window) {
    const auto next = std::next(entryOf(window));
    (next == entries_.end() ? entries_.front() : *next).window->present();
}

void DocumentWindows::presentPrevious(const DocumentWindow& window) {
    const auto current = entryOf(window);
    (current == entries_.begin() ? entries_.back() : *std::prev(current)).window->present();
}

DocumentWindow* DocumentWindows::frontmost() {
    if (auto* active = dynamic_cast<DocumentWindow*>(application_.get_active_window()))
        return active;
    return entries_.empty() ? nullptr : entries_.back().window.get();
}

DocumentWindow* DocumentWindows::windowShowing(const OpenDocument& document) {
    const auto showing =
        std::ranges::find(entries_, &document, [](const Entry& entry) { return &entry.window->document(); });
    return showing == entries_.end() ? nullptr : showing->window.get();
}

DocumentWindow& DocumentWindows::windowForDialogs() {
    DocumentWindow* front = frontmost();
    return front != nullptr ? *front : *show(controller_.openUntitled()).window;
}

void DocumentWindows::quit(const std::function<void()>& whenAnswered) {
    askBeforeQuitting(documents(), whenAnswered);
}

void DocumentWindows::askBeforeQuitting(std::vector<Document> remaining,
                                        const std::function<void()>& whenAnswered) {
    // One that was closed meanwhile needs no answer.
    while (!remaining.empty() && find(remaining.back()) == nullptr)
        remaining.pop_back();
    if (remaining.empty()) {
        whenAnswered();
        for (const Document document : documents())
            close(document);
        return;
    }
    DocumentWindow& window = *find(remaining.back())->window;
    remaining.pop_back();
    window.askBeforeQuitting([this, remaining, whenAnswered] { askBeforeQuitting(remaining, whenAnswered); });
}

void DocumentWindows::updateLanguage() {
    for (const Entry& entry : entries_)
        entry.window->updateLanguage();
    listRecentFiles();
}

std::vector<LaunchDocuments::Document> DocumentWindows::documents() const {
    std::vector<Document> names;
    for (const Entry& entry : entries_)
        names.push_back(entry.name);
    return names;
}

const DocumentWindows::Entry* DocumentWindows::find(Document document) const {
    const auto found = std::ranges::find(entries_, document, &Entry::name);
    return found == entries_.end() ? nullptr : &*found;
}

bool DocumentWindows::hasFileLocation(Document document) const {
    const Entry* entry = find(document);
    return entry != nullptr && entry->window->document().fileLocation().has_value();
}

bool DocumentWindows::shows(Document document, std::string_view text) const {
    const Entry* entry = find(document);
    return entry != nullptr && entry->window->document().document.text == text;
}

std::optional<LaunchDocuments::Document> DocumentWindows::openUntitledDocumentAndDisplay() {
    return show(controller_.openUntitled()).name;
}

void DocumentWindows::close(Document document) {
    if (const Entry* entry = find(document))
        entry->window->closeForGood();
}

} // namespace corvanta
