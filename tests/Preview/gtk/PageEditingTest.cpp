#include "Platform/gtk/GObjectReference.hpp"
#include "PreviewColumnFixture.hpp"

#include <fmt/format.h>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

/// Typing into the rendered page, by real keys.
class PageEditingTest : public PreviewColumnFixture {
protected:
    std::size_t messages() const {
        return static_cast<std::size_t>(std::ranges::count_if(log.lines, [](const std::string& line) {
            return line.starts_with("preview: edit arrived") || line.starts_with("preview: edit message");
        }));
    }

    /// Waits until the page has carried out what was pressed, which `expression` tells, and longer than the
    /// page waits before it reports.
    void expectThatTheSourceStays(const std::string& expression, const std::string& value) {
        const std::string before = source;
        EXPECT_TRUE(becomes(expression, value));
        letPass(400ms);
        EXPECT_EQ(source, before);
        EXPECT_EQ(messages(), 0U) << log.lines.back();
    }
};

TEST_F(PageEditingTest, ChangesTheSourceOnlyWhereTheUserTyped) {
    showEditable("<!doctype html>\n<h1>Titel</h1>\n<p>Text &amp; mehr</p>\n");
    putCaret("h1", 5);
    keyboard.type("neu");
    EXPECT_TRUE(sourceBecomes("<!doctype html>\n<h1>Titelneu</h1>\n<p>Text &amp; mehr</p>\n"));
    EXPECT_EQ(edits, 1) << "several messages for one typing";
    EXPECT_EQ(log.lines, (std::vector<std::string>{
                             "preview: edit arrived: node 5 → 8 chars, source 54 chars",
                             "preview: edit merged, handing 57 chars to the editor",
                         }));
}

TEST_F(PageEditingTest, ReportsAQuarterOfASecondAfterTheLastKey) {
    showEditable("<p>x</p>");
    putCaret("p", 1);
    inPage("addEventListener('input', () => window.typed = performance.now(), true); 1");
    keyboard.type("a");
    letPass(150ms);
    const auto last = std::chrono::steady_clock::now();
    keyboard.type("b");
    EXPECT_TRUE(sourceBecomes("<p>xab</p>"));
    EXPECT_GE(std::chrono::steady_clock::now() - last, 250ms);
    EXPECT_EQ(edits, 1);
}

/// A page that takes `milliseconds` for a key, and changes the edited text itself some time after the second
/// input. By then the page script knows the source; before, its report may come late.
std::string slowPage(const std::string& text, int milliseconds, int untilItsOwnChange) {
    return fmt::format(
        "<p>{}</p><script>addEventListener('keydown', () => {{"
        "const end = performance.now() + {}; while (performance.now() < end); }});"
        "let inputs = 0; addEventListener('input', () => {{ if (++inputs === 2) setTimeout(() => {{"
        "document.querySelector('p').firstChild.data += '!'; }}, {}); }});</script>",
        text, milliseconds, untilItsOwnChange);
}

TEST_F(PageEditingTest, CountsThePauseFromTheKeyHoweverLongThePageTakesForIt) {
    showEditable(slowPage("x", 130, 200));
    putCaret("p", 1);
    keyboard.type("a");
    ASSERT_TRUE(sourceBecomes(slowPage("xa", 130, 200)));
    keyboard.type("b");
    EXPECT_TRUE(sourceBecomes(slowPage("xab", 130, 200)));
}

TEST_F(PageEditingTest, LeavesTimeForTheNextKeyInAPageThatTakesLongForEach) {
    showEditable(slowPage("x", 300, 60));
    putCaret("p", 1);
    keyboard.type("a");
    ASSERT_TRUE(sourceBecomes(slowPage("xa", 300, 60)));
    log.lines.clear();
    keyboard.type("b");
    expectThatTheSourceStays("document.querySelector('p').textContent", "xab!");
}

