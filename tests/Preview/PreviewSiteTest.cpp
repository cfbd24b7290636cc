#include "Preview/PreviewSite.hpp"

#include "Support/InMemoryFileManager.hpp"

#include <gtest/gtest.h>

namespace corvanta {

namespace {

const PreviewSite site{"/web", "index.html"};

PreviewSite siteOf(const std::string& documentPath) {
    return {"/web", documentPath};
}

} // namespace

TEST(PreviewSite, NamesTheDocumentRelativeToTheRoot) {
    const InMemoryFileManager files;
    EXPECT_EQ(PreviewSite::make("/web/index.html", "/web", files), siteOf("index.html"));
    EXPECT_EQ(PreviewSite::make("/web/blog/a b.html", "/web", files), siteOf("blog/a b.html"));
    EXPECT_EQ(PreviewSite::make("/index.html", "/", files), (PreviewSite{"/", "index.html"}));
}

TEST(PreviewSite, DoesNotExistForADocumentThatIsTheRootOrLiesOutside) {
    const InMemoryFileManager files;
    EXPECT_EQ(PreviewSite::make("/web", "/web", files), std::nullopt);
    EXPECT_EQ(PreviewSite::make("/web/", "/web", files), std::nullopt);
    EXPECT_EQ(PreviewSite::make("/index.html", "/web", files), std::nullopt);
    EXPECT_EQ(PreviewSite::make("/webseite/index.html", "/web", files), std::nullopt);
    EXPECT_EQ(PreviewSite::make("/web/../index.html", "/web", files), std::nullopt);
    EXPECT_EQ(PreviewSite::make("/", "/", files), std::nullopt);
}

TEST(PreviewSite, StandardizesDocumentAndRoot) {
    const InMemoryFileManager files;
    EXPECT_EQ(PreviewSite::make("/web/./blog/..//index.html", "/home/../web/", files), siteOf("index.html"));
}

TEST(PreviewSite, FollowsLinksOfDocumentAndRoot) {
    InMemoryFileManager files;
    files.links["/link"] = "/web";
    files.links["/desk/page.html"] = "/web/index.html";
    files.links["/web/outside.html"] = "/private/outside.html";
    EXPECT_EQ(PreviewSite::make("/desk/page.html", "/link/", files), siteOf("index.html"));
    EXPECT_EQ(PreviewSite::make("/web/outside.html", "/web", files), std::nullopt);
}

TEST(PreviewSite, IsEqualWhenRootAndDocumentAre) {
    EXPECT_EQ(siteOf("a.html"), siteOf("a.html"));
    EXPECT_NE(siteOf("a.html"), siteOf("b.html"));
    EXPECT_NE(siteOf("a.html"), (PreviewSite{"/other", "a.html"}));
}

TEST(PreviewSite, EscapesTheDocumentsURL) {
    EXPECT_EQ(siteOf("index.html").documentRequestURL(), "vmpreview://dokument/index.html");
    EXPECT_EQ(siteOf("blog/a b.html").documentRequestURL(), "vmpreview://dokument/blog/a%20b.html");
    EXPECT_EQ(siteOf("100%.html").documentRequestURL(), "vmpreview://dokument/100%25.html");
}

TEST(PreviewSite, RecognisesItsOwnDocumentURLWhateverTheName) {
    for (const char* name : {"index.html",
                             "blog/a b.html",
                             "50%.html",
                             "100%25.html",
                             "a%20b.html",
                             "%2520",
                             "%",
                             "%%",
                             "50% %20",
                             "%C3%BC.html",
                             "%FF.html",
                             "wer?was#wo.html",
                             "straße/ü😀.html",
                             "\"quotes\"'.html",
                             "<a>[b]|c\\d^e`{f}",
                             "a:b;c=d&e,f.html",
                             "+plus+.html",
                             "~tilde.html",
                             "zeilen\nbruch.html",
                             " ",
                             "...",
                             "%2e%2e/a.html",
                             "a//b"}) {
        const PreviewSite named = siteOf(name);
        EXPECT_TRUE(named.isDocument(named.documentRequestURL())) << name;
    }
}

TEST(PreviewSite, CannotRequestADocumentWhoseNameIsNoText) {
    const PreviewSite latin = siteOf("\xE4.html");
    EXPECT_EQ(latin.documentRequestURL(), "vmpreview://dokument/%E4.html");
    EXPECT_FALSE(latin.isDocument(latin.documentRequestURL()));
}

TEST(PreviewSite, TakesQueryAndFragmentForNoPartOfThePath) {
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/a.css?v=2/3#x"), "a.css");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/a.css#x?y"), "a.css");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument?x=/a"), "");
    EXPECT_TRUE(site.isDocument("vmpreview://dokument/index.html?lang=de#top"));
}

TEST(PreviewSite, DecodesARequestTwice) {
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/a%20b.html"), "a b.html");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/a%2520b.html"), "a b.html");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/a%252520b.html"), "a%20b.html");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/a%3Fb%23c"), "a?b#c");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/bl%C3%BCte.png"), "blüte.png");
}

TEST(PreviewSite, KeepsWhatCannotBeDecoded) {
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/100%"), "100%");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/100%25"), "100%");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/%zz%20"), "%zz%20");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/%FF"), "%FF");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/%25FF"), "%FF");
}

