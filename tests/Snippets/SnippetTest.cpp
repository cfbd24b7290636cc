#include "Snippets/Snippet.hpp"

#include <gtest/gtest.h>

#include <unordered_set>
#include <vector>

namespace corvanta {
namespace {

const std::string idText = "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6";

Snippet sample() {
    return {UUID::parse(idText).value(), "Größe \"x\"", "<p>\n\t\\</p>"};
}

TEST(Snippet, HasAFreshIdUnlessOneIsGiven) {
    const Snippet one{.title = "a", .body = "b"};
    const Snippet other{.title = "a", .body = "b"};
    EXPECT_NE(one.id, other.id);
    EXPECT_NE(one, other);
}

TEST(Snippet, IsEqualFieldByField) {
    EXPECT_EQ(sample(), sample());
    Snippet other = sample();
    other.title += "x";
    EXPECT_NE(sample(), other);
    other = sample();
    other.body += "x";
    EXPECT_NE(sample(), other);
}

TEST(Snippet, CanBeHashed) {
    Snippet other = sample();
    other.body = "anders";
    const std::unordered_set<Snippet> snippets{sample(), sample(), other};
    EXPECT_EQ(snippets.size(), 2U);
}

TEST(Snippet, IsWrittenAsAnObjectOfThreeMembers) {
    EXPECT_EQ(sample().toJSON(), R"({"id":"F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6","title":"Größe \"x\"",)"
                                 R"("body":"<p>\n\t\\</p>"})");
}

TEST(Snippet, ComesBackFromJSONAsItWas) {
    EXPECT_EQ(Snippet::fromJSON(sample().toJSON()), sample());
    const Snippet empty{.title = "", .body = ""};
    EXPECT_EQ(Snippet::fromJSON(empty.toJSON()), empty);
}

TEST(Snippet, IgnoresFurtherMembersAndTheirOrder) {
    EXPECT_EQ(Snippet::fromJSON(R"({"body": "b", "more": {}, "title": "t", "id": ")" + idText + "\"}"),
              (Snippet{UUID::parse(idText).value(), "t", "b"}));
}

TEST(Snippet, IsNotReadFromAnythingElse) {
    const std::string withId = R"({"id": ")" + idText + "\", ";
    const std::vector<std::string> texts{"",
                                         "[]",
                                         "\"text\"",
                                         "{",
                                         R"({"title": "t", "body": "b"})",
                                         R"({"id": 1, "title": "t", "body": "b"})",
                                         R"({"id": "1", "title": "t", "body": "b"})",
                                         withId + R"("title": "t"})",
                                         withId + R"("title": null, "body": "b"})",
                                         withId + R"("title": "t", "body": 7})"};
    for (const std::string& text : texts)
        EXPECT_FALSE(Snippet::fromJSON(text)) << text;
}

TEST(Snippet, IsWrittenAlsoWithBytesThatAreNoUtf8) {
    const Snippet broken{.title = "a\xff", .body = "b"};
    const auto read = Snippet::fromJSON(broken.toJSON());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->title, "a\xef\xbf\xbd");
}

} // namespace
} // namespace corvanta
