#include "Settings/UpdateCheck.hpp"

#include "Settings/UpdateFeed.hpp"
#include "Settings/VersionNumber.hpp"

#include <fmt/format.h>

namespace corvanta {

namespace {

constexpr const char* logCategory = "update";
constexpr std::string_view builtVersion = CORVANTA_VERSION;
constexpr std::size_t largestFeed = 65'536;
constexpr std::chrono::seconds deadline{10};
constexpr int statusOK = 200;

} // namespace

std::string_view UpdateCheck::siteName() {
    return CORVANTA_WEBSITE;
}

std::string UpdateCheck::feedURL() {
    return downloadPageURL() + "version.json";
}

std::string UpdateCheck::downloadPageURL() {
    return fmt::format("https://{}/apps/corvanta/", siteName());
}

std::string UpdateCheck::currentVersion() {
    return std::string(builtVersion.empty() ? "0" : builtVersion);
}

void UpdateCheck::check() {
    if (*isChecking)
        return;
    isChecking = true;
    result = std::nullopt;
    running_ = fetch_.get({feedURL(), largestFeed, deadline},
                          [this](const HttpFetch::Answer& answer) { finish(answer); });
}

void UpdateCheck::finish(const HttpFetch::Answer& answer) {
    result = evaluate(answer);
    isChecking = false;
}

UpdateCheck::Result UpdateCheck::evaluate(const HttpFetch::Answer& answer) {
    if (const auto* error = std::get_if<HttpFetch::Error>(&answer)) {
        log_.error(logCategory, "update check failed: {}", error->description);
        return Failed{};
    }
    const auto& response = std::get<HttpFetch::Response>(answer);
    if (response.status != statusOK) {
        log_.error(logCategory, "update check: unexpected response");
        return Failed{};
    }
    const auto feed = UpdateFeed::decode(response.body);
    if (!feed) {
        log_.error(logCategory, "update check failed: {}", "the feed names no version");
        return Failed{};
    }
    return compare(feed->version);
}

UpdateCheck::Result UpdateCheck::compare(const std::string& remoteVersion) {
    log_.info(logCategory, "update check: local {}, remote {}", runningVersion_, remoteVersion);
    if (VersionNumber::isNewer(remoteVersion, runningVersion_))
        return UpdateAvailable{remoteVersion};
    return UpToDate{};
}

} // namespace corvanta
