#pragma once

#include "Settings/HttpFetch.hpp"

#include <filesystem>

namespace corvanta {

/// Fetches with the desktop's HTTP library in a thread of its own. Follows a few redirects, but never one
/// from HTTPS to HTTP: such an answer is given back as it is.
class SoupHttpFetch final : public HttpFetch {
public:
    /// Trusts the certificates in `trustedCertificates` (PEM) instead of the system's, unless it is empty.
    explicit SoupHttpFetch(std::filesystem::path trustedCertificates = {})
        : trustedCertificates_(std::move(trustedCertificates)) {}

    std::unique_ptr<Handle> get(const Request& request, std::function<void(const Answer&)> whenDone) override;

private:
    std::filesystem::path trustedCertificates_;
};

} // namespace corvanta
