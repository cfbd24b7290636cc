#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvanta {

/// The head of an HTTP reply to the web view.
struct SchemeResponse {
    static constexpr std::string_view httpVersion = "HTTP/1.1";

    /// The URL that was asked for.
    std::string url;
    int status = 0;

    /// Names with their values, in the order in which they are sent.
    std::vector<std::pair<std::string, std::string>> headerFields;
};

} // namespace corvanta
