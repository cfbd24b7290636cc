#pragma once

#include "ClaudeAssistant/ClaudeAssistantViewModel.hpp"
#include "ClaudeAssistant/KeychainManager.hpp"
#include "ClaudeAssistant/gtk/LibsecretKeychain.hpp"
#include "Corvanta/AboutModel.hpp"
#include "Corvanta/AppDelegate.hpp"
#include "Corvanta/SessionKeeper.hpp"
#include "Corvanta/Unterstuetzung.hpp"
#include "Corvanta/gtk/AuxiliaryWindows.hpp"
#include "Corvanta/gtk/DocumentWindows.hpp"
#include "DesignSystem/Sprache.hpp"
#include "DesignSystem/gtk/StyleSheet.hpp"
#include "Documents/StartGuard.hpp"
#include "Documents/WorkerThread.hpp"
#include "Platform/JSONUserDefaults.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "Platform/gtk/DesktopWorkspace.hpp"
#include "Platform/gtk/GLibLog.hpp"
#include "Platform/gtk/GLibMainQueue.hpp"
#include "Preview/PosixFolderBookmarks.hpp"
#include "Preview/PreviewFileManager.hpp"
#include "Preview/PreviewFolderAccess.hpp"
#include "Preview/SharedMimeInfo.hpp"
#include "Preview/gtk/PreviewEngine.hpp"
#include "Settings/AppSettings.hpp"
#include "Settings/gtk/SoupHttpFetch.hpp"

#include <giomm/filemonitor.h>
#include <gtkmm/application.h>

#include <filesystem>
#include <memory>
#include <optional>

namespace corvanta {

/// The program: puts its parts together, one process for all documents.
class CorvantaApp : public Gtk::Application {
public:
    static constexpr const char* identifier = "de.corvanta.Corvanta";

    CorvantaApp();

    DocumentWindows& documentWindows() { return *documentWindows_; }

    /// Where what is not saved yet is kept.
    static std::filesystem::path journalFolder();

protected:
    bool local_command_line_vfunc(char**& arguments, int& exitStatus) override;
    void on_startup() override;
    void on_activate() override;
    void on_open(const type_vec_files& files, const Glib::ustring& hint) override;
    void on_shutdown() override;

private:
    void addFileActions();
    void addCommandLineActions();
    void addWindowActions();
    void addHelpActions();
    void addZoomActions();
    void watchSettings();
    void finishLaunching(DocumentWindows::Restoration restoration);
    void restoreLastSession(DocumentWindows::Restoration restoration);
    void quitAfterQuestions();
    void endInGoodOrder();
    void endOnSignals();
    static int endedBySignal(void* app);
    void updateLanguage();
    WindowServices windowServices();
    AuxiliaryWindows::Makers auxiliaryWindowMakers();

    GLibMainQueue mainQueue_;
    GLibLog log_{identifier};
    PosixFileManager fileManager_;
    PosixFileOperations fileOperations_;
    DesktopWorkspace workspace_;
    JSONUserDefaults userDefaults_;
    Glib::RefPtr<Gio::FileMonitor> settingsMonitor_;
    Sprache sprache_;
    Sprache::Sitzung sitzung_{sprache_};
    /// After what it works for.
    WorkerThread worker_;

    AppSettings appSettings_{userDefaults_};
    LibsecretKeychain keychain_;
    KeychainManager keychainManager_{keychain_, identifier};
    std::optional<ClaudeAssistantViewModel> claudeAssistant_;
    SoupHttpFetch httpFetch_;
    AboutModel aboutModel_{httpFetch_, log_, appSettings_};
    Unterstuetzung unterstuetzung_;

    PreviewFileManager previewFileManager_;
    SharedMimeInfo typeRegistry_{fileManager_, SharedMimeInfo::environmentDataFolders()};
    PosixFolderBookmarks folderBookmarks_;
    PreviewFolderAccess folderAccess_{userDefaults_, folderBookmarks_, previewFileManager_, log_};
    std::optional<PreviewEngine> previewEngine_;

    std::optional<StyleSheet> styleSheet_;
    Published<FindRequest> findRequest_;
    Glib::RefPtr<Gio::Menu> recentFiles_ = Gio::Menu::create();
    Glib::RefPtr<Gio::Menu> openWindows_ = Gio::Menu::create();
    std::optional<DocumentWindows> documentWindows_;
    std::optional<AuxiliaryWindows> auxiliaryWindows_;
    std::optional<SessionKeeper> sessionKeeper_;
    std::optional<StartGuard> startGuard_;
    std::optional<AppDelegate> appDelegate_;
    bool isLaunched_ = false;
    std::unique_ptr<MainQueue::Handle> launchHold_;
    Subscription languageChanged_;
};

} // namespace corvanta
