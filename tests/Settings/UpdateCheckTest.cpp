#include "Settings/UpdateCheck.hpp"

#include "ScriptedHttpFetch.hpp"
#include "Support/RecordedLog.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvanta {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Result = UpdateCheck::Result;

class UpdateCheckTest : public testing::Test {
protected:
    /// What a check says when version `local` runs and the server sends `body`.
    std::optional<Result> resultOf(const std::string& body, const std::string& local = "1.2",
                                   int status = 200) {
        UpdateCheck update(fetch, log, local);
        update.check();
        fetch.answer(HttpFetch::Response{status, body});
        EXPECT_FALSE(*update.isChecking);
        return *update.result;
    }

    static Result available(const std::string& version) { return UpdateCheck::UpdateAvailable{version}; }

    ScriptedHttpFetch fetch;
    RecordedLog log;
    const Result upToDate = UpdateCheck::UpToDate{};
    const Result failed = UpdateCheck::Failed{};
};

TEST_F(UpdateCheckTest, HasNoResultBeforeTheFirstCheck) {
    const UpdateCheck update(fetch, log);
    EXPECT_FALSE(*update.isChecking);
    EXPECT_EQ(*update.result, std::nullopt);
    EXPECT_THAT(fetch.requests, IsEmpty());
}

TEST_F(UpdateCheckTest, AsksForASmallFileOverHttpsWithinTenSeconds) {
    UpdateCheck update(fetch, log);
    update.check();
    ASSERT_THAT(fetch.requests, SizeIs(1));
    EXPECT_EQ(fetch.requests[0].url,
              "https://" + std::string(UpdateCheck::siteName()) + "/apps/corvanta/version.json");
    EXPECT_EQ(fetch.requests[0].url, UpdateCheck::feedURL());
    EXPECT_EQ(fetch.requests[0].largestBody, 64U * 1024U);
    EXPECT_EQ(fetch.requests[0].deadline, std::chrono::seconds(10));
}

TEST_F(UpdateCheckTest, OffersTheFolderOfTheFeedForDownloads) {
    EXPECT_EQ(UpdateCheck::downloadPageURL() + "version.json", UpdateCheck::feedURL());
}

TEST_F(UpdateCheckTest, OffersANewerVersion) {
    EXPECT_EQ(resultOf(R"({"version": "1.2.1"})", "1.2"), available("1.2.1"));
    EXPECT_EQ(resultOf(R"({"version": "1.10"})", "1.9"), available("1.10"));
    EXPECT_EQ(resultOf(R"({"version": "2.0-beta"})", "1.9"), available("2.0-beta"));
    EXPECT_THAT(log.lines, ElementsAre("update: update check: local 1.2, remote 1.2.1",
                                       "update: update check: local 1.9, remote 1.10",
                                       "update: update check: local 1.9, remote 2.0-beta"));
}

TEST_F(UpdateCheckTest, OffersNeitherTheSameNorAnOlderVersion) {
    EXPECT_EQ(resultOf(R"({"version": "1.2"})", "1.2.0"), upToDate);
    EXPECT_EQ(resultOf(R"({"version": "1.1.9"})", "1.2"), upToDate);
    EXPECT_EQ(resultOf(R"({"version": ""})"), upToDate);
    EXPECT_EQ(resultOf(R"({"version": "unbekannt"})"), upToDate);
}

TEST_F(UpdateCheckTest, IgnoresWhatElseTheFeedHolds) {
    EXPECT_EQ(resultOf(R"({"notes": ["a", {"version": 7}], "version": "2", "size": 1.5})"), available("2"));
}

TEST_F(UpdateCheckTest, ComparesWithZeroWhenTheBuildHasNoVersion) {
    EXPECT_EQ(resultOf(R"({"version": "0.0.1"})", "0"), available("0.0.1"));
    EXPECT_EQ(resultOf(R"({"version": "0"})", "0"), upToDate);
}

TEST_F(UpdateCheckTest, ComparesWithTheVersionOfThisBuildUnlessToldOtherwise) {
    UpdateCheck update(fetch, log);
    update.check();
    fetch.answer(HttpFetch::Response{200, R"({"version": ")" + UpdateCheck::currentVersion() + "\"}"});
    EXPECT_EQ(*update.result, upToDate);
}

