#include "EditorCore/IndentationEngine.hpp"
#include "Tools/Commands.hpp"
#include "Tools/Input.hpp"

#include <fmt/format.h>

namespace corvanta {

int runIndent(const Arguments& arguments, Output& output) {
    output.write(
        fmt::format("{}\n", IndentationEngine::indentForNewLine(readText(arguments.operand(0))).size()));
    return 0;
}

} // namespace corvanta
