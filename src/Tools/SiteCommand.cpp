#include "Platform/PosixFileManager.hpp"
#include "Preview/PreviewSchemeHandler.hpp"
#include "Preview/PreviewSite.hpp"
#include "Preview/SharedMimeInfo.hpp"
#include "Tools/Commands.hpp"
#include "Tools/Errors.hpp"
#include "Tools/ExitStatus.hpp"
#include "Tools/Input.hpp"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace corvanta {

namespace {

using JSON = nlohmann::ordered_json;

/// The value of a required option as an absolute path.
std::filesystem::path pathValue(const Arguments& arguments, std::string_view option) {
    std::error_code error;
    std::filesystem::path path = std::filesystem::absolute(arguments.value(option).value_or(""), error);
    if (error)
        throw UsageError(fmt::format("site: --{} names no file", option));
    return path;
}

/// Names on a Linux disk may be no UTF-8; what is not is replaced.
std::string line(const JSON& json) {
    return json.dump(-1, ' ', false, JSON::error_handler_t::replace) + "\n";
}

/// What the preview would do with a request for `url`, as far as that depends on names only.
JSON answer(const PreviewSite& site, const std::string& url, const TypeRegistry& registry) {
    const bool isDocument = site.isDocument(url);
    const std::optional<std::filesystem::path> file = site.fileURL(url);

    JSON answer{{"requestedPath", PreviewSite::requestedPath(url)},
                {"isDocument", isDocument},
                {"file", nullptr},
                {"contentType", nullptr}};
    if (file) {
        answer["file"] = PreviewSite::relativePath(*file, site.root).value_or("");
        answer["contentType"] = isDocument ? std::string(PreviewSchemeHandler::documentContentType)
                                           : PreviewSchemeHandler::contentType(*file, registry);
    }
    return answer;
}

} // namespace

int runSite(const Arguments& arguments, Output& output) {
    const PosixFileManager fileManager;
    const std::optional<PreviewSite> site =
        PreviewSite::make(pathValue(arguments, "document"), pathValue(arguments, "root"), fileManager);
    if (!site) {
        output.write(line({{"site", nullptr}}));
        return ExitStatus::failure;
    }

    const SharedMimeInfo registry(fileManager, SharedMimeInfo::environmentDataFolders());
    InputLines urls;
    while (const std::optional<std::string> url = urls.next()) {
        output.write(line(answer(*site, *url, registry)));
        // The one who asks may wait for this answer before asking on.
        output.flush();
    }
    return 0;
}

} // namespace corvanta
