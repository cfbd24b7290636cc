// Edits that change more than one text of the page: the source stays as it is, however often they are tried,
// and what is typed elsewhere afterwards still reaches it.

#include "PreviewColumnFixture.hpp"

#include <fmt/format.h>

#include <cstdlib>
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

} // namespace
} // namespace corvanta
