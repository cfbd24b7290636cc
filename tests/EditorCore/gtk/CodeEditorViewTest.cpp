#include "CodePaneFixture.hpp"
#include "EditorCore/SyntaxTokenizer.hpp"

#include <adwaita.h>
#include <fmt/format.h>

#include <random>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::string_literals;

class CodeEditorViewTest : public CodePaneFixture {
protected:
    Glib::RefPtr<Gtk::TextBuffer> buffer() { return view->textView().get_buffer(); }

    /// The colour that the buffer shows at a place, as "rrggbb"; empty without one.
    std::string colorAt(int codePoint) {
        auto tags = buffer()->get_iter_at_offset(codePoint).get_tags();
        // Matching brackets are marked with a tag of the widget's own.
        std::erase_if(tags, [](const auto& tag) {
            return tag->property_background_set() || !tag->property_foreground_set();
        });
        if (tags.empty())
            return {};
        const Gdk::RGBA color = tags.back()->property_foreground_rgba();
        return fmt::format("{:02x}{:02x}{:02x}", static_cast<int>(color.get_red() * 255.0F + 0.5F),
                           static_cast<int>(color.get_green() * 255.0F + 0.5F),
                           static_cast<int>(color.get_blue() * 255.0F + 0.5F));
    }

    /// What the tokenizer says of the model's text, as colours of the theme `klassisch`, one a code point of
    /// a text without characters beyond the basic plane.
    std::vector<std::string> expectedColors() {
        std::vector<std::string> colors(static_cast<std::size_t>(buffer()->get_char_count()));
        for (const SyntaxSpan& span : SyntaxTokenizer::tokenize(model->text->string())) {
            const Color color = EditorTheme::klassisch().color(span.token).light;
            for (std::int64_t at = span.range.location; at < span.range.end(); ++at)
                colors[static_cast<std::size_t>(at)] =
                    fmt::format("{:02x}{:02x}{:02x}", color.red, color.green, color.blue);
        }
        return colors;
    }

    std::vector<std::string> shownColors() {
        std::vector<std::string> colors;
        for (int at = 0; at < buffer()->get_char_count(); ++at)
            colors.push_back(colorAt(at));
        return colors;
    }

    bool showsItsColors(int from, int count) {
        const std::vector<std::string> expected = expectedColors();
        for (int at = from; at < from + count; ++at) {
            if (colorAt(at) != expected[static_cast<std::size_t>(at)])
                return false;
        }
        return true;
    }

    bool isBare(int from, int count) {
        const std::vector<std::string> colors = shownColors();
        return std::all_of(colors.begin() + from, colors.begin() + from + count,
                           [](const std::string& color) { return color.empty(); });
    }