TEST_F(PageEditingTest, NeitherReloadsThePageNorMovesTheCaret) {
    showEditable("<p>eins zwei</p>");
    inPage("window.mark = 7");
    putCaret("p", 4);
    keyboard.type("x");
    ASSERT_TRUE(sourceBecomes("<p>einsx zwei</p>"));
    letPass(400ms);
    EXPECT_EQ(inPage("window.mark"), "7");
    EXPECT_EQ(inPage("getSelection().anchorOffset"), "5");
    keyboard.type("y");
    EXPECT_TRUE(sourceBecomes("<p>einsxy zwei</p>"));
}

TEST_F(PageEditingTest, TellsEqualTextsApart) {
    showEditable("<ul><li>Haus</li><li>Garten</li></ul><h1>Haus</h1>");
    putCaret("h1", 4);
    keyboard.type("e");
    EXPECT_TRUE(sourceBecomes("<ul><li>Haus</li><li>Garten</li></ul><h1>Hause</h1>"));
    putCaret("li", 4);
    keyboard.type("r");
    EXPECT_TRUE(sourceBecomes("<ul><li>Hausr</li><li>Garten</li></ul><h1>Hause</h1>"));
}

TEST_F(PageEditingTest, MergesDeletedCharacters) {
    showEditable("<p>Wort und Wort</p>");
    putCaret("p", 8);
    keyboard.press("BackSpace");
    keyboard.press("Delete");
    EXPECT_TRUE(sourceBecomes("<p>Wort unWort</p>"));
}

TEST_F(PageEditingTest, MergesATypedOverSelectionWithinOneText) {
    showEditable("<p>eins zwei drei</p>");
    select("p", 5, "p", 9);
    keyboard.type("x");
    EXPECT_TRUE(sourceBecomes("<p>eins x drei</p>"));
}

TEST_F(PageEditingTest, KeepsTheLineBreaksOfTheSourceBesideATypedBlank) {
    showEditable("<div>\n\t<p>\n\t\tein Absatz\n\t\tin Zeilen\n\t</p>\n</div>\n");
    putCaret("p", 13);
    keyboard.type(" neu");
    EXPECT_TRUE(sourceBecomes("<div>\n\t<p>\n\t\tein Absatz neu\n\t\tin Zeilen\n\t</p>\n</div>\n"));
}

TEST_F(PageEditingTest, GoesOnAfterAMergeWhoseWhiteSpaceDiffersFromThePage) {
    showEditable("<p>\n\tText\n</p>");
    putCaret("p", 6);
    keyboard.type(" ");
    ASSERT_TRUE(waitUntil([this] { return edits == 1; }));
    keyboard.type("neu");
    ASSERT_TRUE(waitUntil([this] { return edits == 2; })) << log.lines.back();
    EXPECT_TRUE(source.starts_with("<p>\n\tText&nbsp;neu")) << source;
}

TEST_F(PageEditingTest, EncodesWhatWouldBeMarkup) {
    showEditable("<p>a</p>");
    putCaret("p", 1);
    for (const char* key : {"less", "b", "greater", "ampersand"})
        keyboard.press(key);
    EXPECT_TRUE(sourceBecomes("<p>a&lt;b&gt;&amp;</p>"));
}

TEST_F(PageEditingTest, ReportsTheFirstOfTwoTextsWhenTheUserGoesOnInTheSecond) {
    showEditable("<p>a</p><h1>b</h1>");
    putCaret("p", 1);
    keyboard.type("x");
    ASSERT_TRUE(becomes("document.body.textContent", "axb"));
    putCaret("h1", 1);
    keyboard.type("y");
    EXPECT_TRUE(sourceBecomes("<p>ax</p><h1>by</h1>"));
}

