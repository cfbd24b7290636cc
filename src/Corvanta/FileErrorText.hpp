#pragma once

#include <string>
#include <system_error>

namespace corvanta {

/// Says in German why a file could not be read or written.
std::string fileErrorText(const std::error_code& error);

} // namespace corvanta