TEST(PreviewSite, DropsOneLeadingSlashOnly) {
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument//a.css"), "/a.css");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/%2Fa.css"), "/a.css");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/a/"), "a/");
}

TEST(PreviewSite, FindsThePathOfTextsThatAreNoURL) {
    EXPECT_EQ(PreviewSite::requestedPath(""), "");
    EXPECT_EQ(PreviewSite::requestedPath("a.css"), "a.css");
    EXPECT_EQ(PreviewSite::requestedPath("/a.css"), "a.css");
    EXPECT_EQ(PreviewSite::requestedPath(":a.css"), ":a.css");
    EXPECT_EQ(PreviewSite::requestedPath("//dokument/a.css"), "a.css");
    EXPECT_EQ(PreviewSite::requestedPath("//dokument"), "");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview:a.css"), "a.css");
    EXPECT_EQ(PreviewSite::requestedPath("vmpreview://dokument/a b ü.css"), "a b ü.css");
    EXPECT_EQ(PreviewSite::requestedPath("/zeit/12:30.html"), "zeit/12:30.html");
}

TEST(PreviewSite, HasNeitherDocumentNorFileAtItsBase) {
    for (const char* base : {"vmpreview://dokument/", "vmpreview://dokument", "vmpreview://dokument/?x#y"}) {
        EXPECT_EQ(PreviewSite::requestedPath(base), "");
        EXPECT_FALSE(site.isDocument(base));
        EXPECT_EQ(site.fileURL(base), std::nullopt);
    }
}

TEST(PreviewSite, ComparesTheRequestWithTheDocumentExactly) {
    EXPECT_TRUE(site.isDocument("vmpreview://dokument/index.html"));
    EXPECT_FALSE(site.isDocument("vmpreview://dokument/Index.html"));
    EXPECT_FALSE(site.isDocument("vmpreview://dokument/./index.html"));
    EXPECT_FALSE(site.isDocument("vmpreview://dokument//index.html"));
    EXPECT_FALSE(site.isDocument("vmpreview://dokument/index.html/"));
}

TEST(PreviewSite, MapsARequestToTheFileUnderTheRoot) {
    EXPECT_EQ(site.fileURL("vmpreview://dokument/bilder/kopf.jpg"), "/web/bilder/kopf.jpg");
    EXPECT_EQ(site.fileURL("vmpreview://dokument/bilder/../a.css"), "/web/a.css");
    EXPECT_EQ(site.fileURL("vmpreview://dokument/./a//b.css"), "/web/a/b.css");
    EXPECT_EQ(site.fileURL("vmpreview://dokument/bilder/"), "/web/bilder");
    EXPECT_EQ((PreviewSite{"/", "index.html"}).fileURL("vmpreview://dokument/etc/a.css"), "/etc/a.css");
}

TEST(PreviewSite, AppendsAPathThatBeginsWithASlashInsteadOfReplacingTheRoot) {
    EXPECT_EQ(site.fileURL("vmpreview://dokument//etc/passwd"), "/web/etc/passwd");
    EXPECT_EQ(site.fileURL("vmpreview://dokument/%2F%2Fetc/passwd"), "/web/etc/passwd");
}

TEST(PreviewSite, RefusesARequestThatClimbsOutOfTheRoot) {
    for (const char* path : {"/../geheim.txt", "/bilder/../../x", "/..", "/../web", "/../web2/a", "/%2e%2e/x",
                             "/%252e%252e/x", "/..%2Fx", "/..%252Fx", "/a/../..//x", "/.", "/a/..", "//../x"})
        EXPECT_EQ(site.fileURL(std::string("vmpreview://dokument") + path), std::nullopt) << path;
}

TEST(PreviewSite, AllowsARequestThatLeavesTheRootAndComesBack) {
    EXPECT_EQ(site.fileURL("vmpreview://dokument/../web/a.css"), "/web/a.css");
}

TEST(PreviewSite, RefusesANameThatHoldsANul) {
    EXPECT_EQ(site.fileURL("vmpreview://dokument/a.css%00.png"), std::nullopt);
    EXPECT_EQ(site.fileURL("vmpreview://dokument/a.css%2500.png"), std::nullopt);
    EXPECT_EQ(site.fileURL("vmpreview://dokument/%00"), std::nullopt);
}

TEST(PreviewSite, ComparesComponentsNotLetters) {
    EXPECT_EQ(PreviewSite::relativePath("/web/a/b.css", "/web"), "a/b.css");
    EXPECT_EQ(PreviewSite::relativePath("/web/a/b.css/", "/web/"), "a/b.css");
    EXPECT_EQ(PreviewSite::relativePath("/web/./a/../b.css", "//web/."), "b.css");
    EXPECT_EQ(PreviewSite::relativePath("/a.css", "/"), "a.css");
    EXPECT_EQ(PreviewSite::relativePath("/web2/a.css", "/web"), std::nullopt);
    EXPECT_EQ(PreviewSite::relativePath("/Web/a.css", "/web"), std::nullopt);
    EXPECT_EQ(PreviewSite::relativePath("/web", "/web/a"), std::nullopt);
    EXPECT_EQ(PreviewSite::relativePath("/web", "/web"), std::nullopt);
    EXPECT_EQ(PreviewSite::relativePath("/", "/"), std::nullopt);
}

} // namespace corvanta
