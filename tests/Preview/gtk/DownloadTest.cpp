// Nothing that a page offers to be kept gets onto the disk, whoever asks for it.

#include "ClickedPageFixture.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Support/gtk/LocalWebServer.hpp"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <vector>

namespace corvanta {
namespace {

class DownloadTest : public ClickedPageFixture {
protected:
    void SetUp() override {
        ClickedPageFixture::SetUp();
        WebKitNetworkSession* session = webkit_web_view_get_network_session(column.webView()->webView());
        const auto started = +[](WebKitNetworkSession*, WebKitDownload* download, gpointer self) {
            static_cast<DownloadTest*>(self)->watch(download);
        };
        connections.emplace_back(session, "download-started", started, this);
        folder.write("datei.bin", "hallo");
    }

    /// Has what is loaded down come into the test's folder, if it comes at all.
    void watch(WebKitDownload* download) {
        ++downloads;
        const auto decide = +[](WebKitDownload* asking, const char*, gpointer self) -> gboolean {
            webkit_download_set_destination(asking, static_cast<DownloadTest*>(self)->kept.c_str());
            return TRUE;
        };
        const auto finished =
            +[](WebKitDownload*, gpointer self) { ++static_cast<DownloadTest*>(self)->ended; };
        connections.emplace_back(download, "decide-destination", decide, this);
        connections.emplace_back(download, "finished", finished, this);
    }

    /// `links` that a page wants its reader to keep, one below the other, each 40 pixels high.
    std::string links() const {
        std::string page = "<style>body { margin: 0 } a { display: block; height: 40px; background: red }"
                           "</style><a id=blob download=x.bin>diese</a>";
        for (const std::string& href :
             {std::string("datei.bin"), std::string("data:x/x,hallo"), server.url()})
            page += fmt::format("<a href='{}' download=x.bin>diese</a>", href);
        return page + "<script>blob.href = URL.createObjectURL(new Blob(['hallo']));</script>";
    }

    void expectNoDownload() {
        expectNothingHappened();
        EXPECT_EQ(downloads, 0);
    }

    const std::filesystem::path kept = folder / "behalten.bin";
    int downloads = 0;
    int ended = 0;
    LocalWebServer server{[](LocalWebServer::Client& client) {
        client.send("HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\nContent-Length: 5\r\n"
                    "Content-Disposition: attachment; filename=x.bin\r\n\r\nhallo");
    }};
    std::vector<SignalConnection> connections;
};

TEST_F(DownloadTest, KeepsNothingThatAFrameIsAnsweredAsAnAttachment) {
    show("<p>x</p><iframe src='" + server.url() + "'></iframe>");
    ASSERT_TRUE(waitUntil([this] { return downloads == 1 && ended == 1; }));
    expectNothingHappened();
    EXPECT_FALSE(std::filesystem::exists(kept));
}

TEST_F(DownloadTest, GoesToNothingThatCannotBeShown) {
    show("<p>x</p><iframe src=datei.bin></iframe><script>location = '" + server.url() + "';</script>");
    ASSERT_TRUE(waitUntil([this] { return server.requests().size() == 1; }));
    expectNoDownload();
    show("<p>y</p><script>location = 'datei.bin';</script>");
    expectNoDownload();
}

TEST_F(DownloadTest, KeepsNothingThatAScriptClicks) {
    const std::string clickAll = "document.querySelectorAll('a').forEach(a => a.click());";
    showEditable(links() + "<script>" + clickAll + "</script>");
    expectNoDownload();
    click(clickAll, links());
    expectNoDownload();
    EXPECT_TRUE(openedLinks.empty());
}

TEST_F(DownloadTest, KeepsNothingThatTheUserClicks) {
    // A page may end that it can be edited, and its links work in another way then.
    for (const std::string mode : {"on", "off"}) {
        openedLinks.clear();
        showEditable(links() + "<script>addEventListener('mousedown', () => { document.designMode = '" +
                     mode +
                     "'; }, true); addEventListener('click', e => { e.target.isClicked = true; });</script>");
        ASSERT_TRUE(waitUntil([this] {
            return pixelOnScreen(*column.webView(), 300, 20) == PixelColor{255, 0, 0};
        }));
        for (int link = 0; link < 4; ++link) {
            // The engine does not take every click on a busy machine for the user's.
            ASSERT_TRUE(waitUntil([&] {
                clickOnScreen(*column.webView(), 20, 40 * link + 20);
                letPass(std::chrono::milliseconds(300));
                return inPage(fmt::format("document.querySelectorAll('a')[{}].isClicked", link)) == "true";
            }));
        }
        expectNoDownload();
        // The desktop's browser may ask its user what to do with it.
        EXPECT_FALSE(openedLinks.empty());
        EXPECT_EQ(std::ranges::count(openedLinks, server.url()), std::ssize(openedLinks));
    }
}

} // namespace
} // namespace corvanta
