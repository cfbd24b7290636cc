#include "EditorCore/IndentationEngine.hpp"
#include "EditorCore/ReferenceIndentation.hpp"
#include "EditorCore/TextDecoding.hpp"
#include "Support/RealPages.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace corvanta {

namespace {

/// Compares the indents behind some of the lines and behind the whole page.
void expectTheSameIndents(const std::filesystem::path& path, std::size_t places) {
    const std::string text = TextDecoding::string(bytesOf(path));
    for (std::size_t place = 1; place <= places; ++place) {
        const std::size_t lineEnd = text.find('\n', text.size() * place / places);
        const std::string_view before = std::string_view(text).substr(0, lineEnd);
        EXPECT_EQ(IndentationEngine::indentForNewLine(before).size(),
                  ReferenceIndentation::indentForNewLine(before).size())
            << path << " before byte " << before.size();
    }
}

} // namespace

TEST(IndentationRealPages, OfOurOwnAreIndentedByTheRules) {
    const auto pages = ownPages();
    EXPECT_GE(pages.size(), 4U);
    for (const auto& page : pages)
        expectTheSameIndents(page, 50);
}

TEST(IndentationRealPages, OfOthersAreIndentedByTheRules) {
    constexpr std::size_t share = 80;
    for (const auto& page : realPages(share))
        expectTheSameIndents(page, 3);
}

} // namespace corvanta
