#include "PreviewColumnFixture.hpp"

#include <glibmm/main.h>
#include <glibmm/miscutils.h>
#include <sys/stat.h>
#include <time.h>

#include <fstream>
#include <iterator>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

using PreviewColumnTest = PreviewColumnFixture;

/// The time of the processor that this thread has had.
std::chrono::nanoseconds timeOfThisThread() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// All that the files below `folder` hold.
std::string contentsBelow(const std::filesystem::path& folder) {
    std::string contents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        if (entry.is_regular_file())
            contents.append(std::istreambuf_iterator<char>(file), {});
    }
    return contents;
}

TEST_F(PreviewColumnTest, ShowsTheTextAndNotTheFile) {
    folder.write("index.html", "<h1>alt</h1>");
    show("<h1>neu</h1>");
    EXPECT_TRUE(becomes("document.querySelector('h1').textContent", "neu"));
    EXPECT_EQ(inPage("location.href"), "vmpreview://dokument/index.html");
}

TEST_F(PreviewColumnTest, LoadsStyleSheetImageAndScriptFromTheDocumentsFolder) {
    folder.write("stil.css", "h1 { color: rgb(1, 2, 3); }");
    folder.write("bild.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='30' height='20'/>");
    folder.write("skript.js", "document.body.dataset.da = 'ja';");
    show("<link rel=stylesheet href=stil.css><h1>x</h1><img src=/bild.svg><script src=skript.js></script>");
    EXPECT_TRUE(becomes("getComputedStyle(document.querySelector('h1')).color", "rgb(1, 2, 3)"));
    EXPECT_TRUE(becomes("document.querySelector('img').naturalWidth", "30"));
    EXPECT_TRUE(becomes("document.body.dataset.da", "ja"));
}

TEST_F(PreviewColumnTest, AnswersAMissingFileWith404AndExactlyTheHeadersOfAReply) {
    folder.write("da.txt", "Text");
    show("<p>x</p><script>async function reply(path) { const r = await fetch(path);"
         "return r.status + ' ' + [...r.headers].map(h => h.join('=')).sort().join(' ') + ' ' + await "
         "r.text(); }"
         "reply('da.txt').then(t => document.title = t);"
         "reply('fehlt.txt').then(t => window.missing = t);</script>");
    EXPECT_TRUE(becomes("document.title", "200 access-control-allow-origin=* cache-control=no-store "
                                          "content-length=4 content-type=text/plain; charset=utf-8 Text"));
    EXPECT_TRUE(becomes("window.missing", "404 access-control-allow-origin=* cache-control=no-store "
                                          "content-length=0 content-type=text/plain "));
    EXPECT_EQ(
        std::count(log.lines.begin(), log.lines.end(), "preview: preview resource not delivered: fehlt.txt"),
        1);
}

TEST_F(PreviewColumnTest, ServesTheDocumentUnderAnyFileName) {
    column.update("<h1>da</h1>", folder.path() / "größe & co [1] #2?.html");
    EXPECT_TRUE(becomes("document.querySelector('h1').textContent", "da"));
}

TEST_F(PreviewColumnTest, DeliversALargeFileWhole) {
    std::string large(64 * 1024 * 1024, 'x');
    large.front() = 'a';
    large.back() = 'z';
    folder.write("gross.txt", large);
    show("<script>fetch('gross.txt').then(r => r.text()).then(t => {"
         "document.title = t.length + t[0] + t[t.length - 1]; });</script>");
    EXPECT_TRUE(becomes("document.title", "67108864az"));
}

TEST_F(PreviewColumnTest, DoesNotKeepTheWindowWaitingForFiles) {
    for (const int megabytes : {1, 2, 64})
        folder.write(std::to_string(megabytes) + ".txt",
                     std::string(static_cast<std::size_t>(megabytes) * 1024 * 1024, 'x'));
    show("<p>x</p><script>Promise.all(['1.txt', '2.txt', '64.txt', '1.txt', '1.txt'].map(async name => "
         "(await (await fetch(name)).text()).length)).then(sizes => { document.title = sizes.join(' '); });"
         "</script>");
    // What the window's own thread does at a stretch; the time that others take from it is not its fault.
    std::chrono::nanoseconds longest{};
    const auto end = std::chrono::steady_clock::now() + 20s;
    const auto title = [this] {
        const char* text = webkit_web_view_get_title(column.webView()->webView());
        return std::string(text == nullptr ? "" : text);
    };
    while (title().empty() && std::chrono::steady_clock::now() < end) {
        const auto start = timeOfThisThread();
        Glib::MainContext::get_default()->iteration(true);
        longest = std::max(longest, timeOfThisThread() - start);
    }
    EXPECT_EQ(title(), "1048576 2097152 67108864 1048576 1048576");
    EXPECT_LT(longest, 50ms);
}