    static std::string longLine() {
        std::string line;
        while (line.size() < 40'000)
            line += "<b class=\"x\">Wort</b> ";
        return line;
    }
};

TEST_F(CodeEditorViewTest, ShowsTheTextInTheColoursOfItsTheme) {
    open("<p class=\"a\">Grüße</p>\n<!-- ü -->\n");
    EXPECT_TRUE(waitUntil([&] { return shownColors() == expectedColors(); }));
    EXPECT_EQ(colorAt(0), "0b60c8");
    EXPECT_EQ(colorAt(13), "");
}

TEST_F(CodeEditorViewTest, CarriesEveryKeyToTheModelOnce) {
    open("");
    keyboard.type("abc");
    ASSERT_TRUE(waitUntil([&] { return *model->text == "abc"; }));
    EXPECT_EQ(published, (std::vector<std::string>{"a", "ab", "abc"}));
}

TEST_F(CodeEditorViewTest, RecoloursAtOnceWhatATypedCharacterChanges) {
    open("<p>eins</p>\n<p>zwei</p>\n");
    for (const char* key : {"less", "exclam", "minus", "minus"})
        keyboard.press(key);
    ASSERT_TRUE(waitUntil([&] { return model->text->string().starts_with("<!--"); }));
    EXPECT_TRUE(waitUntil([&] { return shownColors() == expectedColors(); }));
    EXPECT_EQ(colorAt(20), "177500");
}

TEST_F(CodeEditorViewTest, KeepsPositionsRightBehindUmlauts) {
    open("<p>äöü€</p><b>x</b>");
    keyboard.press("End");
    keyboard.type("x");
    ASSERT_TRUE(waitUntil([&] { return *model->text == "<p>äöü€</p><b>x</b>x"; }));
    EXPECT_TRUE(waitUntil([&] { return shownColors() == expectedColors(); }));
}

TEST_F(CodeEditorViewTest, ShowsATextThatTheModelReceivesFromOutside) {
    open("alt");
    model->text = "<b>neu</b>"s;
    EXPECT_EQ(buffer()->get_text(), "<b>neu</b>");
    EXPECT_TRUE(waitUntil([&] { return shownColors() == expectedColors(); }));
    view->textView().undo();
    EXPECT_EQ(*model->text, "alt");
}

TEST_F(CodeEditorViewTest, KeepsTheSelectionWhenTheModelReplacesTheText) {
    open("eins zwei drei");
    buffer()->select_range(buffer()->get_iter_at_offset(9), buffer()->get_iter_at_offset(5));
    model->text = "EINS ZWEI DREI"s;
    EXPECT_EQ(buffer()->get_insert()->get_iter().get_offset(), 9);
    EXPECT_EQ(buffer()->get_selection_bound()->get_iter().get_offset(), 5);
    model->text = "kurz ab"s;
    EXPECT_EQ(buffer()->get_insert()->get_iter().get_offset(), 7);
    EXPECT_EQ(buffer()->get_selection_bound()->get_iter().get_offset(), 5);
}

TEST_F(CodeEditorViewTest, CannotUndoTheOpeningOfADocument) {
    open("Text");
    EXPECT_FALSE(view->textView().canUndo());
}

TEST_F(CodeEditorViewTest, IndentsTheNewLineOnReturn) {
    open("<body>\n\t<div>");
    keyboard.press("Control+End");
    keyboard.press("Return");
    EXPECT_TRUE(waitUntil([&] { return *model->text == "<body>\n\t<div>\n\t\t"; })) << model->text->string();
    keyboard.type("x");
    EXPECT_TRUE(waitUntil([&] { return *model->text == "<body>\n\t<div>\n\t\tx"; })) << model->text->string();
}

TEST_F(CodeEditorViewTest, InsertsNothingButTheLineBreakWhereNothingIsOpen) {
    open("Text");
    keyboard.press("Control+End");
    keyboard.press("Return");
    EXPECT_TRUE(waitUntil([&] { return *model->text == "Text\n"; })) << model->text->string();
}

TEST_F(CodeEditorViewTest, MovesTheTextBehindTheCaretBehindTheIndentation) {
    open("<ü>Text");
    for (const char* key : {"Right", "Right", "Right", "KP_Enter"})
        keyboard.press(key);
    EXPECT_TRUE(waitUntil([&] { return *model->text == "<ü>\n\tText"; })) << model->text->string();
}

TEST_F(CodeEditorViewTest, UndoesLineBreakAndIndentationInOneStep) {
    open("<div>");
    keyboard.press("Control+End");
    keyboard.press("Return");
    ASSERT_TRUE(waitUntil([&] { return *model->text == "<div>\n\t"; })) << model->text->string();
    keyboard.press("Control+z");
    EXPECT_TRUE(waitUntil([&] { return *model->text == "<div>"; })) << model->text->string();
}

TEST_F(CodeEditorViewTest, ReplacesTheSelectionOnReturnInOneStep) {
    open("<div>eins zwei");
    buffer()->select_range(buffer()->get_iter_at_offset(5), buffer()->get_iter_at_offset(10));
    keyboard.press("Return");
    ASSERT_TRUE(waitUntil([&] { return *model->text == "<div>\n\tzwei"; })) << model->text->string();
    keyboard.press("Control+z");
    EXPECT_TRUE(waitUntil([&] { return *model->text == "<div>eins zwei"; })) << model->text->string();
}

TEST_F(CodeEditorViewTest, IndentsToFitTheTextBeforeTheSelectionOnly) {
    open("<a><b>");
    buffer()->select_range(buffer()->get_iter_at_offset(3), buffer()->get_iter_at_offset(6));
    keyboard.press("Return");
    EXPECT_TRUE(waitUntil([&] { return *model->text == "<a>\n\t"; })) << model->text->string();
}

TEST_F(CodeEditorViewTest, IndentsAlsoWithShift) {
    open("<div>");
    keyboard.press("Control+End");
    keyboard.press("Shift+Return");
    EXPECT_TRUE(waitUntil([&] { return *model->text == "<div>\n\t"; })) << model->text->string();
}

TEST_F(CodeEditorViewTest, LeavesReturnWithControlToCommands) {
    open("<div>");
    keyboard.press("Control+End");
    keyboard.press("Control+Return");
    keyboard.type("x");
    ASSERT_TRUE(waitUntil([&] { return model->text->string().ends_with("x"); }));
    EXPECT_EQ(model->text->string().find("\t"), std::string::npos);
}

TEST_F(CodeEditorViewTest, IndentsATextWithNul) {
    open("<a>\0<b>"s);
    keyboard.press("Control+End");
    keyboard.press("Return");
    EXPECT_TRUE(waitUntil([&] { return *model->text == "<a>\0<b>\n\t\t"s; })) << model->text->string();
}

TEST_F(CodeEditorViewTest, ScrollsTheNewLineIntoView) {
    open(std::string(200, '\n'));
    keyboard.press("Control+End");
    keyboard.press("Return");
    ASSERT_TRUE(waitUntil([&] { return model->text->size() == 201; }));
    EXPECT_TRUE(waitUntil([&] {
        Gdk::Rectangle visible;
        Gdk::Rectangle caret;
        view->textView().get_visible_rect(visible);
        view->textView().get_iter_location(buffer()->get_iter_at_mark(buffer()->get_insert()), caret);
        return caret.get_y() + caret.get_height() <= visible.get_y() + visible.get_height();
    }));
}

TEST_F(CodeEditorViewTest, KeepsATextWithNulAsItIs) {
    open("a\0b"s);
    keyboard.type("x");
    ASSERT_TRUE(waitUntil([&] { return *model->text == "xa\0b"s; })) << model->text->string();
}

TEST_F(CodeEditorViewTest, PaintsWhatScrollingBringsIntoView) {
    std::string text;
    for (int line = 0; line < 5000; ++line)
        text += "<p class=\"x\">Zeile</p>\n";
    open(text);
    const int lastTag = buffer()->get_char_count() - 3;
    EXPECT_EQ(colorAt(lastTag), "");
    buffer()->place_cursor(buffer()->end());
    // To a mark, which is reached however high the lines turn out to be.
    view->textView().scroll_to(buffer()->get_insert());
    EXPECT_TRUE(waitUntil([&] { return colorAt(lastTag) == "0b60c8"; }));
}

TEST_F(CodeEditorViewTest, PaintsOnlyWhatIsSeenOfALongLine) {
    open(longLine());
    const int end = buffer()->get_char_count() - 200;
    ASSERT_TRUE(waitUntil([&] { return showsItsColors(0, 200); }));
    EXPECT_FALSE(showsItsColors(end, 200));
    buffer()->place_cursor(buffer()->end());
    view->textView().scroll_to(buffer()->get_insert());
    EXPECT_TRUE(waitUntil([&] { return showsItsColors(end, 200); }));
}

TEST_F(CodeEditorViewTest, TakesTheColoursFromWhatIsNoLongerSeenOfALongLine) {
    open("<p>\n" + longLine() + "\n<p>\n");
    ASSERT_TRUE(waitUntil([&] { return showsItsColors(0, 200); }));
    buffer()->place_cursor(buffer()->end());
    view->textView().scroll_to(buffer()->get_insert());
    const int end = buffer()->get_char_count() - 200;
    EXPECT_TRUE(waitUntil([&] { return showsItsColors(end, 200) && isBare(4, 2000); }));
    EXPECT_TRUE(showsItsColors(0, 3));
    buffer()->place_cursor(buffer()->begin());
    view->textView().scroll_to(buffer()->get_insert());
    EXPECT_TRUE(waitUntil([&] { return showsItsColors(0, 200) && isBare(end - 2000, 2000); }));
    EXPECT_TRUE(showsItsColors(buffer()->get_char_count() - 4, 4));
}

TEST_F(CodeEditorViewTest, ColoursWhatIsTypedIntoALongLine) {
    open(longLine());
    for (const char* key : {"less", "i", "greater"})
        keyboard.press(key);
    ASSERT_TRUE(waitUntil([&] { return model->text->string().starts_with("<i><b"); }));
    EXPECT_TRUE(waitUntil([&] { return showsItsColors(0, 200); }));
    keyboard.press("BackSpace");
    ASSERT_TRUE(waitUntil([&] { return model->text->string().starts_with("<i<b"); }));
    EXPECT_TRUE(waitUntil([&] { return showsItsColors(0, 200); }));
}

TEST_F(CodeEditorViewTest, ChangesColoursWithTheAppearanceWithoutColouringAnew) {
    open("<p>x</p>");
    ASSERT_TRUE(waitUntil([&] { return !colorAt(0).empty(); }));
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(), ADW_COLOR_SCHEME_FORCE_DARK);
    EXPECT_EQ(colorAt(0), "64a8f0");
    adw_style_manager_set_color_scheme(adw_style_manager_get_default(), ADW_COLOR_SCHEME_DEFAULT);
    EXPECT_EQ(colorAt(0), "0b60c8");
}

