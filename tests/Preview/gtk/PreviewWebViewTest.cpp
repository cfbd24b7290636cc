#include "Preview/gtk/PreviewWebView.hpp"

#include "Platform/PosixFileManager.hpp"
#include "Preview/SharedMimeInfo.hpp"
#include "Preview/gtk/PreviewEngine.hpp"
#include "Support/RecordedLog.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/TestWindow.hpp"
#include "Support/gtk/WindowPixels.hpp"

#include <gtest/gtest.h>
#include <gtkmm/cssprovider.h>

#include <memory>
#include <optional>
#include <string>

namespace corvanta {
namespace {

class PreviewWebViewTest : public testing::Test {
protected:
    void SetUp() override {
        known_ = engine_.whenKnown([this](const PreviewEngine::Outcome& outcome) {
            ASSERT_NE(outcome.engine, nullptr) << "the web engine cannot start";
            view = outcome.engine->makeView(schemeHandler_,
                                            PreviewWebView::Events{[](const BridgeMessage&) {}, [] {},
                                                                   [this] { view->reveal(); }, [] {}, [] {},
                                                                   [] {}, [](const std::string&) {}});
        });
        ASSERT_TRUE(waitUntil([this] { return view != nullptr; }));
    }

private:
    PosixFileManager fileManager_;
    SharedMimeInfo typeRegistry_{fileManager_, {}};
    RecordedLog log_;
    PreviewSchemeHandler schemeHandler_{fileManager_,
                                        typeRegistry_,
                                        log_,
                                        std::nullopt,
                                        [] { return std::string(); },
                                        [](const std::string&) {}};
    PreviewEngine engine_;
    Subscription known_;

protected:
    std::unique_ptr<PreviewWebView> view;
};

TEST_F(PreviewWebViewTest, IsNotDrawnBeforeItsFirstPageHasBegun) {
    // The engine's view would be drawn over the box that it is in.
    const auto style = Gtk::CssProvider::create();
    style->load_from_data("box { background: #010203; } box > * { background: #ffffff; }");
    Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), style,
                                                GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    TestWindow window(*view);
    EXPECT_TRUE(waitUntil([this] { return pixelOnScreen(*view, 100, 100) == PixelColor{1, 2, 3}; }));
    view->loadHTML("<body style='background: #040506'>", std::nullopt);
    EXPECT_TRUE(waitUntil([this] { return pixelOnScreen(*view, 100, 100) == PixelColor{4, 5, 6}; }));
    Gtk::StyleContext::remove_provider_for_display(Gdk::Display::get_default(), style);
}

} // namespace
} // namespace corvanta
