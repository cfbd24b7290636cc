#include "EditorCore/gtk/CodeEditorView.hpp"
#include "Platform/gtk/GLibMainQueue.hpp"
#include "Support/gtk/Keyboard.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/TestWindow.hpp"
#include "Support/gtk/WindowPixels.hpp"

#include <gtest/gtest.h>
#include <gtksourceview/gtksource.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::string_literals;

/// Working in the code pane with real keys.
class CodePaneKeysTest : public testing::Test {
protected:
    void open(const std::string& text) {
        model = std::make_unique<EditorViewModel>(SharedText(text));
        build();
        recording = model->text.subscribe(
            [this](const SharedText& changed) { published.push_back(changed.string()); });
    }

    void build() {
        window.reset();
        view.reset();
        view = std::make_unique<CodeEditorView>(*model, CodeEditorView::Services{queue, findRequest},
                                                "klassisch", 13);
        window = std::make_unique<TestWindow>(*view);
        view->textView().grab_focus();
        letPass(std::chrono::milliseconds(50));
    }

    void TearDown() override {
        selectionWatch = Subscription();
        window.reset();
        view.reset();
    }

    testing::AssertionResult becomes(const std::string& text) {
        if (waitUntil([&] { return *model->text == text; }, std::chrono::seconds(5)))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the text is: " << model->text->string();
    }

    testing::AssertionResult selects(TextRange range) {
        if (waitUntil([&] { return view->textView().selectedRange() == range; }, std::chrono::seconds(5)))
            return testing::AssertionSuccess();
        const TextRange selected = view->textView().selectedRange();
        return testing::AssertionFailure() << "selected: " << selected.location << ", " << selected.length;
    }

    testing::AssertionResult says(const std::string& status) {
        if (waitUntil([&] { return view->findBar().status() == status; }, std::chrono::seconds(5)))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the bar says: " << view->findBar().status();
    }

    /// Drags what is selected, taken at one character, to the place before another one.
    void drag(int fromCodePoint, int toCodePoint) {
        Gtk::TextView& text = view->textView();
        pointAt(fromCodePoint, 1);
        pressPointer(text);
        // Some of the way, as a hand would: what is dragged is told of at each motion.
        for (int beside = 0; beside < 40; beside += 4) {
            pointAt(fromCodePoint, beside);
            letPass(std::chrono::milliseconds(20));
        }
        pointAt(toCodePoint, 0);
        letPass(std::chrono::milliseconds(100));
        releasePointer(text);
    }

    /// Moves the pointer so many pixels to the right of the start of a character.
    void pointAt(int codePoint, int beside) {
        Gtk::TextView& text = view->textView();
        Gdk::Rectangle area;
        text.get_iter_location(text.get_buffer()->get_iter_at_offset(codePoint), area);
        int x = 0;
        int y = 0;
        text.buffer_to_window_coords(Gtk::TextWindowType::WIDGET, area.get_x(),
                                     area.get_y() + area.get_height() / 2, x, y);
        movePointer(text, x + beside, y);
    }

    /// Counts from now on how often the selection becomes empty, be it for a moment: the display server is
    /// told that it was given up, and what it answers may come after the selection was set again.
    void watchSelection() {
        auto hasSelection = view->textView().get_buffer()->property_has_selection();
        selectionWatch = Subscription(hasSelection.signal_changed().connect([this] {
            if (!view->textView().get_buffer()->get_has_selection())
                ++selectionsGivenUp;
        }));
    }

    Keyboard keyboard;
    GLibMainQueue queue;
    Published<FindRequest> findRequest;
    std::unique_ptr<EditorViewModel> model;
    std::unique_ptr<CodeEditorView> view;
    std::unique_ptr<TestWindow> window;
    Subscription selectionWatch;
    int selectionsGivenUp = 0;
    std::vector<std::string> published;
    Subscription recording;
};

TEST_F(CodePaneKeysTest, PublishesASelectionTypedOverOnceAndTakesItBackInOneStep) {
    open("eins zwei");
    view->textView().setSelectedRange({5, 4});
    keyboard.type("x");
    ASSERT_TRUE(becomes("eins x"));
    EXPECT_EQ(published, std::vector<std::string>{"eins x"});
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("eins zwei"));
    EXPECT_EQ(published, (std::vector<std::string>{"eins x", "eins zwei"}));
    EXPECT_TRUE(selects({5, 4}));
}

