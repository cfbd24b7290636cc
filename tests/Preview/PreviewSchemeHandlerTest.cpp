#include "Preview/PreviewSchemeHandler.hpp"

#include "KnownTypes.hpp"
#include "Platform/PosixFileManager.hpp"
#include "RecordedSchemeTask.hpp"
#include "Support/InMemoryFileManager.hpp"
#include "Support/RecordedLog.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace corvanta {

namespace {

using Answer = RecordedSchemeTask::Answer;
using Events = std::vector<std::string>;
using Fields = std::vector<std::pair<std::string, std::string>>;

class PreviewSchemeHandlerTest : public testing::Test {
protected:
    Answer request(const std::string& path) {
        RecordedSchemeTask task("vmpreview://dokument" + path);
        handler.start(task);
        return task.answer;
    }

    static void expectNotFound(const Answer& answer) {
        EXPECT_EQ(answer.events, (Events{"response", "body", "finish"}));
        EXPECT_EQ(answer.response.status, 404);
        EXPECT_EQ(answer.response.headerFields, (Fields{{"Content-Type", "text/plain"},
                                                        {"Content-Length", "0"},
                                                        {"Cache-Control", "no-store"},
                                                        {"Access-Control-Allow-Origin", "*"}}));
        EXPECT_EQ(answer.body, "");
    }

    InMemoryFileManager files;
    KnownTypes types;
    RecordedLog log;
    std::string text = "<p>Grüße</p>";
    std::vector<std::string> reported;
    PreviewSchemeHandler handler{files,
                                 types,
                                 log,
                                 PreviewSite{"/web", "blog/index.html"},
                                 [this] { return text; },
                                 [this](const std::string& path) { reported.push_back(path); }};
};

} // namespace

TEST_F(PreviewSchemeHandlerTest, AnswersTheDocumentFromMemoryAndNotFromTheDisk) {
    files.files["/web/blog/index.html"] = "what was saved";
    const Answer answer = request("/blog/index.html");
    EXPECT_EQ(answer.events, (Events{"response", "body", "finish"}));
    EXPECT_EQ(answer.response.url, "vmpreview://dokument/blog/index.html");
    EXPECT_EQ(answer.response.status, 200);
    EXPECT_EQ(SchemeResponse::httpVersion, "HTTP/1.1");
    EXPECT_EQ(answer.response.headerFields, (Fields{{"Content-Type", "text/html; charset=utf-8"},
                                                    {"Content-Length", "14"},
                                                    {"Cache-Control", "no-store"},
                                                    {"Access-Control-Allow-Origin", "*"}}));
    EXPECT_EQ(answer.body, "<p>Grüße</p>");
}

TEST_F(PreviewSchemeHandlerTest, AnswersWithTheTextOfTheInstant) {
    request("/blog/index.html");
    text = "newer";
    EXPECT_EQ(request("/blog/index.html").body, "newer");
    handler.setCurrentHTML([] { return "from elsewhere"; });
    EXPECT_EQ(request("/blog/index.html").body, "from elsewhere");
    text.clear();
    handler.setCurrentHTML([this] { return text; });
    EXPECT_EQ(request("/blog/index.html").response.headerFields[1].second, "0");
}

TEST_F(PreviewSchemeHandlerTest, AnswersOtherPathsWithTheFileUnderTheRoot) {
    files.files["/web/css/style.css"] = "a { }";
    const Answer answer = request("/css/style.css?v=3");
    EXPECT_EQ(answer.events, (Events{"response", "body", "finish"}));
    EXPECT_EQ(answer.response.status, 200);
    EXPECT_EQ(answer.response.url, "vmpreview://dokument/css/style.css?v=3");
    EXPECT_EQ(answer.response.headerFields, (Fields{{"Content-Type", "text/css; charset=utf-8"},
                                                    {"Content-Length", "5"},
                                                    {"Cache-Control", "no-store"},
                                                    {"Access-Control-Allow-Origin", "*"}}));
    EXPECT_EQ(answer.body, "a { }");
    EXPECT_TRUE(log.lines.empty());
    EXPECT_TRUE(reported.empty());
}

