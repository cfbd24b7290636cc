#pragma once

#include <string_view>

namespace corvanta {

/// Prints `message` on standard error, on one line whatever the names in it hold.
void complain(std::string_view message);

} // namespace corvanta
