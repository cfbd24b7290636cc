#pragma once

#include "Preview/SchemeTask.hpp"

#include <webkit/webkit.h>

#include <optional>
#include <string>
#include <utility>

namespace corvanta {

/// A request of the web engine. The engine takes an answer in one piece, so response and body are kept until
/// the answer is finished.
class WebKitSchemeTask final : public SchemeTask {
public:
    /// Borrows `request` for the time of the call that brought it.
    explicit WebKitSchemeTask(WebKitURISchemeRequest* request) : request_(request) {}

    std::optional<std::string> url() const override;
    void didReceive(const SchemeResponse& response) override { response_ = response; }
    void didReceive(std::string data) override { body_ = std::move(data); }
    void didReceive(FileBody file) override { file_.emplace(std::move(file)); }
    void didFinish() override;
    void didFailWithBadURL() override;

private:
    WebKitURISchemeRequest* request_;
    SchemeResponse response_;
    std::string body_;
    std::optional<FileBody> file_;
};

} // namespace corvanta