TEST_F(PageEditingTest, KeepsAnEditThatAReloadOvertakes) {
    showEditable("<p>a</p><h1>b</h1>");
    putCaret("p", 1);
    keyboard.type("x");
    ASSERT_TRUE(becomes("document.body.textContent", "axb"));
    column.update(source = "<p>a</p><h1>neu</h1>", folder.path() / "index.html");
    EXPECT_TRUE(sourceBecomes("<p>ax</p><h1>neu</h1>"));
    EXPECT_TRUE(becomes("document.body.textContent", "axneu"));
}

TEST_F(PageEditingTest, LogsARefusalAndLeavesTheSource) {
    showEditable("<p>x</p><script>document.querySelector('p').textContent = 'aus dem ' + 'Skript';</script>");
    putCaret("p", 1);
    keyboard.type("y");
    EXPECT_TRUE(waitUntil([this] {
        return !log.lines.empty() &&
               log.lines.back() == "preview: edit refused: text not locatable (occurrence 0 of 1)";
    }));
    EXPECT_EQ(edits, 0);
}

TEST_F(PageEditingTest, LeavesTheSourceAloneWhenAWholeTextIsDeleted) {
    showEditable("<p>ab</p><h1>Kopf</h1>");
    putCaret("p", 2);
    keyboard.press("BackSpace");
    keyboard.press("BackSpace");
    expectThatTheSourceStays("document.querySelector('p')?.textContent ?? ''", "");
}

/// Pages whose scripts make texts that the source has elsewhere.
class ScriptedPageEditingTest : public PageEditingTest {
protected:
    /// Types at the start of the first text in `selector`.
    void typeIn(const std::string& selector) {
        log.lines.clear();
        putCaret(selector, 2);
        keyboard.type("x");
    }

    testing::AssertionResult isRefused() {
        const std::string before = source;
        waitUntil([this] { return log.lines.size() > 1; });
        if (source == before && !log.lines.empty() &&
            log.lines.back().starts_with("preview: edit refused: text not locatable"))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << source;
    }
};

TEST_F(ScriptedPageEditingTest, ChangesNoOtherTextWhenAScriptMovedTheTexts) {
    const std::string script = "<script>document.body.prepend(document.querySelector('#zwei'));</script>";
    showEditable("<div id=eins>a <b>Wort</b> b</div><div id=zwei>c <b>Wort</b> d</div>" + script);
    typeIn("#zwei b");
    EXPECT_TRUE(isRefused());
    typeIn("#eins b");
    EXPECT_TRUE(isRefused());
    typeIn("#zwei");
    EXPECT_TRUE(
        sourceBecomes("<div id=eins>a <b>Wort</b> b</div><div id=zwei>c x<b>Wort</b> d</div>" + script));
}

TEST_F(ScriptedPageEditingTest, ChangesNoOtherTextWhenAScriptSortedTheTexts) {
    showEditable("<table><tr><td>b<td>10<tr><td>a<td>10</table><script>const rows = "
                 "document.querySelectorAll('tr'); rows[0].before(rows[1]);</script>");
    typeIn("tr td:last-child");
    EXPECT_TRUE(isRefused());
}

TEST_F(ScriptedPageEditingTest, TellsAWrittenTextFromItsCopy) {
    const std::string list = "<ul></ul><h1>";
    const std::string script = "</h1><script>document.querySelector('ul').innerHTML = '<li>' + "
                               "document.querySelector('h1').textContent + '</li>';</script>";
    showEditable(list + "Kopf" + script);
    typeIn("li");
    EXPECT_TRUE(isRefused());
    typeIn("h1");
    EXPECT_TRUE(sourceBecomes(list + "Koxpf" + script));
}

TEST_F(ScriptedPageEditingTest, TakesNoOtherFileForWhatIsWritten) {
    folder.write("andere.html", "<h1>Kopf</h1><ul><li>Kopf</li></ul>");
    showEditable("<h1>Kopf</h1><ul></ul><script>const item = document.createElement('li');"
                 "item.textContent = document.querySelector('h1').textContent;"
                 "document.querySelector('ul').append(item); document.querySelector('script').remove();"
                 "addEventListener('keydown', () => history.replaceState(null, '', 'andere.html'), true);"
                 "</script>");
    typeIn("li");
    EXPECT_TRUE(isRefused());
}

