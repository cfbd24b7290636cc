#include "Tools/Commands.hpp"
#include "Tools/Input.hpp"

namespace corvanta {

int runDecode(const Arguments& arguments, Output& output) {
    output.write(readText(arguments.operand(0)));
    return 0;
}

} // namespace corvanta
