#pragma once

#include <string>

namespace corvanta {

/// What is searched for.
struct FindRequest {
    /// UTF-8; nothing is found for an empty one.
    std::string text;
    bool matchesCase = false;
    bool isRegularExpression = false;

    friend bool operator==(const FindRequest&, const FindRequest&) = default;
};

} // namespace corvanta
