#include "ClickedPageFixture.hpp"

namespace corvanta {
namespace {

using namespace std::chrono_literals;

/// Pages that try to get at what they should not once the user has clicked into them.
class ClickedPageTest : public ClickedPageFixture {
protected:
    void expectOneOrdinaryWindow() {
        letPass(300ms);
        EXPECT_EQ(Gtk::Window::list_toplevels().size(), 1U);
        EXPECT_FALSE(gtk_window_is_fullscreen(window.window().gobj()));
        expectNothingHappened();
    }
};

TEST_F(ClickedPageTest, OpensNoWindow) {
    click("results.push(window.open('about:blank') === null ? 'nein' : 'ja');"
          "results.push(window.open('https://127.0.0.1:9/', 'x', 'popup') === null ? 'nein' : 'ja');");
    EXPECT_TRUE(becomes("results.join()", "nein,nein"));
    expectOneOrdinaryWindow();
    EXPECT_TRUE(openedLinks.empty());
}

TEST_F(ClickedPageTest, DoesNotFillTheScreen) {
    click("ask(() => (document.documentElement.requestFullscreen ?? document.documentElement"
          ".webkitRequestFullscreen).call(document.documentElement)"
          ".then(() => { if (!document.fullscreenElement) throw 0; }));");
    EXPECT_TRUE(becomes("results.join()", "nein"));
    expectOneOrdinaryWindow();
}

TEST_F(ClickedPageTest, ShowsNoDialog) {
    click("print(); alert(1); confirm(2); prompt(3);"
          "for (const type of ['file', 'color', 'date']) { const input = document.createElement('input');"
          "input.type = type; document.body.append(input); input.click();"
          "try { input.showPicker(); } catch {} } results.push('fertig');");
    EXPECT_TRUE(becomes("results.join()", "fertig"));
    expectOneOrdinaryWindow();
}

TEST_F(ClickedPageTest, PrintsNothing) {
    click("print(); alert(1); print(); document.execCommand('print'); results.push('fertig');");
    EXPECT_TRUE(becomes("results.join()", "fertig"));
    expectOneOrdinaryWindow();
}

TEST_F(ClickedPageTest, SeesAndHearsNothingOfTheMachine) {
    click("ask(() => navigator.mediaDevices.getUserMedia({ audio: true }));"
          "ask(() => navigator.mediaDevices.getDisplayMedia());"
          "ask(() => new Promise((yes, no) => navigator.geolocation.getCurrentPosition(yes, no)));"
          "ask(() => Notification.requestPermission().then(p => { if (p !== 'granted') throw p; }));");
    EXPECT_TRUE(becomes("results.join()", "nein,nein,nein,nein"));
    expectOneOrdinaryWindow();
}

TEST_F(ClickedPageTest, ReadsNoClipboard) {
    gdk_clipboard_set_text(gtk_widget_get_clipboard(GTK_WIDGET(window.window().gobj())), "GEHEIM");
    click("navigator.clipboard.readText().then(t => results.push(t), () => results.push('nein'));"
          "addEventListener('paste', e => results.push(e.clipboardData.getData('text/plain')));"
          "results.push(String(document.execCommand('paste')));");
    EXPECT_TRUE(becomes("results.sort().join()", "false,nein"));
    EXPECT_EQ(inPage("document.body.textContent.includes('GEHEIM')"), "false");
}

} // namespace
} // namespace corvanta