TEST_F(CodePaneKeysTest, MakesAgainWhatWasTakenBack) {
    open("");
    keyboard.type("abc");
    ASSERT_TRUE(becomes("abc"));
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes(""));
    keyboard.press("Control+Shift+z");
    ASSERT_TRUE(becomes("abc"));
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes(""));
    keyboard.press("Control+y");
    EXPECT_TRUE(becomes("abc"));
}

TEST_F(CodePaneKeysTest, TakesAPasteBackInOneStep) {
    open("eins");
    view->textView().get_clipboard()->set_text("zwei\ndrei ");
    keyboard.press("Control+v");
    ASSERT_TRUE(becomes("zwei\ndrei eins"));
    EXPECT_EQ(published.size(), 1U);
    keyboard.press("Control+z");
    EXPECT_TRUE(becomes("eins"));
    EXPECT_EQ(published.size(), 2U);
}

TEST_F(CodePaneKeysTest, TakesAReformattingBackInOneStepWithItsSelection) {
    open("<ul><li>x</li></ul>");
    view->textView().setSelectedRange({4, 4});
    model->reformatIndentation();
    ASSERT_EQ(view->textView().text(), "<ul>\n\t<li>x</li>\n</ul>");
    published.clear();
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("<ul><li>x</li></ul>"));
    EXPECT_EQ(published.size(), 1U);
    EXPECT_TRUE(selects({4, 4}));
}

TEST_F(CodePaneKeysTest, HoldsTheSelectionThroughAReformatting) {
    open("<ul><li>x</li></ul>");
    view->textView().setSelectedRange({6, 4});
    watchSelection();
    model->reformatIndentation();
    EXPECT_EQ(selectionsGivenUp, 0);
    ASSERT_TRUE(selects({6, 4}));
    keyboard.type("y");
    EXPECT_TRUE(becomes("<ul>\n\tyx</li>\n</ul>"));
}

TEST_F(CodePaneKeysTest, HoldsTheSelectionWhenAllTextIsReplaced) {
    open("abcd");
    keyboard.press("Control+a");
    ASSERT_TRUE(selects({0, 4}));
    watchSelection();
    model->text = "EFGHI"s;
    EXPECT_EQ(selectionsGivenUp, 0);
    ASSERT_TRUE(selects({0, 4}));
    keyboard.type("y");
    EXPECT_TRUE(becomes("yI"));
}

TEST_F(CodePaneKeysTest, HoldsTheSelectionWhenTextIsReplacedThatIsShownInAnotherWay) {
    open("abcd");
    keyboard.press("Control+a");
    ASSERT_TRUE(selects({0, 4}));
    watchSelection();
    model->text = "E\0GHI"s;
    EXPECT_EQ(selectionsGivenUp, 0);
    ASSERT_TRUE(selects({0, 4}));
    keyboard.type("y");
    EXPECT_TRUE(becomes("yI"));
}

TEST_F(CodePaneKeysTest, HoldsTheSelectionWhenAStepIsTakenBackAndMadeAgain) {
    open("abcd");
    keyboard.press("Control+a");
    ASSERT_TRUE(selects({0, 4}));
    watchSelection();
    model->text = "EFGHI"s;
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("abcd"));
    keyboard.press("Control+y");
    ASSERT_TRUE(becomes("EFGHI"));
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("abcd"));
    EXPECT_EQ(selectionsGivenUp, 0);
    keyboard.type("y");
    EXPECT_TRUE(becomes("y"));
}

TEST_F(CodePaneKeysTest, HoldsTheSelectionWhenTypingOverAllTextIsTakenBack) {
    open("abcd");
    keyboard.press("Control+a");
    keyboard.type("x");
    ASSERT_TRUE(becomes("x"));
    keyboard.press("Control+a");
    ASSERT_TRUE(selects({0, 1}));
    watchSelection();
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("abcd"));
    EXPECT_EQ(selectionsGivenUp, 0);
    keyboard.type("y");
    EXPECT_TRUE(becomes("y"));
}

