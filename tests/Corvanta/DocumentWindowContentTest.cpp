#include "Corvanta/DocumentWindowContent.hpp"

#include "EditorCore/DocumentTemplate.hpp"
#include "Support/ManualMainQueue.hpp"
#include "Support/RecordedLog.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

class DocumentWindowContentTest : public testing::Test {
protected:
    HTMLDocument document{std::string(DocumentTemplate::newHTML)};
    ManualMainQueue queue;
    RecordedLog log;
    DocumentWindowContent content{document, queue, log};
    std::vector<std::string> previews;
    Subscription recording =
        content.previewHTML.subscribe([this](const std::string& html) { previews.push_back(html); });
};

TEST_F(DocumentWindowContentTest, ShowsTheDocumentInEditorAndPreviewAtOnce) {
    EXPECT_EQ(*content.editorViewModel.text, DocumentTemplate::newHTML);
    EXPECT_EQ(*content.previewHTML, DocumentTemplate::newHTML);
    EXPECT_EQ(queue.pendingCount(), 0U);
}

TEST_F(DocumentWindowContentTest, CarriesEveryChangeToTheDocumentAtOnce) {
    content.editorViewModel.text = "neu";
    EXPECT_EQ(document.text, "neu");
}

TEST_F(DocumentWindowContentTest, UpdatesThePreviewExactlyWhenTheTypingHasRested) {
    content.editorViewModel.text = "neu";
    queue.advance(349ms);
    EXPECT_TRUE(previews.empty());
    queue.advance(1ms);
    EXPECT_EQ(previews, std::vector<std::string>{"neu"});
}

TEST_F(DocumentWindowContentTest, UpdatesThePreviewOnceForFiveQuickKeys) {
    std::string text;
    for (int key = 0; key < 5; ++key) {
        text += 'x';
        content.editorViewModel.text = text;
        queue.advance(300ms);
    }
    EXPECT_TRUE(previews.empty());
    queue.advance(50ms);
    EXPECT_EQ(previews, std::vector<std::string>{"xxxxx"});
    queue.advance(10s);
    EXPECT_EQ(previews.size(), 1U);
}

TEST_F(DocumentWindowContentTest, LeavesNothingBehindWhenItsWindowClosesWhileTyping) {
    ManualMainQueue otherQueue;
    {
        DocumentWindowContent closing(document, otherQueue, log);
        closing.editorViewModel.text = "neu";
        EXPECT_EQ(otherQueue.pendingCount(), 1U);
    }
    EXPECT_EQ(otherQueue.pendingCount(), 0U);
}

TEST_F(DocumentWindowContentTest, TakesAnEditFromThePreviewAtOnce) {
    content.editorViewModel.text = "alt";
    content.previewDidEdit("neu");
    EXPECT_EQ(document.text, "neu");
    EXPECT_EQ(*content.editorViewModel.text, "neu");
    EXPECT_EQ(previews, std::vector<std::string>{"neu"});
}

TEST_F(DocumentWindowContentTest, NeverGivesThePreviewATextOlderThanItsOwnEdit) {
    content.editorViewModel.text = "alt";
    queue.advance(349ms);
    content.previewDidEdit("neu");
    queue.advance(10s);
    for (const std::string& html : previews)
        EXPECT_EQ(html, "neu");
}

TEST_F(DocumentWindowContentTest, LogsAnEditFromThePreviewInCharactersAsPeopleCountThem) {
    content.previewDidEdit("a\u0308\r\n👩‍👩‍👧");
    EXPECT_EQ(log.lines, (std::vector<std::string>{"preview: editor receives 3 chars from the preview",
                                                   "preview: editor text is now 3 chars"}));
}

} // namespace
} // namespace corvanta
