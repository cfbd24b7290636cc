// The merge on random pages, beside the plain rules, and on whole pages: ours, and whatever lies in the
// folder that the environment variable CORVANTA_REAL_INPUT names.

#include "EditorCore/PreviewEditMerge.hpp"
#include "EditorCore/RandomEdit.hpp"
#include "EditorCore/ReferenceMerge.hpp"
#include "EditorCore/TextDecoding.hpp"
#include "Support/RealPages.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <random>
#include <string>

namespace corvanta {

namespace {

/// Appends a word to some of the texts of a page (at most about `editsPerPage`), as the preview would report
/// it, and expects nothing but the word to be new. Gives back how many texts that was.
int expectAppendedWordsToBePlaced(const std::filesystem::path& path, std::size_t editsPerPage) {
    const std::string source = TextDecoding::string(bytesOf(path));
    const auto runs = ReferenceMerge::textRuns(source);
    std::map<std::string, std::int64_t> totals;
    for (const auto& run : runs)
        ++totals[run.comparable];

    int edits = 0;
    std::map<std::string, std::int64_t> seen;
    const std::size_t step = runs.size() / editsPerPage + 1;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const auto& run = runs[i];
        const std::int64_t occurrence = seen[run.comparable]++;
        if (i % step != step / 2 || ReferenceMerge::isWhiteSpace(run.text))
            continue;
        std::string expected = source;
        expected.insert(run.end, " Neu");
        EXPECT_EQ(PreviewEditMerge::applyTextEdit(run.text, run.text + " Neu", occurrence,
                                                  totals[run.comparable], source) == expected,
                  true)
            << path << ": " << run.text;
        ++edits;
    }
    return edits;
}

} // namespace

TEST(PreviewEditMergePages, OfRandomPiecesAreMergedByTheRules) {
    std::mt19937 random(2);
    int merged = 0;
    constexpr int rounds = 15'000;
    for (int round = 0; round < rounds; ++round) {
        const auto edit = RandomEdit::from(random);
        const auto expected =
            ReferenceMerge::applyTextEdit(edit.before, edit.after, edit.occurrence, edit.total, edit.source);
        ASSERT_EQ(PreviewEditMerge::applyTextEdit(edit.before, edit.after, edit.occurrence, edit.total,
                                                  edit.source),
                  expected)
            << "before: " << edit.before << "\nafter: " << edit.after << "\nsource: " << edit.source;
        merged += expected.has_value() ? 1 : 0;
    }
    EXPECT_GT(merged, rounds / 10) << "too few edits are placed to try much";
    EXPECT_LT(merged, rounds * 9 / 10) << "too few edits are refused to try much";
}

TEST(PreviewEditMergePages, OfOurOwnTakeEveryWord) {
    int edits = 0;
    for (const auto& page : markupAmong(ownPages()))
        edits += expectAppendedWordsToBePlaced(page, 1000);
    EXPECT_GE(edits, 10);
}

TEST(PreviewEditMergePages, OfOthersTakeEveryWord) {
    constexpr std::size_t share = 80;
    const auto pages = markupAmong(realPages(share));
    int edits = 0;
    for (const auto& page : pages)
        edits += expectAppendedWordsToBePlaced(page, 5);
    EXPECT_TRUE(edits > 0 || pages.empty());
}

} // namespace corvanta