TEST_F(CodePaneKeysTest, InsertsFromTheMenuInOneStep) {
    open("eins zwei");
    view->textView().setSelectedRange({0, 4});
    model->insertAtCursor("<a href=\"\"></a>", 9);
    EXPECT_EQ(published, std::vector<std::string>{"<a href=\"\"></a> zwei"});
    EXPECT_TRUE(selects({9, 0}));
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("eins zwei"));
    EXPECT_TRUE(selects({0, 4}));
}

TEST_F(CodePaneKeysTest, TogglesACommentInOneStep) {
    open("ü😀 zwei");
    view->textView().setSelectedRange({4, 4});
    model->toggleComment();
    ASSERT_EQ(*model->text, "ü😀 <!-- zwei -->");
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("ü😀 zwei"));
    EXPECT_TRUE(selects({4, 4}));
}

TEST_F(CodePaneKeysTest, RemembersStepsThroughANewView) {
    open("");
    keyboard.type("ab");
    ASSERT_TRUE(becomes("ab"));
    build();
    keyboard.press("Control+z");
    EXPECT_TRUE(becomes(""));
}

TEST_F(CodePaneKeysTest, IndentsASelectionOfLinesInOneStep) {
    open("a\nb\nc\n");
    keyboard.press("Shift+Down");
    keyboard.press("Shift+Right");
    ASSERT_TRUE(waitUntil([&] { return selects({0, 3}); }));
    keyboard.press("Tab");
    ASSERT_TRUE(becomes("\ta\n\tb\nc\n"));
    keyboard.press("Shift+Tab");
    ASSERT_TRUE(becomes("a\nb\nc\n"));
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("\ta\n\tb\nc\n"));
    keyboard.press("Control+z");
    EXPECT_TRUE(becomes("a\nb\nc\n"));
    EXPECT_EQ(published.size(), 4U);
}

TEST_F(CodePaneKeysTest, MovesADraggedSelectionInOneStep) {
    open("eins zwei drei");
    view->textView().setSelectedRange({0, 5});
    drag(2, 14);
    ASSERT_TRUE(becomes("zwei dreieins "));
    EXPECT_EQ(published, std::vector<std::string>{"zwei dreieins "});
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("eins zwei drei"));
    EXPECT_TRUE(selects({0, 5}));
    EXPECT_FALSE(view->textView().canUndo());
    keyboard.press("Control+y");
    EXPECT_TRUE(becomes("zwei dreieins "));
}

TEST_F(CodePaneKeysTest, PastesTheSelectionWithTheMiddleButtonInOneStep) {
    open("eins\nzwei");
    keyboard.press("Shift+End");
    ASSERT_TRUE(selects({0, 4}));
    pointAt(9, 0);
    pressPointer(view->textView(), 2);
    releasePointer(view->textView(), 2);
    ASSERT_TRUE(becomes("eins\nzweieins"));
    EXPECT_EQ(published.size(), 1U);
    keyboard.press("Control+z");
    EXPECT_TRUE(becomes("eins\nzwei"));
}

TEST_F(CodePaneKeysTest, LeavesQuotesDashesAndWordsAsTheyWereTyped) {
    open("");
    for (const char* key : {"quotedbl", "a", "quotedbl", "minus", "minus", "apostrophe", "t", "e", "h",
                            "space", "period", "period", "period"})
        keyboard.press(key);
    EXPECT_TRUE(becomes("\"a\"--'teh ..."));
}

TEST_F(CodePaneKeysTest, ShowsLineNumbersTheLineOfTheCaretAndMatchingBrackets) {
    open("{}");
    auto* source = GTK_SOURCE_VIEW(view->textView().gobj());
    EXPECT_TRUE(gtk_source_view_get_show_line_numbers(source));
    EXPECT_TRUE(gtk_source_view_get_highlight_current_line(source));
    EXPECT_TRUE(gtk_source_buffer_get_highlight_matching_brackets(
        GTK_SOURCE_BUFFER(view->textView().get_buffer()->gobj())));
}

TEST_F(CodePaneKeysTest, InsertsATabWithoutASelection) {
    open("ab");
    keyboard.press("Right");
    keyboard.press("Tab");
    EXPECT_TRUE(becomes("a\tb"));
}

