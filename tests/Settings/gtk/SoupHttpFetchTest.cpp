#include "Settings/gtk/SoupHttpFetch.hpp"

#include "Support/TemporaryFolder.hpp"
#include "Support/gtk/LocalWebServer.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <thread>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using Answer = HttpFetch::Answer;
using Client = LocalWebServer::Client;
using Clock = std::chrono::steady_clock;

/// A key and a certificate that it signed itself for the loopback interface.
class SelfSignedCertificate {
public:
    explicit SelfSignedCertificate(const std::string& subject = "IP:127.0.0.1") {
        const std::string command =
            "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj /CN=test "
            "-addext subjectAltName=" +
            subject + " -keyout '" + (folder_ / "key").string() + "' -out '" +
            (folder_ / "certificate").string() + "' 2>/dev/null && cat '" + (folder_ / "key").string() +
            "' '" + (folder_ / "certificate").string() + "' > '" + both().string() + "'";
        if (std::system(command.c_str()) != 0)
            throw std::runtime_error("openssl made no certificate");
    }

    std::filesystem::path both() const { return folder_ / "both.pem"; }

private:
    TemporaryFolder folder_;
};

class SoupHttpFetchTest : public testing::Test {
protected:
    Answer get(const std::string& url, std::chrono::milliseconds deadline = 20s,
               std::size_t largestBody = 1000, const std::filesystem::path& trusted = {}) {
        SoupHttpFetch fetch(trusted);
        std::optional<Answer> answer;
        const auto handle = fetch.get({url, largestBody, deadline}, [&](const Answer& got) {
            EXPECT_FALSE(answer) << "answered twice";
            answer = got;
        });
        EXPECT_FALSE(answer) << "answered within the call";
        EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }, 30s));
        return answer.value_or(HttpFetch::Error{"no answer at all"});
    }

    static std::string bodyOf(const Answer& answer) {
        const auto* response = std::get_if<HttpFetch::Response>(&answer);
        return response == nullptr ? "error: " + errorOf(answer) : response->body;
    }

    static int statusOf(const Answer& answer) {
        const auto* response = std::get_if<HttpFetch::Response>(&answer);
        return response == nullptr ? 0 : response->status;
    }

    static std::string errorOf(const Answer& answer) {
        const auto* error = std::get_if<HttpFetch::Error>(&answer);
        return error == nullptr ? "" : error->description;
    }

    static LocalWebServer::Reply always(const std::string& bytes) {
        return [bytes](Client& client) { client.send(bytes); };
    }
};

TEST_F(SoupHttpFetchTest, GivesBackTheBody) {
    const LocalWebServer server(always(okAnswer(R"({"version": "1.2"})")));
    const Answer answer = get(server.url());
    EXPECT_EQ(statusOf(answer), 200);
    EXPECT_EQ(bodyOf(answer), R"({"version": "1.2"})");
}

TEST_F(SoupHttpFetchTest, SendsNothingAboutTheUserAndAsksPastEveryCache) {
    const LocalWebServer server(
        always("HTTP/1.1 200 OK\r\nSet-Cookie: id=1\r\nCache-Control: max-age=1000\r\nETag: \"1\"\r\n"
               "Content-Length: 2\r\n\r\n{}"));
    get(server.url());
    get(server.url());
    ASSERT_THAT(server.requests(), SizeIs(2)) << "the second one must not come from a cache";
    for (const std::string& request : server.requests()) {
        EXPECT_THAT(request, HasSubstr("GET /apps/corvanta/version.json HTTP/1.1\r\n"));
        EXPECT_THAT(request, HasSubstr("Cache-Control: no-cache\r\n"));
        for (const char* header : {"Cookie:", "User-Agent:", "Referer:", "Authorization:", "Accept-Language:",
                                   "If-None-Match:", "If-Modified-Since:"})
            EXPECT_THAT(request, Not(HasSubstr(header)));
    }
}

TEST_F(SoupHttpFetchTest, ReadsABodyInPiecesAndWithoutALength) {
    const LocalWebServer chunked([](Client& client) {
        client.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
        for (const char* piece : {"2\r\n{\"\r\n", "3\r\na\":\r\n", "2\r\n1}\r\n", "0\r\n\r\n"})
            client.send(piece);
    });
    EXPECT_EQ(bodyOf(get(chunked.url())), R"({"a":1})");
    const LocalWebServer untilTheEnd(always("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n{}"));
    EXPECT_EQ(bodyOf(get(untilTheEnd.url())), "{}");
    const LocalWebServer empty(always(okAnswer("")));
    EXPECT_EQ(bodyOf(get(empty.url())), "");
}

TEST_F(SoupHttpFetchTest, TakesABodyUpToTheLimitAndNoneBeyond) {
    const LocalWebServer full(always(okAnswer(std::string(1000, 'x'))));
    EXPECT_EQ(bodyOf(get(full.url())), std::string(1000, 'x'));
    const LocalWebServer larger(always(okAnswer(std::string(1001, 'x'))));
    EXPECT_EQ(errorOf(get(larger.url())), "the answer is larger than 1000 bytes");
}

