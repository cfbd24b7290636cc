#include "Preview/gtk/PreviewColumn.hpp"

#include "DesignSystem/t.hpp"

namespace corvanta {

namespace {

std::string refusalText(bool isSandboxMissing) {
    return isSandboxMissing ? t("Die Vorschau kann hier nicht starten: Die Hilfsprogramme bubblewrap und "
                                "xdg-dbus-proxy fehlen oder "
                                "dürfen nicht arbeiten.")
                            : t("Die Vorschau kann nicht starten: Ein Teil von Corvanta fehlt oder passt "
                                "nicht zu diesem System.");
}

} // namespace

PreviewColumn::PreviewColumn(const Services& services, PreviewCoordinator::HTMLChange onHTMLChange)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      services_(services),
      onHTMLChange_(std::move(onHTMLChange)),
      pane_(services.folderAccess, services.fileManager),
      schemeHandler_(
          services.fileManager, services.typeRegistry, services.log, std::nullopt,
          [] { return std::string(); }, [this](const std::string& path) { pane_.reportMissing(path); }),
      folderPanel_(*this),
      hint_(services.folderAccess) {
    append(hint_);
    hint_.grantButton().signal_clicked().connect([this] { askForFolder(); });
    paneChanged_ = pane_.subscribe([this] { show(); });
}

void PreviewColumn::update(const std::string& html, const std::optional<std::filesystem::path>& documentURL) {
    pane_.update(html, documentURL);
}

void PreviewColumn::show() {
    hint_.show(pane_);
    if (coordinator_)
        coordinator_->update(pane_.html(), pane_.site());
}

void PreviewColumn::askForFolder() {
    if (pane_.documentURL())
        services_.folderAccess.requestAccess(*pane_.documentURL(), folderPanel_);
}

void PreviewColumn::start() {
    engineKnown_ = services_.engine.whenKnown([this](const PreviewEngine::Outcome& outcome) {
        if (outcome.engine != nullptr)
            makeWebView(*outcome.engine);
        else
            sayThatThereIsNone(outcome.isSandboxMissing);
    });
}

void PreviewColumn::makeWebView(const WebEngine& engine) {
    webView_ = engine.makeView(
        schemeHandler_,
        PreviewWebView::Events{
            .didReceive = [this](const BridgeMessage& message) { coordinator_->didReceive(message); },
            .didCommit = [this] { coordinator_->didCommit(); },
            .didLayOut = [this] { coordinator_->didLayOut(); },
            .didFinish = [this] { coordinator_->didFinish(); },
            .didLeave = [this] { coordinator_->didLeave(); },
            .processDidTerminate = [this] { coordinator_->processDidTerminate(); },
            .openLink = services_.openLink});
    webView_->set_expand(true);
    append(*webView_);
    nameWebView();
    coordinator_.emplace(*webView_, schemeHandler_, services_.mainQueue, services_.log, onHTMLChange_);
    coordinator_->update(pane_.html(), pane_.site());
}

void PreviewColumn::updateLanguage() {
    hint_.updateLanguage(pane_);
    refusal_.set_text(refusalText(isSandboxMissing_));
    nameWebView();
}

/// For a screen reader.
void PreviewColumn::nameWebView() {
    if (webView_)
        gtk_accessible_update_property(GTK_ACCESSIBLE(webView_->webView()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                       t("Vorschau").c_str(), -1);
}

void PreviewColumn::sayThatThereIsNone(bool isSandboxMissing) {
    isSandboxMissing_ = isSandboxMissing;
    refusal_.set_text(refusalText(isSandboxMissing_));
    refusal_.set_wrap(true);
    refusal_.set_expand(true);
    refusal_.set_margin(24);
    append(refusal_);
}

} // namespace corvanta
