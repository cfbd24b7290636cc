#pragma once

#include <cstdint>
#include <string>

namespace corvanta {

/// One place of a text at which bytes made way for others.
struct TextEdit {
    /// Where, in bytes from the start of the text.
    std::int64_t byte = 0;

    /// UTF-8.
    std::string removed;
    std::string inserted;

    friend bool operator==(const TextEdit&, const TextEdit&) = default;
};

} // namespace corvanta
