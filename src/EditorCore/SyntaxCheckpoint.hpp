#pragma once

#include <cstdint>

namespace corvanta {

/// How the next characters of a text are read. Markup is the only context that opens another, and every other
/// one ends by returning to markup: there is never more than one to come back to, and no stack is needed.
enum class SyntaxContext : std::uint8_t { html, script, style, php };

/// A place of a text, in bytes and in UTF-16 code units, from which tokenizing can go on without what comes
/// before.
struct SyntaxCheckpoint {
    std::int64_t byte = 0;
    std::int64_t codeUnit = 0;
    SyntaxContext context = SyntaxContext::html;
};

} // namespace corvanta
