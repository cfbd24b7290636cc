#pragma once

#include "Tools/Arguments.hpp"
#include "Tools/Command.hpp"

#include <span>
#include <string>

namespace corvanta {

/// Sorts `words` into the options and operands that `command` takes. "--" ends the options; "-" is an
/// operand. Throws `UsageError` for everything that does not fit.
Arguments parseArguments(const Command& command, std::span<const std::string> words);

} // namespace corvanta
