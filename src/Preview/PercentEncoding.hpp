#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

/// Percent-encoding of URL paths (RFC 3986).
struct PercentEncoding {
    PercentEncoding() = delete;

    /// `path` with every byte escaped that may not stand in the path of a URL. Slashes stay.
    static std::string encodingPath(std::string_view path);

    /// `text` with every byte escaped but ASCII letters and digits, to be part of a query.
    static std::string encodingAllButLettersAndDigits(std::string_view text);

    /// `text` with each escape replaced by the byte that it names, whatever the bytes mean. Nothing when an
    /// escape is incomplete.
    static std::optional<std::string> bytes(std::string_view text);

    /// The same for text; also nothing when the result is not valid UTF-8.
    static std::optional<std::string> removing(std::string_view text);
};

} // namespace corvanta
