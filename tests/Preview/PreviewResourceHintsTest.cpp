#include "Preview/PreviewResourceHints.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {

namespace {

bool isLocal(const std::string& html) {
    return PreviewResourceHints::referencesLocalFiles(html);
}

} // namespace

TEST(PreviewResourceHints, AreFalseForAPageThatLinksTheWebOnly) {
    EXPECT_FALSE(isLocal("<a href=\"https://example.org\">x</a><a href='mailto:a@b.de'>y</a>"
                         "<a href=\"#oben\">z</a><img src=\"data:image/png;base64,AA\">"
                         "<script src=\"//cdn.example.org/a.js\"></script><a href=\"tel:112\">"
                         "<a href=\"javascript:void(0)\"><iframe src=\"about:blank\"></iframe>"
                         "<img srcset=\"http://example.org/a.png 2x\">"));
    EXPECT_FALSE(isLocal(""));
    EXPECT_FALSE(isLocal("<p>1 = 1</p>"));
}

TEST(PreviewResourceHints, AreTrueForEveryMarkerInEveryCase) {
    for (const char* html : {"<img src=\"logo.svg\">", "<img SRC=\"logo.svg\">", "<a hReF='seite.html'>",
                             "<img srcset=\"a.png 2x\">", "<img DATA-SRC=\"a.png\">", "src=x"})
        EXPECT_TRUE(isLocal(html)) << html;
}

TEST(PreviewResourceHints, FindALocalFileBehindExternalOnes) {
    EXPECT_TRUE(isLocal("<img src=\"https://example.org/a.png\"><a href=\"#x\"><img src=b.png>"));
}

TEST(PreviewResourceHints, CountRelativeRootAbsoluteAndUnquotedValuesAsLocal) {
    EXPECT_TRUE(isLocal("<img src=\"bild.png\">"));
    EXPECT_TRUE(isLocal("<link href=\"/css/site.css\">"));
    EXPECT_TRUE(isLocal("<img src=bild.png>"));
    EXPECT_TRUE(isLocal("<a href=\"ftp://example.org\">")) << "not in the list of what is external";
}

TEST(PreviewResourceHints, CompareExternalPrefixesInAnyCase) {
    EXPECT_FALSE(isLocal("<a href=\"HTTPS://EXAMPLE.ORG\"><a href=\"JavaScript:x()\">"));
    EXPECT_TRUE(isLocal("<a href=\"http:/eins.html\">"));
}

TEST(PreviewResourceHints, SkipQuotesAndBlanksButNoOtherWhiteSpace) {
    EXPECT_FALSE(isLocal("<a href= ' \" https://example.org'>"));
    EXPECT_TRUE(isLocal("<a href=\"\thttps://example.org\">"));
    EXPECT_TRUE(isLocal("<a href=\"\nhttps://example.org\">"));
}

TEST(PreviewResourceHints, TakeWhatFollowsAnEmptyValueForTheValue) {
    EXPECT_TRUE(isLocal("<img src=\"\" alt=\"x\">"));
    EXPECT_FALSE(isLocal("<img src=\"\""));
    EXPECT_FALSE(isLocal("<img src="));
}

TEST(PreviewResourceHints, LookNoFurtherThanTwoHundredCharacters) {
    EXPECT_FALSE(isLocal("src=" + std::string(200, ' ') + "a.png"));
    EXPECT_TRUE(isLocal("src=" + std::string(199, ' ') + "a.png"));
    EXPECT_FALSE(isLocal("src=" + std::string(193, ' ') + "http://x"));
    EXPECT_TRUE(isLocal("src=" + std::string(194, ' ') + "http://x")) << "only \"http:/\" is seen";
}

TEST(PreviewResourceHints, CountMarkersInScriptsAndComments) {
    EXPECT_TRUE(isLocal("<!-- src=a.png -->"));
    EXPECT_TRUE(isLocal("<script>image.src='a.png'</script>"));
    EXPECT_FALSE(isLocal("<script>image.src = 'a.png'</script>"));
}

} // namespace corvanta
