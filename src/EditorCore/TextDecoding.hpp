#pragma once

#include <string>

namespace corvanta {

/// Turns the bytes of a file into text, whatever their encoding.
struct TextDecoding {
    TextDecoding() = delete;

    /// The text (valid UTF-8) that `bytes` hold. Never fails: a byte-order mark decides first, then UTF-8,
    /// Windows code page 1252, ISO 8859-1 and Mac OS Roman are tried strictly in this order, and what none of
    /// them takes is UTF-8 with U+FFFD for every ill-formed sequence.
    static std::string string(std::string bytes);
};

} // namespace corvanta
