#pragma once

#include "Tools/Command.hpp"

#include <span>
#include <string>

namespace corvanta {

/// What `--help` prints: every command with its options and an example.
std::string helpText(std::span<const Command> commands);

} // namespace corvanta
