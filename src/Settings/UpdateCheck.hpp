#pragma once

#include "Platform/Log.hpp"
#include "Platform/Published.hpp"
#include "Settings/HttpFetch.hpp"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace corvanta {

/// Asks the maker's web site whether there is a newer version. Used on the main thread only.
class UpdateCheck {
public:
    struct UpToDate {
        friend bool operator==(const UpToDate&, const UpToDate&) = default;
    };
    struct UpdateAvailable {
        /// As the feed writes it.
        std::string version;

        friend bool operator==(const UpdateAvailable&, const UpdateAvailable&) = default;
    };
    /// No network, an unexpected answer, or a feed that cannot be read.
    struct Failed {
        friend bool operator==(const Failed&, const Failed&) = default;
    };
    using Result = std::variant<UpToDate, UpdateAvailable, Failed>;

    /// The host of the maker's web site.
    static std::string_view siteName();
    /// The feed: a JSON object with the newest version under "version".
    static std::string feedURL();
    /// The page that offers the download.
    static std::string downloadPageURL();
    /// The version of this build, or "0" when it has none.
    static std::string currentVersion();

    /// `fetch` and `log` must outlive this object. The feed is compared with `runningVersion`.
    UpdateCheck(HttpFetch& fetch, Log& log, std::string runningVersion = currentVersion())
        : fetch_(fetch), log_(log), runningVersion_(std::move(runningVersion)) {}

    /// Starts a check and returns at once; does nothing while one runs.
    void check();

    Published<bool> isChecking{false};
    /// The outcome of the last check; nothing before the first one and while one runs.
    Published<std::optional<Result>> result;

private:
    void finish(const HttpFetch::Answer& answer);
    Result evaluate(const HttpFetch::Answer& answer);
    Result compare(const std::string& remoteVersion);

    HttpFetch& fetch_;
    Log& log_;
    std::string runningVersion_;
    std::unique_ptr<HttpFetch::Handle> running_;
};

} // namespace corvanta