TEST_F(UpdateCheckTest, FailsWithAFeedThatCannotBeRead) {
    const std::vector<std::string> bodies{"",
                                          "kein JSON",
                                          "{}",
                                          "[]",
                                          "\"1.3\"",
                                          "null",
                                          R"({"version": "1.3")",
                                          R"({"version": 1.3})",
                                          R"({"version": null})",
                                          R"({"version": ["1.3"]})",
                                          R"({"Version": "1.3"})",
                                          "{\"version\": \"\xff\"}",
                                          std::string(60'000, '[')};
    for (const std::string& body : bodies) {
        log.lines.clear();
        EXPECT_EQ(resultOf(body), failed) << body;
        EXPECT_THAT(log.lines, ElementsAre("update: update check failed: the feed names no version"));
    }
}

TEST_F(UpdateCheckTest, FailsWithEveryStatusButOK) {
    for (const int status : {201, 204, 301, 302, 304, 403, 404, 500, 503}) {
        log.lines.clear();
        EXPECT_EQ(resultOf(R"({"version": "9"})", "1.2", status), failed) << status;
        EXPECT_THAT(log.lines, ElementsAre("update: update check: unexpected response"));
    }
}

TEST_F(UpdateCheckTest, FailsWithoutAnAnswer) {
    UpdateCheck update(fetch, log);
    update.check();
    fetch.answer(HttpFetch::Error{"no route to host"});
    EXPECT_EQ(*update.result, failed);
    EXPECT_FALSE(*update.isChecking);
    EXPECT_THAT(log.lines, ElementsAre("update: update check failed: no route to host"));
}

TEST_F(UpdateCheckTest, StartsOneRequestForTwoQuickClicks) {
    UpdateCheck update(fetch, log);
    update.check();
    update.check();
    EXPECT_THAT(fetch.requests, SizeIs(1));
    EXPECT_TRUE(*update.isChecking);
}

TEST_F(UpdateCheckTest, ForgetsTheLastResultWhileItChecksAgain) {
    UpdateCheck update(fetch, log, "1.2");
    update.check();
    fetch.answer(HttpFetch::Response{404, ""});
    EXPECT_EQ(*update.result, failed);
    update.check();
    EXPECT_EQ(*update.result, std::nullopt);
    fetch.answer(HttpFetch::Response{200, R"({"version": "1.3"})"});
    EXPECT_EQ(*update.result, available("1.3"));
    EXPECT_THAT(fetch.requests, SizeIs(2));
}

TEST_F(UpdateCheckTest, PublishesItsStatesInOrder) {
    UpdateCheck update(fetch, log, "1.2");
    std::vector<std::string> states;
    const auto record = [&] {
        states.push_back(std::string(*update.isChecking ? "checking" : "idle") +
                         (update.result->has_value() ? ", result" : ""));
    };
    const Subscription first = update.isChecking.subscribe([&](bool) { record(); });
    const Subscription second = update.result.subscribe([&](const auto&) { record(); });
    update.check();
    fetch.answer(HttpFetch::Response{200, R"({"version": "1.2"})"});
    EXPECT_THAT(states, ElementsAre("checking", "checking", "checking, result", "idle, result"));
}

TEST_F(UpdateCheckTest, MayBeStartedAgainByAnObserverOfItsEnd) {
    UpdateCheck update(fetch, log, "1.2");
    const Subscription subscription = update.isChecking.subscribe([&](bool isChecking) {
        if (!isChecking && fetch.requests.size() == 1)
            update.check();
    });
    update.check();
    fetch.answer(HttpFetch::Error{"first"});
    EXPECT_TRUE(*update.isChecking);
    fetch.answer(HttpFetch::Response{200, R"({"version": "1.3"})"});
    EXPECT_EQ(*update.result, available("1.3"));
}

TEST_F(UpdateCheckTest, EndsItsRequestWhenItIsDestroyed) {
    {
        UpdateCheck update(fetch, log);
        update.check();
    }
    fetch.answer(HttpFetch::Response{200, "{}"});
    EXPECT_THAT(log.lines, IsEmpty());
}

} // namespace
} // namespace corvanta
