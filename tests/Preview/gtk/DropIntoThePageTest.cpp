// What the user drags into the page.

#include "Platform/gtk/GObjectReference.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "PreviewColumnFixture.hpp"
#include "Support/gtk/WindowPixels.hpp"

#include <gtkmm/label.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

/// Something beside the page that can be dragged into it.
class DropIntoThePage : public PreviewColumnFixture {
protected:
    DropIntoThePage() : drag(gtk_drag_source_new()) {
        thing.set_size_request(-1, 30);
        column.prepend(thing);
        gtk_drag_source_set_actions(drag, GDK_ACTION_COPY);
        began = SignalConnection(
            drag, "drag-begin",
            +[](GtkDragSource*, GdkDrag*, gpointer self) {
                static_cast<DropIntoThePage*>(self)->isDragging = true;
            },
            this);
        ended = SignalConnection(
            drag, "drag-end",
            +[](GtkDragSource*, GdkDrag*, gboolean, gpointer self) {
                static_cast<DropIntoThePage*>(self)->isDragging = false;
            },
            this);
        gtk_widget_add_controller(GTK_WIDGET(thing.gobj()), GTK_EVENT_CONTROLLER(drag));
    }

    /// Takes over `content`.
    void offer(GdkContentProvider* content) {
        gtk_drag_source_set_content(drag, content);
        g_object_unref(content);
    }

    void offerText(const char* text) { offer(gdk_content_provider_new_typed(G_TYPE_STRING, text)); }

    void offerFile(const std::filesystem::path& path) {
        const GObjectReference<GFile> file(g_file_new_for_path(path.c_str()));
        GSList* files = g_slist_append(nullptr, file.get());
        GdkFileList* list = gdk_file_list_new_from_list(files);
        g_slist_free(files);
        offer(gdk_content_provider_new_typed(GDK_TYPE_FILE_LIST, list));
        g_boxed_free(GDK_TYPE_FILE_LIST, list);
    }

    /// Drags `thing` to the middle of the first paragraph and lets it fall.
    void drop() {
        inPage("window.isOver = false;"
               "addEventListener('dragover', () => { window.isOver = true; }, true); 1");
        movePointer(thing, 10, 15);
        pressPointer(thing);
        int x = 10;
        ASSERT_TRUE(waitUntil([&] {
            movePointer(thing, x = x < 200 ? x + 5 : 60, 15);
            return isDragging;
        }));
        int shift = 0;
        ASSERT_TRUE(waitUntil([&] {
            movePointer(*column.webView(), 60 + ++shift % 3, 26);
            return inPage("window.isOver") == "true";
        }));
        releasePointer(thing);
        ASSERT_TRUE(waitUntil([&] { return !isDragging; }));
    }

    /// What was done to the page has no consequence, and typing elsewhere still has.
    void expectThatOnlyTypingElsewhereCounts(const std::string& withX) {
        letPass(600ms);
        EXPECT_EQ(edits, 0) << source;
        putCaret("h1", 4);
        keyboard.type("x");
        EXPECT_TRUE(sourceBecomes(withX));
        EXPECT_EQ(edits, 1);
    }

    Gtk::Label thing{"Ding"};
    GtkDragSource* drag;
    bool isDragging = false;
    SignalConnection began;
    SignalConnection ended;
};

TEST_F(DropIntoThePage, PutsATextThatFallsIntoTheSourceToo) {
    offerText("ge<fallen");
    showEditable("<p>eins zwei\n   drei &auml;</p><h1>Kopf</h1>");
    putCaret("h1", 2);
    drop();
    ASSERT_FALSE(HasFatalFailure());
    ASSERT_TRUE(becomes("document.querySelector('p').textContent.includes('ge<fallen')", "true"));
    ASSERT_TRUE(waitUntil([this] { return edits == 1; }));
    const std::string fallen = "ge&lt;fallen";
    const std::size_t place = source.find(fallen);
    ASSERT_NE(place, std::string::npos) << source;
    EXPECT_EQ(source.substr(0, place) + source.substr(place + fallen.size()),
              "<p>eins zwei\n   drei &auml;</p><h1>Kopf</h1>");
}

TEST_F(DropIntoThePage, GoesOnWithWhatIsTypedBehindATextThatFell) {
    offerText("gefallen");
    showEditable("<p>eins zwei drei</p>");
    drop();
    ASSERT_FALSE(HasFatalFailure());
    ASSERT_TRUE(waitUntil([this] { return edits == 1; }));
    const std::string dropped = source;
    gtk_widget_grab_focus(GTK_WIDGET(column.webView()->webView()));
    putCaret("p", 1);
    keyboard.type("x");
    EXPECT_TRUE(sourceBecomes("<p>ex" + dropped.substr(4)));
}

TEST_F(DropIntoThePage, LeavesTheSourceAloneWhenSeveralLinesFall) {
    offerText("rot\ngrün\nblau");
    showEditable("<p>eins zwei drei</p><h1>Kopf</h1>");
    drop();
    ASSERT_FALSE(HasFatalFailure());
    ASSERT_TRUE(becomes("document.body.textContent.includes('blau')", "true"));
    expectThatOnlyTypingElsewhereCounts("<p>eins zwei drei</p><h1>Kopfx</h1>");
}

