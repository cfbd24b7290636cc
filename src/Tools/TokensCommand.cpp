#include "EditorCore/SyntaxTokenizer.hpp"
#include "Tools/Commands.hpp"
#include "Tools/Input.hpp"

#include <fmt/format.h>

#include <array>
#include <iterator>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

/// By `index(SyntaxToken)`.
constexpr std::array<std::string_view, allCases.size()> tokenNames{"tag",     "attribute", "string",
                                                                   "comment", "keyword",   "number"};

} // namespace

int runTokens(const Arguments& arguments, Output& output) {
    std::string line;
    for (const SyntaxSpan& span : SyntaxTokenizer::tokenize(readText(arguments.operand(0)))) {
        line.clear();
        fmt::format_to(std::back_inserter(line),
                       R"({{"location":{},"length":{},"token":"{}"}})"
                       "\n",
                       span.range.location, span.range.length, tokenNames[index(span.token)]);
        output.write(line);
    }
    return 0;
}

} // namespace corvanta
