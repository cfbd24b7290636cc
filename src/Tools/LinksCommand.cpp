#include "Preview/PreviewResourceHints.hpp"
#include "Tools/Commands.hpp"
#include "Tools/Input.hpp"

namespace corvanta {

int runLinks(const Arguments& arguments, Output& output) {
    const bool answer = PreviewResourceHints::referencesLocalFiles(readText(arguments.operand(0)));
    output.write(answer ? "true\n" : "false\n");
    return 0;
}

} // namespace corvanta
