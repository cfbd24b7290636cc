#include "Platform/gtk/SignalConnection.hpp"
#include "PreviewColumnFixture.hpp"
#include "Support/gtk/WindowPixels.hpp"

#include <fmt/format.h>

#include <cstdlib>
#include <set>
#include <string_view>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

/// A long page whose every pixel tells its place and the page's version: stripes of 20 pixels, coloured
/// (number / 256, number % 256, version).
std::string stripedPage(int version) {
    std::string page = "<!doctype html><style>body { margin: 0 } div { height: 20px }</style>";
    for (int stripe = 0; stripe < 1000; ++stripe)
        page += fmt::format("<div style='background: rgb({}, {}, {})'>x</div>\n", stripe / 256, stripe % 256,
                            version);
    return page;
}

constexpr int offset = 4000;
constexpr int stripeAtOffset = offset / 20;

class ReloadPictureTest : public PreviewColumnFixture {
protected:
    void scrollDown() {
        inPage(fmt::format("window.scrollTo(0, {}); 1", offset));
        ASSERT_TRUE(waitUntil([this] {
            return column.coordinator()->lastReportedScroll() == ScrollOffset{0, offset};
        }));
        ASSERT_TRUE(waitUntil([this] { return now().green == stripeAtOffset; }));
    }

    /// The first stripe as it is on the screen, beside its text.
    PixelColor now() { return pixelOnScreen(*column.webView(), 300, 10); }

    /// Looks at every picture of the window from now on.
    void lookAtEveryPicture() {
        painted_ = SignalConnection(
            gtk_widget_get_frame_clock(GTK_WIDGET(window.window().gobj())), "after-paint",
            +[](GdkFrameClock*, gpointer self) { static_cast<ReloadPictureTest*>(self)->look(); }, this);
    }

    void look() {
        const PixelColor color = now();
        ++pictures;
        shown.insert(color.blue);
        if (color.red != 0 || color.green != stripeAtOffset)
            wrong.push_back(
                fmt::format("picture {}: {} {} {}", pictures, color.red, color.green, color.blue));
    }

    int pictures = 0;
    std::set<int> shown;
    std::vector<std::string> wrong;

private:
    SignalConnection painted_;
};

TEST_F(ReloadPictureTest, ShowsNoBlankPictureAndNoOtherPlaceWhilePagesReload) {
    const int reloads = std::getenv("CORVANTA_LONG_TESTS") == nullptr ? 10 : 50;
    showEditable(stripedPage(0));
    scrollDown();
    lookAtEveryPicture();
    for (int version = 1; version <= reloads; ++version) {
        show(stripedPage(version));
        ASSERT_TRUE(waitUntil([&] { return now().blue == version; }))
            << "version " << version << ", " << pictures << " pictures";
        // Also what comes after, when the page is put back once more.
        letPass(version % 5 == 0 ? 400ms : 30ms);
    }
    EXPECT_GE(pictures, reloads);
    EXPECT_EQ(wrong, std::vector<std::string>());
}

TEST_F(ReloadPictureTest, ShowsNoHalfReadPage) {
    const int reloads = std::getenv("CORVANTA_LONG_TESTS") == nullptr ? 3 : 50;
    // While the parser waits for a script the engine shows what it has read so far, from its beginning.
    folder.write("gross.js", "/*" + std::string(6 * 1024 * 1024, 'x') + "*/");
    const auto slowPage = [](int version) {
        const std::string script = "<script src=gross.js></script>";
        std::string page = stripedPage(version);
        page.insert(page.find("<div", page.size() / 2), script);
        return page.insert(page.find("<div"), script);
    };
    showEditable(slowPage(0));
    scrollDown();
    lookAtEveryPicture();
    for (int version = 1; version <= reloads; ++version) {
        show(slowPage(version));
        ASSERT_TRUE(waitUntil([&] { return now().blue == version; })) << "version " << version;
    }
    EXPECT_EQ(wrong, std::vector<std::string>());
}

