#include "EditorCore/SyntaxTokenizer.hpp"
#include "Tools/Commands.hpp"
#include "Tools/Input.hpp"

#include <fmt/format.h>

#include <array>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

/// By `index(SyntaxToken)`.
constexpr std::array<std::string_view, allCases.size()> tokenNames{"tag",     "attribute", "string",
                                                                   "comment", "keyword",   "number"};

} // namespace

int runTokens(const Arguments& arguments, Output& output) {
    std::string lines;
    SyntaxTokenizer::tokenize(readText(arguments.operand(0)), [&](std::span<const SyntaxSpan> spans) {
        lines.clear();
        for (const SyntaxSpan& span : spans) {
            fmt::format_to(std::back_inserter(lines),
                           R"({{"location":{},"length":{},"token":"{}"}})"
                           "\n",
                           span.range.location, span.range.length, tokenNames[index(span.token)]);
        }
        output.write(lines);
    });
    return 0;
}

} // namespace corvanta