TEST_F(CodePaneKeysTest, GoesToTheFirstNonBlankAndThenToTheStart) {
    open("\t  wort");
    keyboard.press("End");
    ASSERT_TRUE(selects({7, 0}));
    keyboard.press("Home");
    ASSERT_TRUE(selects({3, 0}));
    keyboard.press("Home");
    ASSERT_TRUE(selects({0, 0}));
    keyboard.press("Home");
    ASSERT_TRUE(selects({3, 0}));
    keyboard.press("End");
    ASSERT_TRUE(selects({7, 0}));
    keyboard.press("Shift+Home");
    EXPECT_TRUE(selects({3, 4}));
}

TEST_F(CodePaneKeysTest, AsksForAnotherFontSizeWithinTheBounds) {
    open("x");
    std::vector<double> sizes;
    view->signalFontSizeRequested().connect([&](double size) {
        sizes.push_back(size);
        view->setFontSize(size);
    });
    keyboard.press("Control+plus");
    keyboard.press("Control+minus");
    keyboard.press("Control+minus");
    keyboard.press("Control+0");
    ASSERT_TRUE(waitUntil([&] { return sizes.size() == 4; }));
    EXPECT_EQ(sizes, (std::vector<double>{14, 13, 12, 13}));
    view->setFontSize(24);
    keyboard.press("Control+plus");
    keyboard.type("y");
    ASSERT_TRUE(becomes("yx"));
    EXPECT_EQ(sizes.size(), 4U);
}

TEST_F(CodePaneKeysTest, RestoresSelectionScrollPositionAndFocusInANewView) {
    std::string text;
    for (int line = 0; line < 1000; ++line)
        text += "Zeile\n";
    open(text);
    view->textView().setSelectedRange({6 * 500, 5});
    view->textView().revealSelection();
    ASSERT_TRUE(waitUntil([&] { return view->textView().scrollOrigin()->y > 1000; }));
    view->textView().setSelectedRange({6 * 500, 4});
    const double scrolled = view->textView().scrollOrigin()->y;
    build();
    EXPECT_TRUE(selects({6 * 500, 4}));
    EXPECT_TRUE(waitUntil([&] { return view->textView().get_vadjustment()->get_value() == scrolled; }))
        << view->textView().get_vadjustment()->get_value() << " instead of " << scrolled;
    EXPECT_TRUE(view->textView().isFirstResponder());
}

TEST_F(CodePaneKeysTest, SearchesWhileTheStringIsTyped) {
    open("<p>Wort</p>\n<p>wort</p>\n");
    model->showFindBar();
    keyboard.type("wo");
    ASSERT_TRUE(says("1 von 2"));
    EXPECT_TRUE(selects({3, 2}));
    keyboard.press("Return");
    ASSERT_TRUE(selects({15, 2}));
    ASSERT_TRUE(says("2 von 2"));
    keyboard.press("Return");
    ASSERT_TRUE(selects({3, 2}));
    keyboard.press("Shift+Return");
    ASSERT_TRUE(selects({15, 2}));
    keyboard.type("x");
    EXPECT_TRUE(says("Keine Treffer"));
}

TEST_F(CodePaneKeysTest, ReturnsToTheTextOnEscape) {
    open("ab ab");
    model->showFindBar();
    keyboard.type("b");
    ASSERT_TRUE(selects({1, 1}));
    keyboard.press("Escape");
    keyboard.type("x");
    ASSERT_TRUE(becomes("ax ab"));
    EXPECT_FALSE(view->findBar().get_visible());
}

TEST_F(CodePaneKeysTest, GoesOnSearchingWithoutTheBar) {
    open("ab ab ab");
    view->textView().setSelectedRange({0, 2});
    model->useSelectionForFind();
    model->findNext();
    ASSERT_TRUE(selects({3, 2}));
    model->findPrevious();
    ASSERT_TRUE(selects({0, 2}));
    EXPECT_FALSE(view->findBar().get_visible());
}

TEST_F(CodePaneKeysTest, ReplacesInTheTextThroughTheBar) {
    open("a b a");
    model->showReplaceBar();
    keyboard.type("a");
    ASSERT_TRUE(says("1 von 2"));
    keyboard.press("Tab");
    for (int control = 0; control < 5; ++control)
        keyboard.press("Tab");
    keyboard.type("x");
    keyboard.press("Return");
    ASSERT_TRUE(becomes("x b a"));
}

