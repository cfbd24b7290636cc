#include "EditorCore/EditHighlighter.hpp"

#include "EditedTextStorage.hpp"
#include "EditorCore/SyntaxTokenizer.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace corvanta {
namespace {

class EditHighlighterTest : public testing::Test {
protected:
    void highlight(const TextChange& change) {
        highlighter.highlightChange(change, EditorTheme::dezent(), EditorFont{}, standardTextColor);
    }

    void replace(std::size_t first, std::size_t last, std::string_view inserted) {
        highlight(storage.replace(first, last, inserted));
    }

    std::vector<SyntaxSpan> runs() const { return storage.runs.overlapping({0, storage.length()}); }

    EditedTextStorage storage;
    EditHighlighter highlighter{storage};
};

std::string longPage() {
    std::string page;
    for (int section = 0; section < 2000; ++section)
        page += "<section class=\"text\"><h2>Überschrift</h2><p>Text</p></section>\n";
    return page;
}

TEST_F(EditHighlighterTest, ColoursTheWholeTextAtFirst) {
    replace(0, 0, longPage());
    EXPECT_EQ(runs(), SyntaxTokenizer::tokenize(storage.text().string()));
}

TEST_F(EditHighlighterTest, ColoursATextThatIsReadInManyPieces) {
    std::string text;
    while (text.size() < 3'000'000)
        text += longPage();
    replace(0, 0, text);
    EXPECT_EQ(runs(), SyntaxTokenizer::tokenize(text));
}

TEST_F(EditHighlighterTest, ColoursACommentThatIsLongerThanWhatIsReadAtOnce) {
    replace(0, 0, longPage() + "<!--" + std::string(3'000'000, 'x') + "-->" + longPage());
    EXPECT_EQ(runs(), SyntaxTokenizer::tokenize(storage.text().string()));
}

TEST_F(EditHighlighterTest, ReadsOnlyTheNeighbourhoodOfAKey) {
    replace(0, 0, longPage());
    storage.addedRuns = 0;
    replace(60'000, 60'000, "x");
    EXPECT_EQ(runs(), SyntaxTokenizer::tokenize(storage.text().string()));
    EXPECT_LT(storage.addedRuns, 1000);
}

TEST_F(EditHighlighterTest, ColoursEverythingBehindACommentThatIsNotClosed) {
    replace(0, 0, longPage());
    replace(2, 2, "><!--");
    EXPECT_EQ(runs(), SyntaxTokenizer::tokenize(storage.text().string()));
    replace(3, 7, "");
    EXPECT_EQ(runs(), SyntaxTokenizer::tokenize(storage.text().string()));
}

TEST_F(EditHighlighterTest, LooksAtAStyleSheetsWordAgainWhenAColonComesLongAfterIt) {
    replace(0, 0, "<style>" + std::string(5000, ';') + "color" + std::string(5000, ' ') + "red</style>");
    replace(5012 + 4000, 5012 + 4000, ":");
    EXPECT_EQ(runs(), SyntaxTokenizer::tokenize(storage.text().string()));
}

TEST_F(EditHighlighterTest, TakesSeveralEditsAtOnce) {
    replace(0, 0, longPage());
    TextChange change = storage.replace(50'000, 50'010, "<b>");
    change = change.united(storage.replace(1000, 1000, "<i>"));
    change = change.united(storage.replace(90'000, 90'020, ""));
    highlight(change);
    EXPECT_EQ(runs(), SyntaxTokenizer::tokenize(storage.text().string()));
}

class EditHighlighterAgainstTheWhole : public EditHighlighterTest,
                                       public testing::WithParamInterface<unsigned> {};

TEST_P(EditHighlighterAgainstTheWhole, GivesTheSameThroughRandomEdits) {
    std::mt19937 random(GetParam());
    const std::vector<std::string> pieces{
        "<b>", "</b>",  "<!--", "-->",   "\"",      "ü",        " x=1 ",  "<script>", "</script>", "var ",
        "\n",  "<?php", "?>",   "$a",    "<style>", "</style>", "color",  "    ",     ":",         "/*",
        "*/",  "#abc",  "😀",    "Text ", "// x\n",  "'",        "a{b:c}", "<"};
    std::string start;
    for (int i = 0; i < 6000; ++i)
        start += pieces[random() % pieces.size()];
    replace(0, 0, start);

    for (int step = 0; step < 60; ++step) {
        const std::string text = storage.text();
        const auto boundary = [&](std::size_t at) {
            while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U)
                ++at;
            return std::min(at, text.size());
        };
        const std::size_t first = boundary(random() % (text.size() + 1));
        const std::size_t last = random() % 2 == 0 ? first : boundary(first + random() % 30);
        std::string inserted;
        for (unsigned i = random() % 4; i > 0; --i)
            inserted += pieces[random() % pieces.size()];
        replace(first, last, inserted);
        ASSERT_EQ(runs(), SyntaxTokenizer::tokenize(storage.text().string())) << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, EditHighlighterAgainstTheWhole, testing::Range(1U, 31U));

} // namespace
} // namespace corvanta