TEST_F(PreviewSchemeHandlerTest, HandsBytesOverUnchangedAndReadsTheFileAnew) {
    const std::string bytes("\xFF\xD8\0\r\n", 5);
    files.files["/web/kopf.jpg"] = bytes;
    EXPECT_EQ(request("/kopf.jpg").body, bytes);
    files.files["/web/kopf.jpg"] = "replaced";
    EXPECT_EQ(request("/kopf.jpg").body, "replaced");
}

TEST_F(PreviewSchemeHandlerTest, AnswersAnEmptyFileWithAnEmptyBody) {
    files.files["/web/leer.css"] = "";
    const Answer answer = request("/leer.css");
    EXPECT_EQ(answer.events, (Events{"response", "body", "finish"}));
    EXPECT_EQ(answer.response.status, 200);
    EXPECT_TRUE(reported.empty());
}

TEST_F(PreviewSchemeHandlerTest, DeclaresTextUtf8AndNothingElse) {
    types.types["csv"] = "text/csv";
    types.types["flac"] = "audio/flac";
    const auto contentType = [this](const char* file) {
        return PreviewSchemeHandler::contentType(file, types);
    };
    EXPECT_EQ(contentType("/web/style.css"), "text/css; charset=utf-8");
    EXPECT_EQ(contentType("/web/a.js"), "text/javascript; charset=utf-8");
    EXPECT_EQ(contentType("/web/a.php"), "text/html; charset=utf-8");
    EXPECT_EQ(contentType("/web/a.json"), "application/json; charset=utf-8");
    EXPECT_EQ(contentType("/web/a.xml"), "application/xml; charset=utf-8");
    EXPECT_EQ(contentType("/web/a.svg"), "image/svg+xml; charset=utf-8");
    EXPECT_EQ(contentType("/web/a.xhtml"), "application/xhtml+xml; charset=utf-8");
    EXPECT_EQ(contentType("/web/a.csv"), "text/csv; charset=utf-8");
    EXPECT_EQ(contentType("/web/kopf.jpg"), "image/jpeg");
    EXPECT_EQ(contentType("/web/a.flac"), "audio/flac");
    EXPECT_EQ(contentType("/web/a.pdf"), "application/pdf");
    EXPECT_EQ(contentType("/web/LIESMICH"), "application/octet-stream");
}

TEST_F(PreviewSchemeHandlerTest, LogsEveryMissingRequestAndReportsThePathOnce) {
    for (int attempt = 0; attempt < 3; ++attempt)
        expectNotFound(request("/fehlt%20hier.png?" + std::to_string(attempt)));
    EXPECT_EQ(log.lines, Events(3, "preview: preview resource not delivered: fehlt hier.png"));
    EXPECT_EQ(reported, Events{"fehlt hier.png"});

    expectNotFound(request("/auch.png"));
    EXPECT_EQ(reported, (Events{"fehlt hier.png", "auch.png"}));
    EXPECT_EQ(handler.missingResources(), (std::set<std::string>{"auch.png", "fehlt hier.png"}));
}

TEST_F(PreviewSchemeHandlerTest, KeepsAPathReportedWhenTheSiteChanges) {
    request("/fehlt.png");
    handler.setSite(PreviewSite{"/other", "index.html"});
    request("/fehlt.png");
    EXPECT_EQ(reported, Events{"fehlt.png"});
}

TEST_F(PreviewSchemeHandlerTest, ReportsBeforeItAnswers) {
    RecordedSchemeTask task("vmpreview://dokument/fehlt.png");
    Events eventsAtReport{"not reported"};
    PreviewSchemeHandler reporting(
        files, types, log, PreviewSite{"/web", "index.html"}, [] { return ""; },
        [&](const std::string&) { eventsAtReport = task.answer.events; });
    reporting.start(task);
    EXPECT_TRUE(eventsAtReport.empty());
    expectNotFound(task.answer);
}