TEST_F(PreviewColumnTest, NeverWaitsForWhatIsNoFile) {
    ASSERT_EQ(::mkfifo((folder / "rohr.txt").c_str(), 0600), 0);
    std::filesystem::create_directory(folder / "ordner.txt");
    std::filesystem::create_symlink("/dev/zero", folder / "null.txt");
    std::filesystem::create_symlink("rohr.txt", folder / "verweis.txt");
    folder.write("da.txt", "da");
    show("<p>x</p><script>Promise.all(['rohr.txt', 'ordner.txt', 'ordner.txt/', 'null.txt', 'verweis.txt', "
         "'da.txt'].map(async name => (await fetch(name)).status)).then(all => { document.title = all.join(' "
         "'); });</script>");
    EXPECT_TRUE(becomes("document.title", "404 404 404 404 404 200"));
}

TEST_F(PreviewColumnTest, ShowsAnUnsavedPageWithoutAnAddress) {
    column.update("<h1>frei</h1>", std::nullopt);
    EXPECT_TRUE(becomes("document.querySelector('h1').textContent", "frei"));
    EXPECT_EQ(inPage("location.href"), "about:blank");
}

TEST_F(PreviewColumnTest, DoesNotReloadAnUnchangedPage) {
    show("<p>x</p>");
    ASSERT_TRUE(becomes("document.body.innerText", "x"));
    ASSERT_EQ(inPage("window.mark = 7"), "7");
    show("<p>x</p>");
    letPass(200ms);
    EXPECT_EQ(inPage("window.mark"), "7");
}

TEST_F(PreviewColumnTest, PutsTheReaderBackAfterAReload) {
    show("<p style='height: 5000px'>a</p>");
    ASSERT_TRUE(becomes("document.body.textContent", "a"));
    inPage("window.scrollTo(0, 1234)");
    ASSERT_TRUE(waitUntil([this] {
        return column.coordinator()->lastReportedScroll() == ScrollOffset{0, 1234};
    }));
    show("<p style='height: 5000px'>b</p>");
    ASSERT_TRUE(becomes("document.body.textContent", "b"));
    EXPECT_TRUE(becomes("window.scrollY", "1234"));
}

TEST_F(PreviewColumnTest, HidesTheBridgeFromThePage) {
    show("<p>x</p>");
    ASSERT_TRUE(becomes("document.body.innerText", "x"));
    EXPECT_EQ(inPage("typeof window.webkit"), "undefined");
}

TEST_F(PreviewColumnTest, StaysOnThePageThatItShows) {
    folder.write("andere.html", "<h1>andere</h1>");
    show("<h1>diese</h1><a href=andere.html>x</a>");
    ASSERT_TRUE(becomes("document.querySelector('h1').textContent", "diese"));
    inPage("document.querySelector('a').click()");
    letPass(300ms);
    EXPECT_EQ(inPage("document.querySelector('h1').textContent"), "diese");
    inPage("location.href = 'andere.html'; 1");
    letPass(300ms);
    EXPECT_EQ(inPage("document.querySelector('h1').textContent"), "diese");
}

TEST_F(PreviewColumnTest, LetsAPageShowItsOwnFrames) {
    folder.write("rahmen.html", "<h1>innen</h1>");
    show("<iframe src=rahmen.html></iframe>");
    EXPECT_TRUE(becomes("document.querySelector('iframe').contentDocument.querySelector('h1')?.textContent",
                        "innen"));
}

