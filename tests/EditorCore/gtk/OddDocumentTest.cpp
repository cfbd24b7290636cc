#include "CodePaneFixture.hpp"

namespace corvanta {
namespace {

using namespace std::string_literals;

/// Documents that are no usual pages.
struct OddText {
    const char* name;
    std::string text;
};

class OddDocumentsTest : public CodePaneFixture, public testing::WithParamInterface<OddText> {};

TEST_P(OddDocumentsTest, KeepsEveryByteThatWasNotTouched) {
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

INSTANTIATE_TEST_SUITE_P(Odd, OddDocumentsTest,
                         testing::Values(OddText{"Nul", "a\0b\n\0"s}, OddText{"LoneCR", "a\rb\r\rc"},
                                         OddText{"LineSeparators", "a\u2028b\u2029c\u0085d\u000Be\u000Cf"},
                                         OddText{"MixedLineEnds", "a\r\nb\nc\rd\n\r\n"},
                                         OddText{"Bidirectional", "<p>שלום \u202Eabc\u202C עולם</p>"},
                                         OddText{"Noncharacters", "\uFFFE\uFFFF\uFFFC\uFEFF\U0010FFFF"},
                                         OddText{"Combining", "e\u0301 👩‍👧 \u0301"},
                                         OddText{"ManyLines", manyLines()}),
                         [](const auto& parameter) { return parameter.param.name; });

class OddDocumentTest : public CodePaneFixture {};

TEST_F(OddDocumentTest, KeepsALineOfAMegabyte) {
    std::string text;
    while (text.size() < 1'000'000)
        text += "<b c=\"d\">x</b>";
    open(text);
    EXPECT_EQ(view->textView().text(), text);
    view->textView().insertText("x", {500'000, 0});
    EXPECT_TRUE(becomes(text.substr(0, 500'000) + "x" + text.substr(500'000)));
}

/// How often the colours change in the text.
int toggles(const IndentingTextView& view) {
    int count = 0;
    for (auto place = view.get_buffer()->begin(); place.forward_to_tag_toggle({});)
        ++count;
    return count;
}

TEST_F(OddDocumentTest, ColoursALongLineFrameByFrame) {
    const std::string part = "<b c=\"d\">x</b>";
    std::string text;
    while (text.size() < 20'000)
        text += part;
    open(text);
    const IndentingTextView& textView = view->textView();
    ASSERT_TRUE(waitUntil([&] { return toggles(textView) > 0; }));
    // Now all of the line fits into the window.
    view->setFontSize(1);
    std::vector<int> seen{toggles(textView)};
    const auto isPainted = [&] {
        if (const int now = toggles(textView); now != seen.back())
            seen.push_back(now);
        return !textView.get_buffer()
                    ->get_iter_at_offset(static_cast<int>(text.size()) - 2)
                    .get_tags()
                    .empty();
    };
    ASSERT_TRUE(waitUntil(isPainted));
    const auto togglesInAPart = static_cast<std::size_t>(seen.back()) / (text.size() / part.size());
    for (std::size_t frame = 1; frame < seen.size(); ++frame)
        EXPECT_LE(seen[frame] - seen[frame - 1], static_cast<int>(togglesInAPart * (8192 / part.size() + 2)));
    EXPECT_GE(seen.size(), 3U);
}

TEST_F(OddDocumentTest, ShowsNulThatIsPutIntoATextWithoutOne) {
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