TEST_F(CodeEditorViewTest, PastesTextWithoutTheColoursItHadElsewhere) {
    open("<b>x</b>\nText\n");
    buffer()->select_range(buffer()->get_iter_at_offset(0), buffer()->get_iter_at_offset(2));
    keyboard.press("Control+c");
    keyboard.press("Control+End");
    keyboard.press("Control+v");
    ASSERT_TRUE(waitUntil([&] { return *model->text == "<b>x</b>\nText\n<b"; }));
    keyboard.press("Control+Home");
    keyboard.press("Right");
    keyboard.press("Shift+Right");
    keyboard.press("Control+c");
    keyboard.press("Control+End");
    keyboard.press("Up");
    keyboard.press("Control+v");
    ASSERT_TRUE(waitUntil([&] { return *model->text == "<b>x</b>\nTebxt\n<b"; }));
    EXPECT_TRUE(waitUntil([&] { return shownColors() == expectedColors(); }));
}

TEST_F(CodeEditorViewTest, IsATextBoxToScreenReaders) {
    open("x");
    EXPECT_EQ(gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(view->textView().gobj())),
              GTK_ACCESSIBLE_ROLE_TEXT_BOX);
}

TEST_F(CodeEditorViewTest, DropsTheColoursOfTheOldThemeWhenItIsGivenAnother) {
    open("<p>x</p>");
    view->setThemeID("kontrast");
    EXPECT_TRUE(waitUntil([&] { return colorAt(0) == "0000cc"; }));
    EXPECT_FALSE(view->textView().canUndo());
}

TEST_F(CodeEditorViewTest, AlwaysShowsWhatColouringTheWholeTextWouldShow) {
    open("<p>ä</p>\n");
    std::mt19937 random(3);
    const std::vector<std::string> pieces{"<b>", "</b>",  "<!--",     "-->",       "\"",
                                          "ü",   " x=1 ", "<script>", "</script>", "var ",
                                          "\n",  "<?php", "?>",       "$a",        "#abc"};
    for (int step = 0; step < 150; ++step) {
        const int size = buffer()->get_char_count();
        const int at = static_cast<int>(random() % static_cast<unsigned>(size + 1));
        if (random() % 3 == 0 && size > 30) {
            buffer()->erase(buffer()->get_iter_at_offset(at),
                            buffer()->get_iter_at_offset(std::min(size, at + 6)));
        } else {
            buffer()->insert(buffer()->get_iter_at_offset(at), pieces[random() % pieces.size()]);
        }
        if (step % 5 == 0) {
            ASSERT_TRUE(waitUntil([&] { return shownColors() == expectedColors(); }))
                << "step " << step << ": " << model->text->string();
        }
        ASSERT_EQ(view->textStorage().text(), buffer()->get_text().raw());
    }
}

} // namespace
} // namespace corvanta