TEST_F(CodePaneKeysTest, KeepsTheKeyboardInTheBarWhenThereIsNothingLeftToReplace) {
    open("a b a");
    model->showReplaceBar();
    keyboard.type("a");
    ASSERT_TRUE(says("1 von 2"));
    for (int control = 0; control < 6; ++control)
        keyboard.press("Tab");
    keyboard.type("x");
    for (int control = 0; control < 2; ++control)
        keyboard.press("Tab");
    keyboard.press("space");
    ASSERT_TRUE(becomes("x b x"));
    ASSERT_TRUE(says("Keine Treffer"));
    keyboard.press("Escape");
    EXPECT_TRUE(waitUntil([&] { return !view->findBar().get_visible(); }));
}

TEST_F(CodePaneKeysTest, MarksTheMatchesThatAreOnScreen) {
    std::string text;
    for (int line = 0; line < 500; ++line)
        text += "eins\n";
    open(text);
    model->showFindBar();
    keyboard.type("ns");
    ASSERT_TRUE(says("1 von 500"));
    const auto isMarked = [this](int codePoint) {
        return view->textView().get_buffer()->get_iter_at_offset(codePoint).has_tag(view->findBar().mark());
    };
    EXPECT_TRUE(waitUntil([&] { return isMarked(2) && isMarked(7); }));
    EXPECT_FALSE(isMarked(0));
    EXPECT_FALSE(isMarked(5 * 400 + 2));
    keyboard.press("Escape");
    EXPECT_TRUE(waitUntil([&] { return !isMarked(7); }));
}

struct OddText {
    const char* name;
    std::string text;
};

class OddTextTest : public CodePaneKeysTest, public testing::WithParamInterface<OddText> {};

TEST_P(OddTextTest, KeepsEveryByteThatWasNotTouched) {
    const std::string& text = GetParam().text;
    open(text);
    EXPECT_EQ(view->textView().text(), text);
    keyboard.press("Control+End");
    keyboard.type("x");
    ASSERT_TRUE(waitUntil([&] { return *model->text == text + "x"; }));
    keyboard.press("Control+Home");
    keyboard.type("y");
    ASSERT_TRUE(waitUntil([&] { return *model->text == "y" + text + "x"; }));
    keyboard.press("Control+z");
    keyboard.press("Control+z");
    EXPECT_TRUE(waitUntil([&] { return *model->text == text; }));
}

std::string manyLines() {
    std::string text;
    for (int line = 0; line < 200'000; ++line)
        text += "<b>x\n";
    return text;
}

INSTANTIATE_TEST_SUITE_P(Odd, OddTextTest,
                         testing::Values(OddText{"Nul", "a\0b\n\0"s}, OddText{"LoneCR", "a\rb\r\rc"},
                                         OddText{"LineSeparators", "a\u2028b\u2029c\u0085d\u000Be\u000Cf"},
                                         OddText{"MixedLineEnds", "a\r\nb\nc\rd\n\r\n"},
                                         OddText{"Bidirectional", "<p>שלום \u202Eabc\u202C עולם</p>"},
                                         OddText{"Noncharacters", "\uFFFE\uFFFF\uFFFC\uFEFF\U0010FFFF"},
                                         OddText{"Combining", "e\u0301 👩‍👧 \u0301"},
                                         OddText{"ManyLines", manyLines()}),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_F(CodePaneKeysTest, KeepsALineOfAMegabyte) {
    std::string text;
    while (text.size() < 1'000'000)
        text += "<b c=\"d\">x</b>";
    open(text);
    EXPECT_EQ(view->textView().text(), text);
    view->textView().insertText("x", {500'000, 0});
    EXPECT_TRUE(becomes(text.substr(0, 500'000) + "x" + text.substr(500'000)));
}

TEST_F(CodePaneKeysTest, ShowsNulThatIsPutIntoATextWithoutOne) {
    open("ab");
    model->text = SharedText("a\0b"s);
    keyboard.press("Control+End");
    keyboard.type("x");
    ASSERT_TRUE(becomes("a\0bx"s));
    keyboard.press("Control+z");
    keyboard.press("Control+z");
    ASSERT_TRUE(becomes("ab"));
}

} // namespace
} // namespace corvanta
