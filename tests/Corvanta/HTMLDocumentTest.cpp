#include "Corvanta/HTMLDocument.hpp"

#include "Corvanta/DocumentError.hpp"
#include "EditorCore/DocumentTemplate.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Support/InMemoryFileManager.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace corvanta {

namespace {

std::optional<HTMLDocument> read(const std::string& bytes) {
    InMemoryFileManager files;
    files.files["/seite.html"] = bytes;
    std::error_code error;
    return HTMLDocument::read(files, "/seite.html", error);
}

std::vector<std::string_view> names(std::span<const ContentType> types) {
    std::vector<std::string_view> names;
    for (const ContentType& type : types)
        names.push_back(type.name);
    return names;
}

} // namespace

TEST(HTMLDocument, HoldsTheTextOfTheFile) {
    EXPECT_EQ(read("<p>Grüße</p>\r\n"), HTMLDocument{"<p>Grüße</p>\r\n"});
    EXPECT_EQ(HTMLDocument{std::string(DocumentTemplate::newHTML)}.text.size(), 123U);
}

TEST(HTMLDocument, ClearsTheErrorOfAnEarlierAttempt) {
    InMemoryFileManager files;
    files.files["/seite.html"] = "x";
    std::error_code error = DocumentError::fileReadCorruptFile;
    EXPECT_TRUE(HTMLDocument::read(files, "/seite.html", error));
    EXPECT_FALSE(error);
}

TEST(HTMLDocument, IsWrittenBackAsUtf8WithoutAMark) {
    EXPECT_EQ(read("<p>Gr\xFC\xDF"
                   "e</p>\r\n")
                  ->fileContents(),
              "<p>Grüße</p>\r\n");
    EXPECT_EQ(read("\xEF\xBB\xBF<p>")->fileContents(), "<p>");
}

TEST(HTMLDocument, IsEmptyForAnEmptyFile) {
    ASSERT_TRUE(read(""));
    EXPECT_EQ(read("")->text, "");
    EXPECT_EQ(read("")->fileContents().size(), 0U);
}

TEST(HTMLDocument, KeepsNulAndEveryOtherCharacter) {
    const std::string text("a\0b\r\n\tc\n\n", 9);
    EXPECT_EQ(read(text)->fileContents(), text);
}

TEST(HTMLDocument, CannotBeReadFromAFolder) {
    const PosixFileManager files;
    std::error_code error;
    EXPECT_EQ(HTMLDocument::read(files, "/", error), std::nullopt);
    EXPECT_EQ(error, DocumentError::fileReadCorruptFile);
    EXPECT_STREQ(error.category().name(), "document");
    EXPECT_EQ(error.message(), "not a regular file, or not readable");
}

TEST(HTMLDocument, FailsInTheSameWayWhateverTheReason) {
    InMemoryFileManager files;
    files.failures["/verboten.html"] = std::errc::permission_denied;
    files.failures["/defekt.html"] = std::errc::io_error;
    for (const char* path : {"/verboten.html", "/defekt.html", "/fehlt.html"}) {
        std::error_code error;
        EXPECT_EQ(HTMLDocument::read(files, path, error), std::nullopt);
        EXPECT_EQ(error, DocumentError::fileReadCorruptFile) << path;
    }
}

TEST(HTMLDocument, OpensMoreKindsOfFilesThanItOffersForSaving) {
    EXPECT_EQ(names(HTMLDocument::readableContentTypes()),
              (std::vector<std::string_view>{"HTML", "CSS", "JavaScript", "PHP", "Reiner Text", "Quelltext",
                                             "Text"}));
    EXPECT_TRUE(std::ranges::equal(HTMLDocument::writableContentTypes(),
                                   HTMLDocument::readableContentTypes().first(5)));
}

TEST(HTMLDocument, KnowsPhpBySuffixWithoutTheDesktop) {
    const ContentType& php = HTMLDocument::writableContentTypes()[3];
    EXPECT_NE(std::ranges::find(php.suffixes, "php"), php.suffixes.end());
}

} // namespace corvanta
