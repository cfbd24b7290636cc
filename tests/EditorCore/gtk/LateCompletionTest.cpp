#include "CodePaneFixture.hpp"

#include <string>

namespace corvanta {
namespace {

class LateCompletionTest : public CodePaneFixture {
protected:
    /// Makes the pane without showing it.
    void prepare(const std::string& text) {
        model = std::make_unique<EditorViewModel>(SharedText(text));
        view = std::make_unique<CodeEditorView>(*model, CodeEditorView::Services{queue, findRequest},
                                                "klassisch", 13);
    }

    void show() {
        window = std::make_unique<TestWindow>(*view);
        view->textView().grab_focus();
    }

    static std::string largeText() {
        std::string text;
        for (int line = 0; line < 60'000; ++line)
            text += "<p>Zeile ü</p>\r\n";
        return text;
    }

    Glib::RefPtr<Gtk::TextBuffer> buffer() { return view->textView().get_buffer(); }

    /// What the buffer holds is what the model holds.
    bool isWhole() { return *model->text == buffer()->get_text().raw(); }

    /// Where the text starts in the widget, which the line numbers decide.
    int textX() {
        int x = 0;
        int y = 0;
        view->textView().buffer_to_window_coords(Gtk::TextWindowType::WIDGET, 0, 0, x, y);
        return x;
    }
};

TEST_F(LateCompletionTest, ShowsTheStartOfALargeTextFirstAndThenAllOfIt) {
    prepare(largeText());
    const int shownAtOnce = buffer()->get_line_count();
    EXPECT_LT(shownAtOnce, 20'000);
    EXPECT_GT(shownAtOnce, 1'000);
    EXPECT_EQ(view->textView().text(), largeText());
    show();
    EXPECT_TRUE(waitUntil([&] { return isWhole(); }));
    EXPECT_EQ(buffer()->get_line_count(), 60'001);
    EXPECT_TRUE(published.empty());
    EXPECT_FALSE(view->textView().canUndo());
}

TEST_F(LateCompletionTest, KeepsTheTextInItsPlaceWhenTheRestComes) {
    prepare(largeText());
    show();
    ASSERT_TRUE(waitUntil([&] { return view->textView().get_mapped() && textX() > 0; }));
    std::vector<int> places;
    ASSERT_TRUE(waitUntil([&] {
        if (view->textView().get_width() > 0)
            places.push_back(textX());
        return isWhole();
    }));
    letPass(std::chrono::milliseconds(300));
    for (const int place : places)
        EXPECT_EQ(place, textX());
    EXPECT_FALSE(places.empty());
}

TEST_F(LateCompletionTest, PutsASmallTextAndOneWithoutLinesInAtOnce) {
    for (const std::string& text : {std::string("<p>\n"), std::string(1'000'000, 'x')}) {
        prepare(text);
        EXPECT_TRUE(isWhole());
        view.reset();
    }
}

TEST_F(LateCompletionTest, FindsAPlaceBehindTheStart) {
    const std::string text = largeText();
    for (const auto& goThere : std::vector<std::function<void(IndentingTextView&)>>{
             [](IndentingTextView& textView) {
                 textView.setSelectedRange({800'000, 5});
             },
             [](IndentingTextView& textView) { textView.goToLine(50'001); },
             [](IndentingTextView& textView) { textView.scrollToLine(50'000); },
             [](IndentingTextView& textView) {
                 textView.scroll({0, 100'000});
             }}) {
        prepare(text);
        goThere(view->textView());
        EXPECT_TRUE(isWhole());
        view.reset();
    }
    prepare(text);
    view->textView().setSelectedRange({800'000, 5});
    EXPECT_EQ(view->textView().selectedRange(), (TextRange{800'000, 5}));
    view->textView().goToLine(50'001);
    EXPECT_EQ(view->textView().selectedRange(), (TextRange{50'000 * 16, 0}));
}

TEST_F(LateCompletionTest, LosesNothingThatHappensBeforeTheRestComes) {
    const std::string text = largeText();
    prepare(text);
    buffer()->insert_interactive_at_cursor("x", true);
    buffer()->erase(buffer()->get_iter_at_offset(1), buffer()->get_iter_at_offset(4));
    // At the end of what is there.
    const int end = static_cast<int>(view->textView().textStorage().position(buffer()->end()).byte);
    buffer()->insert(buffer()->end(), "ü\n");
    const std::string edited = "x" + text.substr(3);
    const auto place = static_cast<std::size_t>(end);
    const std::string expected = edited.substr(0, place) + "ü\n" + edited.substr(place);
    EXPECT_EQ(*model->text, expected);
    EXPECT_FALSE(isWhole());
    show();
    ASSERT_TRUE(waitUntil([&] { return isWhole(); }));
    EXPECT_EQ(*model->text, expected);
    for (int step = 0; step < 3; ++step)
        view->textView().undo();
    EXPECT_TRUE(isWhole());
    EXPECT_EQ(*model->text, text);
}

TEST_F(LateCompletionTest, TakesAnotherTextBeforeTheRestComes) {
    prepare(largeText());
    std::string other = largeText();
    other.insert(500'000, "<b>");
    model->text = SharedText(other);
    EXPECT_TRUE(isWhole());
    prepare(largeText());
    const std::string withNul = std::string(1, '\0') + largeText();
    model->text = SharedText(withNul);
    EXPECT_EQ(view->textView().text(), withNul);
    EXPECT_EQ(buffer()->get_line_count(), 60'001);
}

TEST_F(LateCompletionTest, HasAllOfTheTextWhenAKeyIsPressed) {
    const std::string text = largeText();
    prepare(text);
    show();
    keyboard.press("Control+End");
    keyboard.type("y");
    EXPECT_TRUE(waitUntil([&] { return *model->text == text + "y"; }));
    EXPECT_TRUE(isWhole());
}

TEST_F(LateCompletionTest, SurvivesAPaneThatIsNeverShown) {
    prepare(largeText());
    view.reset();
    prepare(largeText());
    show();
    window.reset();
    view.reset();
    letPass(std::chrono::milliseconds(50));
}

} // namespace
} // namespace corvanta