TEST_F(PreviewSchemeHandlerTest, TreatsAFileThatCannotBeReadAsMissing) {
    files.failures["/web/geheim.css"] = std::errc::permission_denied;
    files.failures["/web/bilder"] = std::errc::not_supported;
    expectNotFound(request("/geheim.css"));
    expectNotFound(request("/bilder"));
    EXPECT_EQ(reported, (Events{"geheim.css", "bilder"}));
}

TEST_F(PreviewSchemeHandlerTest, RefusesToLeaveTheRootAndReportsTheRequestedPath) {
    files.files["/geheim.txt"] = "secret";
    expectNotFound(request("/../geheim.txt"));
    expectNotFound(request("/%2e%2e%2fgeheim.txt"));
    EXPECT_EQ(reported, Events{"../geheim.txt"});
}

TEST_F(PreviewSchemeHandlerTest, ReportsTheBareBaseUnderAnEmptyPath) {
    expectNotFound(request("/"));
    EXPECT_EQ(reported, Events{""});
    EXPECT_EQ(log.lines, Events{"preview: preview resource not delivered: "});
}

TEST_F(PreviewSchemeHandlerTest, NeverCutsANameAtANul) {
    files.files["/web/geheim.txt"] = "secret";
    expectNotFound(request("/geheim.txt%00.png"));
}

TEST_F(PreviewSchemeHandlerTest, AnswersNothingWithoutASiteAndStaysSilent) {
    files.files["/web/style.css"] = "a { }";
    handler.setSite(std::nullopt);
    EXPECT_EQ(handler.site(), std::nullopt);
    for (const char* path : {"/blog/index.html", "/style.css", "/fehlt.png", "/"})
        expectNotFound(request(path));
    EXPECT_TRUE(log.lines.empty());
    EXPECT_TRUE(reported.empty());
    EXPECT_TRUE(handler.missingResources().empty());
}

TEST_F(PreviewSchemeHandlerTest, FailsARequestWithoutAURL) {
    RecordedSchemeTask task(std::nullopt);
    handler.start(task);
    EXPECT_EQ(task.answer.events, Events{"bad URL"});
    EXPECT_TRUE(log.lines.empty());
    EXPECT_TRUE(reported.empty());
}

TEST_F(PreviewSchemeHandlerTest, HasNothingToDoWhenARequestIsGivenUp) {
    RecordedSchemeTask task("vmpreview://dokument/blog/index.html");
    PreviewSchemeHandler::stop(task);
    EXPECT_TRUE(task.answer.events.empty());
}

TEST_F(PreviewSchemeHandlerTest, HandsALargeFileOverWithoutReadingIt) {
    const TemporaryFolder folder;
    folder.write("gross.bin", std::string(3'000'000, 'x'));
    const PosixFileManager realFiles;
    PreviewSchemeHandler real(
        realFiles, types, log, PreviewSite{folder.path(), "index.html"}, [] { return std::string(); },
        [](const std::string&) {});
    RecordedSchemeTask task("vmpreview://dokument/gross.bin");
    real.start(task);
    EXPECT_EQ(task.answer.events, (Events{"response", "file", "finish"}));
    EXPECT_EQ(task.answer.fileSize, 3'000'000U);
    EXPECT_EQ(task.answer.response.status, 200);
    EXPECT_EQ(task.answer.response.headerFields[1],
              (std::pair<std::string, std::string>{"Content-Length", "3000000"}));
}

TEST_F(PreviewSchemeHandlerTest, NeitherReadsNorWaitsForWhatIsNoRegularFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "rohr.css").c_str(), 0600), 0);
    std::filesystem::create_directory(folder / "ordner");
    std::filesystem::create_symlink("/dev/zero", folder / "endlos.bin");
    const PosixFileManager realFiles;
    PreviewSchemeHandler real(
        realFiles, types, log, PreviewSite{folder.path(), "index.html"}, [] { return std::string(); },
        [](const std::string&) {});
    for (const char* name : {"rohr.css", "ordner", "endlos.bin"}) {
        RecordedSchemeTask task(std::string("vmpreview://dokument/") + name);
        real.start(task);
        expectNotFound(task.answer);
    }
}

} // namespace corvanta
