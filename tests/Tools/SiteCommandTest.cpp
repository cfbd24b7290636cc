#include "ToolTest.hpp"

namespace corvanta {

class SiteCommand : public ToolTest {
protected:
    /// The answers to `requests`, one a line, of a site with the root /web and the document `document` in it.
    static std::string answers(const std::string& requests, const std::string& document = "index.html") {
        const ProgramResult result =
            runTool({"site", "--root", "/web", "--document", "/web/" + document}, requests);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        return result.output;
    }
};

TEST_F(SiteCommand, RecognisesTheDocument) {
    EXPECT_EQ(answers("vmpreview://dokument/blog/a%20b.html\n", "blog/a b.html"),
              "{\"requestedPath\":\"blog/a b.html\",\"isDocument\":true,\"file\":\"blog/a b.html\","
              "\"contentType\":\"text/html; charset=utf-8\"}\n");
    EXPECT_EQ(answers("vmpreview://dokument/daten.txt\n", "daten.txt"),
              "{\"requestedPath\":\"daten.txt\",\"isDocument\":true,\"file\":\"daten.txt\","
              "\"contentType\":\"text/html; charset=utf-8\"}\n");
}

TEST_F(SiteCommand, NamesTheFileAndItsContentType) {
    EXPECT_EQ(answers("vmpreview://dokument/bilder/../css/a.css?v=1\nvmpreview://dokument/BILD.PNG\n"
                      "vmpreview://dokument/a.unbekannt\n"),
              "{\"requestedPath\":\"bilder/../css/a.css\",\"isDocument\":false,\"file\":\"css/a.css\","
              "\"contentType\":\"text/css; charset=utf-8\"}\n"
              "{\"requestedPath\":\"BILD.PNG\",\"isDocument\":false,\"file\":\"BILD.PNG\","
              "\"contentType\":\"image/png\"}\n"
              "{\"requestedPath\":\"a.unbekannt\",\"isDocument\":false,\"file\":\"a.unbekannt\","
              "\"contentType\":\"application/octet-stream\"}\n");
}

TEST_F(SiteCommand, RefusesWhatNamesNoFileUnderTheRoot) {
    EXPECT_EQ(
        answers(
            "vmpreview://dokument/\nvmpreview://dokument/../geheim.txt\n\nvmpreview://dokument/a%00.css\n"),
        "{\"requestedPath\":\"\",\"isDocument\":false,\"file\":null,\"contentType\":null}\n"
        "{\"requestedPath\":\"../geheim.txt\",\"isDocument\":false,\"file\":null,\"contentType\":null}\n"
        "{\"requestedPath\":\"\",\"isDocument\":false,\"file\":null,\"contentType\":null}\n"
        "{\"requestedPath\":\"a\\u0000.css\",\"isDocument\":false,\"file\":null,\"contentType\":null}\n");
}

TEST_F(SiteCommand, WritesUtf8AndReplacesWhatIsNone) {
    EXPECT_EQ(answers("/bl%C3%BCte%25C3%25A4.css\n"),
              "{\"requestedPath\":\"blüteä.css\",\"isDocument\":false,\"file\":\"blüteä.css\","
              "\"contentType\":\"text/css; charset=utf-8\"}\n");
    EXPECT_EQ(answers("/\xE4.css\n"),
              "{\"requestedPath\":\"\uFFFD.css\",\"isDocument\":false,\"file\":\"\uFFFD.css\","
              "\"contentType\":\"text/css; charset=utf-8\"}\n");
}

TEST_F(SiteCommand, ReadsLinesWithEveryEndAndALastOneWithout) {
    EXPECT_EQ(answers("/a.css\r\n/a.css"), answers("/a.css\n/a.css\n"));
    EXPECT_EQ(answers(""), "");
}

TEST_F(SiteCommand, ReadsALineLongerThanItsBuffer) {
    const std::string name(300'000, 'x');
    EXPECT_EQ(answers("/" + name + ".css\n/b.css\n"),
              "{\"requestedPath\":\"" + name + ".css\",\"isDocument\":false,\"file\":\"" + name +
                  ".css\",\"contentType\":\"text/css; charset=utf-8\"}\n"
                  "{\"requestedPath\":\"b.css\",\"isDocument\":false,\"file\":\"b.css\","
                  "\"contentType\":\"text/css; charset=utf-8\"}\n");
}

TEST_F(SiteCommand, AnswersEachRequestBeforeItReadsTheNext) {
    ChildProcess tool({CORVANTA_TEXT, "site", "--root", "/web", "--document", "/web/index.html"});
    tool.write("/a.css\n");
    EXPECT_NE(tool.readLine().find("\"requestedPath\":\"a.css\""), std::string::npos);
    tool.write("/b.");
    tool.write("css\n");
    EXPECT_NE(tool.readLine().find("\"requestedPath\":\"b.css\""), std::string::npos);
    const ProgramResult result = tool.finish();
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 0);
}

TEST_F(SiteCommand, HasNoSiteForADocumentThatIsNotInsideTheRoot) {
    for (const char* document : {"/web", "/index.html", "/website/index.html", "/web/../index.html"}) {
        const ProgramResult result = runTool({"site", "--root", "/web", "--document", document}, "/a.css\n");
        EXPECT_EQ(result.output, "{\"site\":null}\n") << document;
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.status, 1);
    }
}

TEST_F(SiteCommand, FollowsLinksAndTakesPathsFromTheFolderItIsCalledIn) {
    std::filesystem::create_directory(folder / "web");
    file("web/index.html", "");
    std::filesystem::create_symlink("web", folder / "link");
    const ProgramResult result =
        runProgram({"/bin/sh", "-c",
                    "cd \"$1\" && echo /index.html | \"$0\" site --root link --document web/./index.html",
                    CORVANTA_TEXT, folder.path()});
    EXPECT_EQ(result.output, "{\"requestedPath\":\"index.html\",\"isDocument\":true,\"file\":\"index.html\","
                             "\"contentType\":\"text/html; charset=utf-8\"}\n");
}

TEST_F(SiteCommand, AsksTheDesktopForTypesThatItDoesNotKnow) {
    std::filesystem::create_directories(folder / "daten/mime");
    file("daten/mime/globs2", "50:text/x-eigen:*.eigen\n");
    const ProgramResult result =
        runProgram({"/usr/bin/env", "XDG_DATA_HOME=" + (folder / "daten").string(), CORVANTA_TEXT, "site",
                    "--root=/web", "--document=/web/index.html"},
                   "/a.eigen\n");
    EXPECT_EQ(result.output, "{\"requestedPath\":\"a.eigen\",\"isDocument\":false,\"file\":\"a.eigen\","
                             "\"contentType\":\"text/x-eigen; charset=utf-8\"}\n");
}

} // namespace corvanta