TEST_F(ReloadPictureTest, KeepsTheLastPictureAlsoWhenTheViewIsAboutToDraw) {
    folder.write("gross.js", "/*" + std::string(6 * 1024 * 1024, 'x') + "*/");
    std::string halfRead = stripedPage(1);
    halfRead.insert(halfRead.find("<div", halfRead.size() / 2), "<script src=gross.js></script>");
    showEditable(stripedPage(0));
    scrollDown();
    lookAtEveryPicture();
    gtk_widget_queue_draw(GTK_WIDGET(column.webView()->webView()));
    show(halfRead);
    ASSERT_TRUE(waitUntil([&] { return now().blue == 1; }));
    EXPECT_EQ(wrong, std::vector<std::string>());
}

TEST_F(ReloadPictureTest, ShowsAPageWithTheFirstPictureThatTheEngineMakesOfIt) {
    // The engine makes no second picture while the page is at work.
    const auto pageAtWork = [](int version) {
        return fmt::format(
            "<!doctype html><title>an</title><style>html {{ background: rgb(0, 0, {}) }}</style><p>x"
            "<script>requestAnimationFrame(() => setTimeout(() => {{"
            "const end = performance.now() + 300; while (performance.now() < end);"
            "document.title = 'aus'; }}));</script>",
            version);
    };
    const auto isAtWork = [this] {
        return std::string_view(webkit_web_view_get_title(column.webView()->webView())) != "aus";
    };
    showEditable(pageAtWork(0));
    bool isShownAtWork = false;
    // Beside much other work the engine may make a picture before the page is whole.
    for (int version = 1; version <= 20 && !isShownAtWork; ++version) {
        ASSERT_TRUE(waitUntil([&] { return !isAtWork(); }));
        show(pageAtWork(version));
        ASSERT_TRUE(waitUntil([&] { return now().blue == version; }));
        isShownAtWork = isAtWork();
        ASSERT_TRUE(waitUntil([this] { return column.coordinator()->isSettled(); }));
    }
    EXPECT_TRUE(isShownAtWork);
}

TEST_F(ReloadPictureTest, ShowsPagesInBetweenAndTheLastOneWhenTextsComeFasterThanPages) {
    showEditable(stripedPage(0));
    scrollDown();
    lookAtEveryPicture();
    for (int version = 1; version <= 100; ++version) {
        show(stripedPage(version));
        letPass(20ms);
    }
    EXPECT_TRUE(waitUntil([&] { return now().blue == 100; }));
    EXPECT_EQ(wrong, std::vector<std::string>());
    EXPECT_GE(shown.size(), 3U) << "nothing was shown while the texts came";
    EXPECT_LE(shown.size(), 90U);
}

TEST_F(ReloadPictureTest, KeepsTheLastPictureWhileAPageIsSlow) {
    showEditable(stripedPage(0));
    scrollDown();
    lookAtEveryPicture();
    show("<script>const end = performance.now() + 800; while (performance.now() < end);</script>" +
         stripedPage(1));
    letPass(400ms);
    EXPECT_EQ(now().blue, 0);
    EXPECT_TRUE(waitUntil([&] { return now().blue == 1; }));
    EXPECT_EQ(wrong, std::vector<std::string>());
}

TEST_F(ReloadPictureTest, ShowsAPageThatBecomesTallOnlyLate) {
    folder.write("hoch.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='3000'/>");
    showEditable("<img src=hoch.svg>" + stripedPage(0));
    inPage("window.scrollTo(0, 3500); 1");
    ASSERT_TRUE(waitUntil([this] {
        return column.coordinator()->lastReportedScroll() == ScrollOffset{0, 3500};
    }));
    show("<img src=hoch.svg>" + stripedPage(1));
    EXPECT_TRUE(waitUntil([&] { return now().blue == 1; }));
    EXPECT_EQ(inPage("window.scrollY"), "3500");
}

} // namespace
} // namespace corvanta
