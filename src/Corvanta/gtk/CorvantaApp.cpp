#include "Corvanta/gtk/CorvantaApp.hpp"

#include "Corvanta/gtk/AboutWindow.hpp"
#include "Corvanta/gtk/CommandLine.hpp"
#include "Corvanta/gtk/EditorMenus.hpp"
#include "Corvanta/gtk/HelpWindow.hpp"
#include "Corvanta/gtk/LanguageSurroundings.hpp"
#include "Corvanta/gtk/SettingsWindow.hpp"
#include "Corvanta/gtk/ShortcutsWindow.hpp"
#include "EditorCore/TextDecoding.hpp"
#include "Platform/ResourceFolder.hpp"

#include <adwaita.h>
#include <glib-unix.h>
#include <glibmm/miscutils.h>
#include <gtkmm/icontheme.h>

#include <algorithm>
#include <csignal>
#include <string>
#include <vector>

namespace corvanta {

namespace {

constexpr const char* languageKey = "sprache";
constexpr const char* toolkitLanguagesKey = "AppleLanguages";

std::filesystem::path stateFolder() {
    return std::filesystem::path(g_get_user_state_dir()) / "Corvanta";
}

/// The toolkit's own texts follow the language that was chosen in an earlier run.
void chooseLanguageOfTheToolkit(const UserDefaults& userDefaults) {
    const auto languages = userDefaults.get<std::vector<std::string>>(toolkitLanguagesKey);
    if (languages && !languages->empty())
        Glib::setenv("LANGUAGE", languages->front());
}

std::string systemVersion() {
    const std::unique_ptr<char, decltype(&g_free)> name(g_get_os_info(G_OS_INFO_KEY_PRETTY_NAME), g_free);
    return name ? name.get() : "Linux";
}

/// The program's icons lie beside its resources, which need not be where the toolkit looks for icons.
void addIconFolder(const Glib::RefPtr<Gdk::Display>& display) {
    const auto resources = resourceFolder(runningExecutable());
    if (!resources)
        return;
    const std::string folder = resources->parent_path() / "icons";
    const auto theme = Gtk::IconTheme::get_for_display(display);
    if (std::ranges::count(theme->get_search_path(), folder) == 0)
        theme->add_search_path(folder);
}

} // namespace

CorvantaApp::CorvantaApp()
    : Gtk::Application(identifier, Gio::Application::Flags::HANDLES_OPEN),
      userDefaults_(LanguageSurroundings::settingsFile()),
      sprache_(LanguageSurroundings::make(userDefaults_, fileManager_)),
      unterstuetzung_(UpdateCheck::currentVersion(), systemVersion(),
                      [this] { return sprache_.wirksameKennung(); }),
      previewFileManager_(fileManager_, Glib::get_home_dir()) {
    chooseLanguageOfTheToolkit(userDefaults_);
}

bool CorvantaApp::local_command_line_vfunc(char**& arguments, int& exitStatus) {
    std::vector<std::string> words;
    for (char** word = *arguments == nullptr ? arguments : arguments + 1; *word != nullptr; ++word)
        words.emplace_back(*word);
    const std::optional<int> status = CommandLine::run(*this, words);
    if (!status)
        return Gtk::Application::local_command_line_vfunc(arguments, exitStatus);
    exitStatus = *status;
    return true;
}

void CorvantaApp::on_startup() {
    // First of all, because the probe runs in processes of its own while the window is being made.
    previewEngine_.emplace();
    Gtk::Application::on_startup();
    adw_init();
    addIconFolder(Gdk::Display::get_default());
    // Nobody waits for the templates, but writing them waits for the disk.
    worker_.after({}, [this] { sprache_.vorbereiten(); });
    claudeAssistant_.emplace(keychainManager_);
    styleSheet_.emplace(userDefaults_, Gdk::Display::get_default());
    // Nobody else's to read. Without the folder every window says that it cannot keep unsaved text.
    g_mkdir_with_parents(journalFolder().c_str(), 0700);
    startGuard_.emplace(fileOperations_, mainQueue_, stateFolder() / "Start");
    documentWindows_.emplace(
        *this,
        DocumentWindows::DocumentServices{
            fileManager_, userDefaults_, {fileOperations_, mainQueue_, worker_, journalFolder()}},
        windowServices());
    sessionKeeper_.emplace(SessionKeeper::Services{fileOperations_, mainQueue_, worker_},
                           stateFolder() / "Sitzung.json", [this] { return documentWindows_->session(); });
    documentWindows_->signalSessionChanged().connect([this] { sessionKeeper_->noteChange(); });
    auxiliaryWindows_.emplace(*this, mainQueue_, auxiliaryWindowMakers());
    appDelegate_.emplace(*documentWindows_, documentWindows_->activation, mainQueue_, log_);
    languageChanged_ = userDefaults_.observe(languageKey, [this] {
        // Later, because the picker that chose it is among what is made anew.
        mainQueue_.async([this] { updateLanguage(); });
    });
    watchSettings();
    addFileActions();
    addCommandLineActions();
    addWindowActions();
    addHelpActions();
    addZoomActions();
    EditorMenus::setShortcuts(*this);
    endOnSignals();
}

std::filesystem::path CorvantaApp::journalFolder() {
    return stateFolder() / "Journale";
}

/// Whoever ends the program without asking, as the session does at a log-out, loses nothing of the user's.
void CorvantaApp::endOnSignals() {
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        g_unix_signal_add(signal, &CorvantaApp::endedBySignal, this);
}

int CorvantaApp::endedBySignal(void* app) {
    auto& self = *static_cast<CorvantaApp*>(app);
    self.documentWindows_->bringToDisk();
    self.endInGoodOrder();
    self.quit();
    return G_SOURCE_CONTINUE;
}

void CorvantaApp::on_shutdown() {
    endInGoodOrder();
    Gtk::Application::on_shutdown();
}

void CorvantaApp::endInGoodOrder() {
    sessionKeeper_->end();
    startGuard_->endWell();
}

void CorvantaApp::quitAfterQuestions() {
    documentWindows_->quit([this] {
        // While the windows are there.
        endInGoodOrder();
        auxiliaryWindows_->closeAll();
        // Right after a start the offer of a new document would keep the program alive.
        mainQueue_.async([this] { quit(); });
    });
}

void CorvantaApp::watchSettings() {
    // The folder, because the file is replaced by every change.
    settingsMonitor_ =
        Gio::File::create_for_path(LanguageSurroundings::settingsFile().parent_path())->monitor_directory();
    settingsMonitor_->signal_changed().connect(
        [this](const auto&, const auto&, auto) { userDefaults_.reload(); });
}

WindowServices CorvantaApp::windowServices() {
    return {appSettings_,
            findRequest_,
            *claudeAssistant_,
            {*previewEngine_, folderAccess_, previewFileManager_, typeRegistry_, mainQueue_, log_,
             [this](const std::string& url) { workspace_.open(url); }},
            !startGuard_->isCautious(),
            recentFiles_,
            openWindows_};
}

AuxiliaryWindows::Makers CorvantaApp::auxiliaryWindowMakers() {
    return {[this] {
                return std::make_unique<SettingsWindow>(appSettings_, userDefaults_, sprache_,
                                                        *claudeAssistant_, workspace_);
            },
            [] { return std::make_unique<HelpWindow>(); }, [] { return std::make_unique<ShortcutsWindow>(); },
            [this] { return std::make_unique<AboutWindow>(aboutModel_, workspace_); }};
}

void CorvantaApp::addFileActions() {
    add_action("new", [this] { documentWindows_->openUntitled(); });
    add_action("open", [this] { documentWindows_->chooseFileToOpen(); });
    add_action_with_parameter(
        "open-recent", Glib::VARIANT_TYPE_INT32, [this](const Glib::VariantBase& number) {
            const int chosen = Glib::VariantBase::cast_dynamic<Glib::Variant<int>>(number).get();
            documentWindows_->openRecent(static_cast<std::size_t>(chosen));
        });
    add_action("clear-recent", [this] { documentWindows_->clearRecent(); });
    add_action("quit", [this] { quitAfterQuestions(); });
}

void CorvantaApp::addCommandLineActions() {
    CommandLine::addActions(
        *this,
        {[this](std::string_view bytes) {
             finishLaunching(DocumentWindows::Restoration::unsavedOnly);
             documentWindows_->openUntitled(TextDecoding::string(std::string(bytes)));
         },
         [this](const std::filesystem::path& path, int line) { documentWindows_->goToLine(path, line); }});
}

void CorvantaApp::addWindowActions() {
    add_action("settings", [this] { auxiliaryWindows_->showSettings(); });
    add_action_with_parameter(
        "present-window", Glib::VARIANT_TYPE_INT32, [this](const Glib::VariantBase& number) {
            const int chosen = Glib::VariantBase::cast_dynamic<Glib::Variant<int>>(number).get();
            documentWindows_->present(static_cast<std::size_t>(chosen));
        });
}

void CorvantaApp::addHelpActions() {
    add_action("help", [this] { auxiliaryWindows_->showHelp(); });
    add_action("shortcuts", [this] { auxiliaryWindows_->showShortcuts(); });
    add_action("about", [this] { auxiliaryWindows_->showAbout(); });
    add_action("check-for-updates", [this] { auxiliaryWindows_->showAbout(); });
    add_action("feedback", [this] { workspace_.open(unterstuetzung_.rueckmeldung()); });
    add_action("donate", [this] { workspace_.open(Unterstuetzung::spende()); });
}

void CorvantaApp::addZoomActions() {
    const auto resize = [this](double size) {
        appSettings_.editorFontSize =
            std::clamp(size, EditorSettingsView::smallestFontSize, EditorSettingsView::largestFontSize);
    };
    add_action("zoom-in", [this, resize] { resize(*appSettings_.editorFontSize + 1); });
    add_action("zoom-out", [this, resize] { resize(*appSettings_.editorFontSize - 1); });
    add_action("zoom-reset", [resize] { resize(EditorFont{}.size); });
}

void CorvantaApp::finishLaunching(DocumentWindows::Restoration restoration) {
    if (isLaunched_)
        return;
    isLaunched_ = true;
    restoreLastSession(restoration);
    // Until the offer is made there may be no window, which would end the program.
    hold();
    appDelegate_->applicationDidFinishLaunching();
    launchHold_ = mainQueue_.after(2 * AppDelegate::offerDelay, [this] { release(); });
}

void CorvantaApp::restoreLastSession(DocumentWindows::Restoration restoration) {
    const auto restore = [this, restoration, session = sessionKeeper_->lastSession()] {
        documentWindows_->restore(session, restoration);
    };
    if (!startGuard_->isCautious()) {
        restore();
        return;
    }
    // Later, so that it is said at the window of a file that is being opened and will stay.
    mainQueue_.async([this, restore] { documentWindows_->sayThatTheLastStartsDied(restore); });
}

void CorvantaApp::on_activate() {
    if (!isLaunched_) {
        finishLaunching(DocumentWindows::Restoration::everything);
        return;
    }
    DocumentWindow* front = documentWindows_->frontmost();
    appDelegate_->applicationShouldHandleReopen(front != nullptr);
    if (front != nullptr)
        front->present();
}

void CorvantaApp::on_open(const type_vec_files& files, const Glib::ustring&) {
    // Before the files, of which one may have unsaved text that comes back. Whoever opens a file wants this
    // one and not the windows of yesterday.
    finishLaunching(DocumentWindows::Restoration::unsavedOnly);
    for (const auto& file : files)
        documentWindows_->openDocument(file->get_path());
}

void CorvantaApp::updateLanguage() {
    // Whoever chose it by editing the settings' file did not tell the catalogue.
    sprache_.neuLaden();
    documentWindows_->updateLanguage();
    auxiliaryWindows_->updateLanguage();
}

} // namespace corvanta