TEST_F(DropIntoThePage, LetsNoPageWriteUnderCoverOfIt) {
    offerText("gefallen");
    showEditable("<p>eins zwei drei</p><h1>Kopf</h1><script>addEventListener('drop', event => {"
                 "event.preventDefault(); const text = document.querySelector('p').firstChild;"
                 "getSelection().collapse(text, 4);"
                 "for (const command of ['insertText', 'insertHTML', 'delete', 'paste'])"
                 " document.execCommand(command, false, 'BOESE'); }, true);</script>");
    const std::string page = source;
    drop();
    ASSERT_FALSE(HasFatalFailure());
    EXPECT_TRUE(becomes("document.querySelector('p').textContent.includes('BOES')", "true"));
    std::string expected = page;
    expected.insert(expected.find("</h1>"), "x");
    expectThatOnlyTypingElsewhereCounts(expected);
}

TEST_F(DropIntoThePage, LeavesPageAndSourceAloneWhenAFileFalls) {
    folder.write("andere.html", "<h1>andere</h1>");
    offerFile(folder / "andere.html");
    showEditable("<p>eins zwei drei</p><h1>Kopf</h1>");
    drop();
    ASSERT_FALSE(HasFatalFailure());
    EXPECT_EQ(inPage("location.href"), "vmpreview://dokument/index.html");
    expectThatOnlyTypingElsewhereCounts("<p>eins zwei drei</p><h1>Kopfx</h1>");
}

/// Lets the toolkit complain while it lives: the engine gives a wrong answer when two actions are offered.
class ToleratedComplaints {
public:
    ToleratedComplaints() : fatal_(g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_FATAL_MASK))) {}
    ~ToleratedComplaints() { g_log_set_always_fatal(fatal_); }
    ToleratedComplaints(const ToleratedComplaints&) = delete;
    ToleratedComplaints& operator=(const ToleratedComplaints&) = delete;

private:
    GLogLevelFlags fatal_;
};

TEST_F(DropIntoThePage, EndsTheDragThatMayCopyOrMoveToo) {
    const ToleratedComplaints tolerated;
    gtk_drag_source_set_actions(drag, static_cast<GdkDragAction>(GDK_ACTION_COPY | GDK_ACTION_MOVE));
    offerText("gefallen");
    showEditable("<p>eins zwei drei</p>");
    for (int number = 1; number <= 2; ++number) {
        drop();
        ASSERT_FALSE(HasFatalFailure());
        EXPECT_TRUE(waitUntil([&] { return edits == number; }));
    }
}

TEST_F(DropIntoThePage, LeavesTheSourceAloneWhenTextIsMovedWithinThePage) {
    const ToleratedComplaints tolerated;
    showEditable("<p style='font-size: 20px; margin: 0'>eins zwei drei vier fünf</p><h1>Kopf</h1><script>"
                 "addEventListener('dragend', () => { window.hasEnded = true; }, true);</script>");
    const std::string page = source;
    select("p", 5, "p", 9);
    const auto edge = [this](const char* name) {
        return std::stoi(inPage("Math.round(getSelection().getRangeAt(0).getBoundingClientRect()." +
                                std::string(name) + ")"));
    };
    const int x = (edge("left") + edge("right")) / 2;
    const int y = (edge("top") + edge("bottom")) / 2;
    Gtk::Widget& view = *column.webView();
    movePointer(view, x, y);
    pressPointer(view);
    int way = 0;
    ASSERT_TRUE(waitUntil([&] {
        way += 4;
        movePointer(view, x + std::min(way, 100) + way % 3, y);
        letPass(20ms);
        return way > 200;
    }));
    releasePointer(view);
    EXPECT_TRUE(becomes("/^eins drei .*zwei/.test(document.querySelector('p').textContent)", "true"));
    EXPECT_TRUE(becomes("window.hasEnded", "true"));
    std::string expected = page;
    expected.insert(expected.find("</h1>"), "x");
    expectThatOnlyTypingElsewhereCounts(expected);
}

/// The engine goes to what falls on a page that cannot be edited.
class DropOnAPageThatEndsItsEditing : public DropIntoThePage {
protected:
    void expectThatItLeadsNowhere(const std::string& what) {
        SCOPED_TRACE(what);
        const std::string page = "<p>eins zwei drei</p><script>addEventListener('dragover', () => { "
                                 "document.designMode = 'off'; }, true);</script><!-- " +
                                 what + " -->";
        showEditable(page);
        drop();
        letPass(600ms);
        EXPECT_TRUE(becomes("document.querySelector('p')?.textContent", "eins zwei drei"));
        EXPECT_EQ(inPage("location.href"), "vmpreview://dokument/index.html");
        EXPECT_EQ(source, page);
    }
};

TEST_F(DropOnAPageThatEndsItsEditing, LeadsToNoFile) {
    folder.write("andere.html", "<h1>andere</h1>");
    offerFile(folder / "andere.html");
    expectThatItLeadsNowhere("file");
}

TEST_F(DropOnAPageThatEndsItsEditing, LeadsToNoAddress) {
    for (const char* address : {"https://127.0.0.1:9/", "vmpreview://dokument/andere.html", "about:blank",
                                "data:text/html,andere"}) {
        GBytes* bytes = g_bytes_new(address, std::strlen(address));
        offer(gdk_content_provider_new_for_bytes("text/uri-list", bytes));
        g_bytes_unref(bytes);
        expectThatItLeadsNowhere(address);
    }
}

} // namespace
} // namespace corvanta
