#include "Preview/PreviewSchemeHandler.hpp"

#include "Preview/PreviewMIMEType.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <system_error>

namespace corvanta {

namespace {

enum class Status { ok = 200, notFound = 404 };

/// A file up to this size, in bytes, is read at once; the window waits for it. A larger one is read while the
/// web view takes it.
constexpr std::uintmax_t readAtOnce = std::uintmax_t{1024} * 1024;

std::uint64_t sizeOf(const std::string& body) {
    return body.size();
}

std::uint64_t sizeOf(const FileBody& body) {
    return body.size;
}

template <typename Body>
void answer(SchemeTask& task, const std::string& url, Status status, std::string_view contentType,
            Body body) {
    // Not stored, so that an edited style sheet shows at the next reload; open to every origin, so that
    // scripts may fetch the site's files and fonts load.
    task.didReceive(SchemeResponse{url,
                                   static_cast<int>(status),
                                   {{"Content-Type", std::string(contentType)},
                                    {"Content-Length", std::to_string(sizeOf(body))},
                                    {"Cache-Control", "no-store"},
                                    {"Access-Control-Allow-Origin", "*"}}});
    task.didReceive(std::move(body));
    task.didFinish();
}

void answerNotFound(SchemeTask& task, const std::string& url) {
    answer(task, url, Status::notFound, "text/plain", std::string());
}

bool isText(std::string_view mimeType) {
    constexpr std::array<std::string_view, 4> textual{"application/json", "application/xml", "image/svg+xml",
                                                      "application/xhtml+xml"};
    return mimeType.starts_with("text/") || std::ranges::find(textual, mimeType) != textual.end();
}

} // namespace

PreviewSchemeHandler::PreviewSchemeHandler(const FileManager& fileManager, const TypeRegistry& registry,
                                           Log& log, std::optional<PreviewSite> site, HTMLSource currentHTML,
                                           MissingResourceReport onMissingResource)
    : fileManager_(fileManager),
      registry_(registry),
      log_(log),
      site_(std::move(site)),
      currentHTML_(std::move(currentHTML)),
      onMissingResource_(std::move(onMissingResource)) {}

void PreviewSchemeHandler::start(SchemeTask& task) {
    const std::optional<std::string> url = task.url();
    if (!url) {
        task.didFailWithBadURL();
        return;
    }
    if (!site_) {
        answerNotFound(task, *url);
        return;
    }
    if (site_->isDocument(*url)) {
        answer(task, *url, Status::ok, documentContentType, currentHTML_());
        return;
    }
    const std::optional<std::filesystem::path> file = site_->fileURL(*url);
    if (!file || !deliver(*file, task, *url)) {
        reportMissing(*url);
        answerNotFound(task, *url);
    }
}

bool PreviewSchemeHandler::deliver(const std::filesystem::path& file, SchemeTask& task,
                                   const std::string& url) const {
    if (fileManager_.fileSize(file).value_or(0) > readAtOnce) {
        std::optional<FileBody> body = FileBody::open(file);
        if (!body)
            return false;
        answer(task, url, Status::ok, contentType(file, registry_), *std::move(body));
        return true;
    }
    std::error_code error;
    std::optional<std::string> body = fileManager_.contents(file, error);
    if (!body)
        return false;
    answer(task, url, Status::ok, contentType(file, registry_), *std::move(body));
    return true;
}

std::string PreviewSchemeHandler::contentType(const std::filesystem::path& file,
                                              const TypeRegistry& registry) {
    std::string mimeType = PreviewMIMEType::forFile(file, registry);
    if (isText(mimeType))
        mimeType += "; charset=utf-8";
    return mimeType;
}

void PreviewSchemeHandler::reportMissing(const std::string& url) {
    const std::string path = PreviewSite::requestedPath(url);
    log_.info("preview", "preview resource not delivered: {}", path);
    if (missingResources_.insert(path).second)
        onMissingResource_(path);
}

} // namespace corvanta
