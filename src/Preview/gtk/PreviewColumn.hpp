#pragma once

#include "Platform/FileManager.hpp"
#include "Platform/Log.hpp"
#include "Platform/MainQueue.hpp"
#include "Platform/Subscription.hpp"
#include "Preview/PreviewCoordinator.hpp"
#include "Preview/PreviewFolderAccess.hpp"
#include "Preview/PreviewPane.hpp"
#include "Preview/PreviewSchemeHandler.hpp"
#include "Preview/TypeRegistry.hpp"
#include "Preview/gtk/GtkFolderPanel.hpp"
#include "Preview/gtk/PreviewEngine.hpp"
#include "Preview/gtk/PreviewHint.hpp"
#include "Preview/gtk/PreviewWebView.hpp"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace corvanta {

/// The preview column of a document window. It holds the text to show from the start, but makes the web view
/// only when it is told to, so that the text pane need not wait for the web engine.
class PreviewColumn : public Gtk::Box {
public:
    /// What the column takes from the program; all of it outlives the column.
    struct Services {
        PreviewEngine& engine;
        PreviewFolderAccess& folderAccess;
        const FileManager& fileManager;
        const TypeRegistry& typeRegistry;
        MainQueue& mainQueue;
        Log& log;
        /// Opens an address of the web or of mail in the desktop's program for it.
        std::function<void(const std::string& url)> openLink;
    };

    /// `onHTMLChange` hears the new text of the document after each edit in the page.
    PreviewColumn(const Services& services, PreviewCoordinator::HTMLChange onHTMLChange);

    /// Shows `html` (UTF-8) as the page of the document at `documentURL`, which is absent for an unsaved one.
    void update(const std::string& html, const std::optional<std::filesystem::path>& documentURL);

    /// Makes the web view, or says that there is none here.
    void start();

    /// Shows all texts in the language that is in use now.
    void updateLanguage();

    /// Nothing before the web view was made.
    PreviewWebView* webView() { return webView_.get(); }
    const PreviewCoordinator* coordinator() const { return coordinator_ ? &*coordinator_ : nullptr; }

    const PreviewPane& pane() const { return pane_; }
    PreviewHint& hint() { return hint_; }

    /// What is said in place of the preview when it cannot start.
    const Gtk::Label& refusal() const { return refusal_; }

private:
    void show();
    void askForFolder();
    void makeWebView(const WebEngine& engine);
    void nameWebView();
    void sayThatThereIsNone(bool isSandboxMissing);

    Services services_;
    PreviewCoordinator::HTMLChange onHTMLChange_;
    PreviewPane pane_;
    PreviewSchemeHandler schemeHandler_;
    GtkFolderPanel folderPanel_;

    PreviewHint hint_;
    std::unique_ptr<PreviewWebView> webView_;
    std::optional<PreviewCoordinator> coordinator_;
    Gtk::Label refusal_;
    /// Why there is no preview, when there is none.
    bool isSandboxMissing_ = false;
    Subscription paneChanged_;
    Subscription engineKnown_;
};

} // namespace corvanta