TEST_F(SoupHttpFetchTest, GivesUpOnAHugeBodyAtTheLimit) {
    const LocalWebServer server([](Client& client) {
        client.send("HTTP/1.1 200 OK\r\nContent-Length: 1000000000000\r\n\r\n");
        const std::string piece(100'000, 'x');
        while (client.send(piece)) {
        }
    });
    EXPECT_EQ(errorOf(get(server.url())), "the answer is larger than 1000 bytes");
}

TEST_F(SoupHttpFetchTest, FollowsARedirectOnTheSameHost) {
    for (const char* status : {"301 Moved", "302 Found", "303 See Other", "307 Temporary", "308 Permanent"}) {
        const LocalWebServer server([status](Client& client) {
            const bool isMoved = client.request.starts_with("GET /neu/ort.json ");
            client.send(isMoved ? okAnswer("{}") : redirectAnswer(status, "../../neu/ort.json"));
        });
        EXPECT_EQ(bodyOf(get(server.url())), "{}") << status;
        EXPECT_THAT(server.requests(), SizeIs(2));
    }
}

TEST_F(SoupHttpFetchTest, GivesUpOnACircleOfRedirects) {
    const LocalWebServer server(always(redirectAnswer("302 Found", "/apps/corvanta/version.json")));
    EXPECT_EQ(statusOf(get(server.url())), 302);
    EXPECT_THAT(server.requests(), SizeIs(11));
}

TEST_F(SoupHttpFetchTest, DoesNotFollowARedirectOutOfTheWeb) {
    const TemporaryFolder folder;
    folder.write("geheim.json", "{}");
    for (const std::string& location :
         {"file://" + (folder / "geheim.json").string(), std::string("data:application/json,{}"),
          std::string("ftp://127.0.0.1/"), std::string("http://[kaputt"), std::string("http://"),
          std::string("http:///x"), std::string()}) {
        const LocalWebServer server(always(redirectAnswer("302 Found", location)));
        const Answer answer = get(server.url(), 2s);
        EXPECT_EQ(bodyOf(answer).find("{}"), std::string::npos) << location;
    }
}

TEST_F(SoupHttpFetchTest, GivesBackEveryOtherStatusWithoutItsBody) {
    for (const int status : {201, 204, 300, 304, 401, 403, 404, 407, 410, 500, 503}) {
        const LocalWebServer server(
            always("HTTP/1.1 " + std::to_string(status) +
                   " Text\r\nWWW-Authenticate: Basic realm=\"x\"\r\nConnection: close\r\n\r\n"));
        EXPECT_EQ(statusOf(get(server.url())), status);
    }
}

TEST_F(SoupHttpFetchTest, DoesNotWaitForTheBodyOfAnAnswerThatSaysNo) {
    const LocalWebServer server([](Client& client) {
        client.send("HTTP/1.1 404 Not Found\r\nContent-Length: 100000\r\n\r\n");
        client.waitForEnd();
    });
    EXPECT_EQ(statusOf(get(server.url())), 404);
}

TEST_F(SoupHttpFetchTest, EndsAtTheDeadlineWhateverTheServerDoes) {
    const std::vector<std::pair<std::string, LocalWebServer::Reply>> servers{
        {"says nothing", [](Client& client) { client.waitForEnd(); }},
        {"stops within the headers",
         [](Client& client) {
             client.send("HTTP/1.1 200 OK\r\nContent-");
             client.waitForEnd();
         }},
        {"stops within the body",
         [](Client& client) {
             client.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{");
             client.waitForEnd();
         }},
        {"sends byte by byte without end",
         [](Client& client) {
             client.send("HTTP/1.1 200 OK\r\n\r\n");
             while (client.send("x"))
                 std::this_thread::sleep_for(10ms);
         }},
        {"sends headers without end",
         [](Client& client) {
             client.send("HTTP/1.1 200 OK\r\n");
             while (client.send("X: y\r\n"))
                 std::this_thread::sleep_for(10ms);
         }},
        {"leads on and on, slowly", [](Client& client) {
             std::this_thread::sleep_for(80ms);
             client.send(redirectAnswer("302 Found", "/"));
         }}};
    for (const auto& [behaviour, reply] : servers) {
        const LocalWebServer server(reply);
        const auto start = Clock::now();
        EXPECT_EQ(errorOf(get(server.url(), 300ms)), "the server took too long") << behaviour;
        EXPECT_GE(Clock::now() - start, 299ms) << behaviour;
        EXPECT_LT(Clock::now() - start, 5s) << behaviour;
    }
}

TEST_F(SoupHttpFetchTest, NeverHoldsTheMainLoopUp) {
    const SelfSignedCertificate certificate;
    const LocalWebServer::Reply silence = [](Client& client) { client.waitForEnd(); };
    const LocalWebServer unsafe(silence);
    const LocalWebServer safe(silence, certificate.both());
    for (const LocalWebServer* server : {&unsafe, &safe}) {
        SoupHttpFetch fetch;
        bool isDone = false;
        auto last = Clock::now();
        Clock::duration longest{};
        const auto lookAtTheClock = [&] {
            longest = std::max(longest, Clock::now() - last);
            last = Clock::now();
        };
        const auto handle = fetch.get({server->url(), 1000, 300ms}, [&](const Answer&) { isDone = true; });
        // The condition is asked every few milliseconds as long as the loop turns.
        EXPECT_TRUE(waitUntil([&] {
            lookAtTheClock();
            return isDone;
        }));
        EXPECT_LT(longest, 150ms) << server->url();
    }
}

TEST_F(SoupHttpFetchTest, FailsWithoutAServer) {
    std::string url;
    {
        const LocalWebServer server(always(""));
        url = server.url();
    }
    EXPECT_THAT(errorOf(get(url)), Not(IsEmpty()));
}

TEST_F(SoupHttpFetchTest, FailsWithoutSuchAHost) {
    EXPECT_THAT(errorOf(get("https://host.invalid/apps/corvanta/version.json")), Not(IsEmpty()));
}

TEST_F(SoupHttpFetchTest, FailsWithWhatIsNoAddress) {
    for (const char* url : {"", "kein Ort", "file:///etc/hostname", "data:,{}", "https://"})
        EXPECT_THAT(errorOf(get(url)), Not(IsEmpty())) << url;
}

TEST_F(SoupHttpFetchTest, FailsWhenTheServerTalksNonsense) {
    for (const char* bytes :
         {"", "\r\n\r\n", "SSH-2.0-x\r\n", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{"}) {
        const LocalWebServer server(always(bytes));
        EXPECT_NE(bodyOf(get(server.url(), 2s)), "{}") << bytes;
    }
}

TEST_F(SoupHttpFetchTest, FetchesOverHttpsFromAServerThatItTrusts) {
    const SelfSignedCertificate certificate;
    const LocalWebServer server(always(okAnswer("{}")), certificate.both());
    EXPECT_EQ(bodyOf(get(server.url(), 20s, 1000, certificate.both())), "{}");
}

TEST_F(SoupHttpFetchTest, FailsWithACertificateThatItDoesNotTrust) {
    const SelfSignedCertificate certificate;
    const LocalWebServer server(always(okAnswer("{}")), certificate.both());
    EXPECT_THAT(errorOf(get(server.url())), Not(IsEmpty()));
    EXPECT_THAT(server.requests(), IsEmpty()) << "nothing was asked over a connection that is not safe";
}

TEST_F(SoupHttpFetchTest, FailsWithTheCertificateOfAnotherHost) {
    const SelfSignedCertificate certificate("DNS:anderswo.example");
    const LocalWebServer server(always(okAnswer("{}")), certificate.both());
    EXPECT_THAT(errorOf(get(server.url(), 20s, 1000, certificate.both())), Not(IsEmpty()));
}

TEST_F(SoupHttpFetchTest, FailsWhenAServerForHttpsSpeaksHttp) {
    const LocalWebServer server(always(okAnswer("{}")));
    EXPECT_THAT(errorOf(get("https" + server.url().substr(4), 300ms)), Not(IsEmpty()));
}

TEST_F(SoupHttpFetchTest, NeverGoesFromHttpsToHttp) {
    const SelfSignedCertificate certificate;
    const LocalWebServer unsafe(always(okAnswer("{}")));
    const LocalWebServer safe(always(redirectAnswer("302 Found", unsafe.url())), certificate.both());
    EXPECT_EQ(statusOf(get(safe.url(), 20s, 1000, certificate.both())), 302);
    EXPECT_THAT(unsafe.requests(), IsEmpty());
}

TEST_F(SoupHttpFetchTest, GoesFromHttpToHttps) {
    const SelfSignedCertificate certificate;
    const LocalWebServer safe(always(okAnswer("{}")), certificate.both());
    const LocalWebServer unsafe(always(redirectAnswer("301 Moved", safe.url())));
    EXPECT_EQ(bodyOf(get(unsafe.url(), 20s, 1000, certificate.both())), "{}");
}

TEST_F(SoupHttpFetchTest, GivesNoAnswerOnceItsHandleIsGone) {
    const LocalWebServer server([](Client& client) { client.waitForEnd(); });
    SoupHttpFetch fetch;
    bool isAnswered = false;
    auto handle = fetch.get({server.url(), 1000, 200ms}, [&](const Answer&) { isAnswered = true; });
    ASSERT_TRUE(waitUntil([&] { return !server.requests().empty(); }));
    handle.reset();
    letPass(300ms);
    EXPECT_FALSE(isAnswered);
}

TEST_F(SoupHttpFetchTest, MayLoseItsHandleWhileItAnswers) {
    const LocalWebServer server(always(okAnswer("{}")));
    SoupHttpFetch fetch;
    bool isAnswered = false;
    std::unique_ptr<HttpFetch::Handle> handle;
    handle = fetch.get({server.url(), 1000, 20s}, [&](const Answer&) {
        handle.reset();
        isAnswered = true;
    });
    EXPECT_TRUE(waitUntil([&] { return isAnswered; }));
}

} // namespace
} // namespace corvanta