TEST_F(ScriptedPageEditingTest, ChangesNeitherAScriptNorAPartOfAnotherText) {
    showEditable("<p>Text mit Wort</p><script>document.body.insertAdjacentHTML('beforeend', "
                 "'<i>Wort</i>');</script>");
    typeIn("i");
    EXPECT_TRUE(isRefused());
    showEditable("<p>Text mit Wort</p><script>document.body.append('Wo' + 'rt');</script><script>"
                 "document.body.lastChild.previousSibling.replaceWith(Object.assign("
                 "document.createElement('i'), { textContent: 'Wo' + 'rt' }));</script>");
    typeIn("i");
    EXPECT_TRUE(isRefused());
}

TEST_F(PageEditingTest, MergesIntoOneOfEqualTextsOfAPageWithoutAnAddress) {
    document.clear();
    column.update(source = "<p>Wort</p><h1>Wort</h1>", std::nullopt);
    ASSERT_TRUE(waitUntil([this] { return column.coordinator()->isSettled(); }));
    ASSERT_TRUE(becomes("document.designMode + location.href", "onabout:blank"));
    gtk_widget_grab_focus(GTK_WIDGET(column.webView()->webView()));
    putCaret("h1", 4);
    keyboard.type("x");
    EXPECT_TRUE(sourceBecomes("<p>Wort</p><h1>Wortx</h1>"));
}

TEST_F(PageEditingTest, CountsEqualTextsAsTheyAreWhenItReports) {
    // The change comes after the last key and shortly before the report.
    showEditable("<p id=eins>Wort</p><p id=zwei>Wort</p><script>addEventListener('input', () => {"
                 "setTimeout(() => document.querySelector('#eins').remove(), 200); });</script>");
    putCaret("#zwei", 4);
    keyboard.type("x");
    EXPECT_TRUE(waitUntil([this] {
        return !log.lines.empty() &&
               log.lines.back() == "preview: edit refused: text not locatable (occurrence 0 of 1)";
    })) << (log.lines.empty() ? "" : log.lines.back());
    EXPECT_EQ(edits, 0);
}

TEST_F(PageEditingTest, TakesNoTextBeforeItCanBeReported) {
    // Whoever connects is never answered: the page is read up to the script and no further.
    const GObjectReference<GSocketListener> silent(g_socket_listener_new());
    const guint16 port = g_socket_listener_add_any_inet_port(silent.get(), nullptr, nullptr);
    ASSERT_NE(port, 0);
    show("<p>eins</p><script src='https://127.0.0.1:" + std::to_string(port) + "/x.js'></script>");
    ASSERT_TRUE(becomes("document.designMode + document.querySelector('p')?.textContent", "oneins"));
    ASSERT_EQ(inPage("document.readyState"), "loading");
    gtk_widget_grab_focus(GTK_WIDGET(column.webView()->webView()));
    inPage("window.keys = 0; addEventListener('keyup', () => ++window.keys); 1");
    putCaret("p", 4);
    keyboard.type("xy");
    ASSERT_TRUE(becomes("window.keys", "2"));
    EXPECT_EQ(inPage("document.querySelector('p').textContent"), "eins");
}

TEST_F(PageEditingTest, MergesUnderAPageThatChangesItself) {
    showEditable("<p>eins</p><span>0</span><script>setInterval(() => {"
                 "document.querySelector('span').textContent = performance.now(); }, 5);</script>");
    putCaret("p", 4);
    keyboard.type("xyz");
    EXPECT_TRUE(waitUntil([this] { return source.starts_with("<p>einsxyz</p><span>0</span>"); })) << source;
}

} // namespace
} // namespace corvanta
