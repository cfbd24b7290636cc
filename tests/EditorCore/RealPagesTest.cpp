// The tokenizer on whole files: a few small ones of our own, and whatever real ones there are.

#include "Support/RealPages.hpp"

#include "EditorCore/ReferenceTokenizer.hpp"
#include "EditorCore/SpanProperties.hpp"
#include "EditorCore/SyntaxTokenizer.hpp"
#include "EditorCore/TextDecoding.hpp"
#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {

namespace {

/// The reference is slow; one file of so many is compared with it.
constexpr std::size_t comparedShare = 20;

/// What puts the tokenizer into the language of a file of its own.
std::string openerFor(const std::filesystem::path& path) {
    if (path.extension() == ".css")
        return "<style>";
    return path.extension() == ".js" ? "<script>" : "";
}

std::string page(const std::filesystem::path& path) {
    return openerFor(path) + TextDecoding::string(bytesOf(path));
}

void expectTheSameSpans(const std::filesystem::path& path) {
    const std::string text = page(path);
    EXPECT_TRUE(SyntaxTokenizer::tokenize(text) == ReferenceTokenizer::tokenize(text)) << path;
}

void expectOrderedSpans(const std::filesystem::path& path) {
    const std::string text = page(path);
    EXPECT_EQ(complaintAbout(SyntaxTokenizer::tokenize(text), Utf8::codeUnitCount(text)), "") << path;
}

TEST(RealPages, OfOurOwnAreTokenizedByTheRules) {
    const auto files = ownPages();
    EXPECT_GE(files.size(), 4U);
    for (const auto& file : files)
        expectTheSameSpans(file);
}

TEST(RealPages, OfOthersAreTokenizedByTheRules) {
    for (const auto& file : realPages(comparedShare))
        expectTheSameSpans(file);
}

TEST(RealPages, OfOthersGiveSpansInOrder) {
    for (const auto& file : realPages())
        expectOrderedSpans(file);
}

} // namespace

} // namespace corvanta