TEST_F(PreviewColumnTest, ClosesTheSchemeToFramesFromElsewhere) {
    folder.write("geheim.txt", "geheim");
    show("<iframe srcdoc='' sandbox='allow-scripts' src='data:text/html,<script>"
         "fetch(\"vmpreview://dokument/geheim.txt\").then(r => r.text()).then(t => parent.postMessage(t, "
         "\"*\"),"
         "e => parent.postMessage(\"zu\", \"*\"))</script>'></iframe>"
         "<script>addEventListener('message', e => document.title = e.data);"
         "document.querySelector('iframe').removeAttribute('srcdoc');</script>");
    EXPECT_TRUE(becomes("document.title", "zu"));
}

TEST_F(PreviewColumnTest, ClosesTheSchemeToEveryElementOfFramesFromElsewhere) {
    folder.write("bild.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='30' height='20'/>");
    folder.write("skript.js", "parent.postMessage('offen', '*');");
    folder.write("rahmen.html", "<script>top.postMessage('offen', '*');</script>");
    show("<iframe src='data:text/html,<script>"
         "function tell(event) { parent.postMessage(event.type + event.target.localName, \"*\"); }"
         "for (const [name, file] of [[\"img\", \"bild.svg\"], [\"script\", \"skript.js\"], [\"video\", "
         "\"bild.svg\"]]) { const element = document.createElement(name); element.onload = element.onerror = "
         "tell; element.src = \"vmpreview://dokument/\" + file; document.head.append(element); }"
         "document.write(\"<iframe src=vmpreview://dokument/rahmen.html></iframe>\");</script>'></iframe>"
         "<script>window.heard = []; addEventListener('message', e => heard.push(e.data));</script>");
    EXPECT_TRUE(becomes("heard.sort().join(' ')", "errorimg errorscript errorvideo"));
    letPass(300ms);
    EXPECT_EQ(inPage("heard.sort().join(' ')"), "errorimg errorscript errorvideo");
}

TEST_F(PreviewColumnTest, AnswersDialogsWithoutShowingThem) {
    show("<script>alert(1); document.title = String(confirm('?')) + String(prompt('?'));</script>");
    EXPECT_TRUE(becomes("document.title", "falsenull"));
}

TEST_F(PreviewColumnTest, KeepsNoDataBetweenWindows) {
    show("<script>localStorage.setItem('a', 'b'); document.title = 'fertig';</script>");
    ASSERT_TRUE(becomes("document.title", "fertig"));
    PreviewColumn other(services, [](const std::string&) {});
    TestWindow otherWindow(other);
    other.start();
    ASSERT_TRUE(waitUntil([&] { return other.webView() != nullptr; }));
    other.update("<script>document.title = String(localStorage.getItem('a'));</script>",
                 folder.path() / "index.html");
    EXPECT_TRUE(
        waitUntil([&] { return evaluateInPage(other.webView()->webView(), "document.title") == "null"; }));
}

TEST_F(PreviewColumnTest, ForgetsEverythingWithItsWindow) {
    {
        PreviewColumn first(services, [](const std::string&) {});
        TestWindow firstWindow(first);
        first.start();
        ASSERT_TRUE(waitUntil([&] { return first.webView() != nullptr; }));
        first.update("<script>localStorage.setItem('a', 'GEHEIMNIS'); sessionStorage.setItem('a', "
                     "'GEHEIMNIS'); document.cookie = 'a=GEHEIMNIS; max-age=1000';"
                     "const request = indexedDB.open('GEHEIMNIS');"
                     "request.onupgradeneeded = () => request.result.createObjectStore('a').put('GEHEIMNIS', "
                     "1); request.onsuccess = () => { document.title = 'fertig'; };</script>",
                     document);
        ASSERT_TRUE(waitUntil(
            [&] { return evaluateInPage(first.webView()->webView(), "document.title") == "fertig"; }));
    }
    for (const char* folderName : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"})
        EXPECT_EQ(contentsBelow(Glib::getenv(folderName)).find("GEHEIMNIS"), std::string::npos) << folderName;
    show("<script>(async () => { const stored = await indexedDB.databases();"
         "document.title = [localStorage.length, sessionStorage.length, document.cookie, stored.length]"
         ".join(','); })();</script>");
    EXPECT_TRUE(becomes("document.title", "0,0,,0"));
}

} // namespace
} // namespace corvanta
