// Edits that change more than one text of the page: the source stays as it is, however often they are tried,
// and what is typed elsewhere afterwards still reaches it.

#include "Platform/gtk/GObjectReference.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "PreviewColumnFixture.hpp"
#include "Support/gtk/WindowPixels.hpp"

#include <fmt/format.h>
#include <gtkmm/label.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <ostream>
#include <string_view>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

class StructuralEdits : public PreviewColumnFixture {
protected:
    static int tries() { return std::getenv("CORVANTA_LONG_TESTS") == nullptr ? 4 : 100; }

    /// Shows the page anew, whatever was done to it.
    void showPage(int number) {
        showEditable(page(number, "Kopf"));
        log.lines.clear();
        edits = 0;
    }

    static std::string page(int number, std::string_view heading) {
        return fmt::format("<p>eins zwei drei</p><blockquote>vier <b>fünf</b> sechs</blockquote>"
                           "<h1>{}</h1><!-- {} -->",
                           heading, number);
    }

    /// Types elsewhere: at once every other time, else after the page would have reported what was done.
    void expectThatOnlyTypingElsewhereCounts(int number) {
        if (number % 2 == 0) {
            inPage("window.isReported = false; setTimeout(() => { window.isReported = true; }, 300); 1");
            ASSERT_TRUE(becomes("window.isReported", "true"));
        }
        putCaret("h1", 4);
        keyboard.type("x");
        ASSERT_TRUE(sourceBecomes(page(number, "Kopfx"))) << "try " << number;
        ASSERT_EQ(edits, 1) << "try " << number;
        ASSERT_EQ(log.lines.size(), 2U) << log.lines.front();
    }
};

/// Keys in a selection.
struct Action {
    std::string_view name;
    std::string from;
    int start;
    std::string to;
    int end;
    std::vector<std::string_view> keys;
    /// What the page shows when it is done.
    std::string expression;
    std::string value;
    const char* clipboard = nullptr;
};

void PrintTo(const Action& action, std::ostream* stream) {
    *stream << action.name;
}

class StructuralEditsTest : public StructuralEdits, public testing::WithParamInterface<Action> {};

TEST_P(StructuralEditsTest, LeavesTheSourceAlone) {
    const Action& action = GetParam();
    for (int number = 0; number < tries(); ++number) {
        showPage(number);
        if (action.clipboard != nullptr)
            gdk_clipboard_set_text(gtk_widget_get_clipboard(GTK_WIDGET(window.window().gobj())),
                                   action.clipboard);
        select(action.from, action.start, action.to, action.end);
        for (const std::string_view keys : action.keys)
            keyboard.press(keys);
        ASSERT_TRUE(becomes(action.expression, action.value)) << "try " << number;
        expectThatOnlyTypingElsewhereCounts(number);
        if (HasFatalFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Each, StructuralEditsTest,
    testing::Values(
        Action{"Enter", "p", 5, "p", 5, {"Return"}, "document.querySelectorAll('p').length", "2"},
        Action{"EnterAfterTyping",
               "p",
               5,
               "p",
               5,
               {"a", "b", "Return", "c"},
               "document.body.innerText.split('\\n')[2] ?? ''",
               "czwei drei"},
        Action{"LineBreak", "p", 5, "p", 5, {"Shift+Return"}, "document.querySelectorAll('br').length", "1"},
        Action{"Bold", "p", 5, "p", 9, {"Control+b"}, "document.querySelectorAll('p b').length", "1"},
        Action{"DeletionOverTwoParagraphs",
               "p",
               5,
               "blockquote",
               2,
               {"Delete"},
               "document.querySelectorAll('blockquote').length",
               "0"},
        Action{"TypingOverTwoParagraphs",
               "p",
               5,
               "blockquote",
               2,
               {"y"},
               "document.querySelector('p').textContent.slice(0, 8)",
               "eins yer"},
        Action{"DeletionOverTwoTextsOfOneParagraph",
               "blockquote",
               2,
               "b",
               2,
               {"BackSpace"},
               "document.querySelector('blockquote').textContent",
               "vinf sechs"},
        Action{"PasteOfSeveralLines",
               "p",
               5,
               "p",
               5,
               {"Control+v"},
               "/rot[^]*grün[^]*blau/.test(document.body.innerText)",
               "true",
               "rot\ngrün\nblau"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(StructuralEdits, LeaveTheSourceAloneOfAPageThatHearsOfThemFirst) {
    const auto html = [](int number, std::string_view heading) {
        return fmt::format("<p style=color:red>eins.</p><p style=color:blue>„zwei "
                           "drei</p><h1>{}</h1><script>addEventListener('input', () => "
                           "{{}}, true);</script><!-- {} -->",
                           heading, number);
    };
    for (int number = 0; number < tries(); ++number) {
        showEditable(html(number, "Kopf"));
        putCaret("p", 4);
        keyboard.press("Control+Delete");
        ASSERT_TRUE(becomes("document.querySelectorAll('p').length", "1"));
        putCaret("h1", 4);
        keyboard.type("x");
        ASSERT_TRUE(sourceBecomes(html(number, "Kopfx"))) << "try " << number;
    }
}

TEST_F(StructuralEdits, LeaveTheSourceAloneWhenUndone) {
    for (int number = 0; number < tries(); ++number) {
        showPage(number);
        putCaret("p", 4);
        keyboard.type("x");
        ASSERT_TRUE(waitUntil([this] { return edits == 1; }));
        ASSERT_TRUE(source.starts_with("<p>einsx zwei"));
        webkit_web_view_execute_editing_command(column.webView()->webView(), WEBKIT_EDITING_COMMAND_UNDO);
        ASSERT_TRUE(becomes("document.querySelector('p').textContent", "eins zwei drei"));
        // The text is out of step with the source; typing there leads to nothing.
        keyboard.type("y");
        ASSERT_TRUE(becomes("document.querySelector('p').textContent", "einsy zwei drei"));
        putCaret("h1", 4);
        keyboard.type("x");
        std::string expected = page(number, "Kopfx");
        expected.insert(expected.find(" zwei"), 1, 'x');
        ASSERT_TRUE(sourceBecomes(expected)) << "try " << number;
        ASSERT_EQ(edits, 2) << "try " << number;
    }
}

/// Something beside the page that can be dragged into it.
class DropIntoThePage : public StructuralEdits {
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

    Gtk::Label thing{"Ding"};
    GtkDragSource* drag;
    bool isDragging = false;
    SignalConnection began;
    SignalConnection ended;
};

TEST_F(DropIntoThePage, LeavesTheSourceAloneWhenTextFalls) {
    offer(gdk_content_provider_new_typed(G_TYPE_STRING, "gefallen"));
    for (int number = 0; number < tries(); ++number) {
        showPage(number);
        drop();
        ASSERT_FALSE(HasFatalFailure());
        ASSERT_TRUE(becomes("document.body.textContent.includes('gefallen')", "true"));
        expectThatOnlyTypingElsewhereCounts(number);
        ASSERT_FALSE(HasFatalFailure());
    }
}

TEST_F(DropIntoThePage, LeavesPageAndSourceAloneWhenAFileFalls) {
    folder.write("andere.html", "<h1>andere</h1>");
    offerFile(folder / "andere.html");
    for (int number = 0; number < tries(); ++number) {
        showPage(number);
        drop();
        ASSERT_FALSE(HasFatalFailure());
        EXPECT_EQ(inPage("location.href"), "vmpreview://dokument/index.html");
        expectThatOnlyTypingElsewhereCounts(number);
        ASSERT_FALSE(HasFatalFailure());
    }
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
