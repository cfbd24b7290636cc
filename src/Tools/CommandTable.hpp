#pragma once

#include "Tools/Command.hpp"

#include <span>

namespace corvanta {

/// Every command of corvanta-text, in the order of the help.
std::span<const Command> commandTable();

} // namespace corvanta
