#include "Settings/VersionNumber.hpp"
#include "Tools/Commands.hpp"

namespace corvanta {

int runNewer(const Arguments& arguments, Output& output) {
    const bool answer = VersionNumber::isNewer(arguments.operands[0], arguments.operands[1]);
    output.write(answer ? "true\n" : "false\n");
    return 0;
}

} // namespace corvanta
