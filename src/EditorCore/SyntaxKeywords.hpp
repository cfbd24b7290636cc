#pragma once

#include <array>
#include <string_view>

namespace corvanta {

/// The words that are coloured as keywords in scripts.
inline constexpr std::array<std::string_view, 42> jsKeywords{
    "var",    "let",        "const", "function", "return", "if",       "else",      "for",     "while",
    "do",     "switch",     "case",  "default",  "break",  "continue", "new",       "class",   "extends",
    "import", "export",     "from",  "async",    "await",  "try",      "catch",     "finally", "throw",
    "typeof", "instanceof", "this",  "true",     "false",  "null",     "undefined", "in",      "of",
    "yield",  "static",     "get",   "set",      "delete", "void"};

/// The words that are coloured as keywords in PHP. "not" is none of the language's words; it is coloured
/// beside "and" and "or" all the same.
inline constexpr std::array<std::string_view, 49> phpKeywords{
    "echo",      "print",        "if",       "else",         "elseif",     "foreach",   "for",
    "while",     "do",           "function", "return",       "class",      "public",    "private",
    "protected", "static",       "new",      "extends",      "implements", "namespace", "use",
    "require",   "require_once", "include",  "include_once", "true",       "false",     "null",
    "array",     "isset",        "empty",    "unset",        "die",        "exit",      "switch",
    "case",      "default",      "break",    "continue",     "try",        "catch",     "finally",
    "throw",     "global",       "const",    "as",           "and",        "or",        "not"};

} // namespace corvanta
