#pragma once

#include <functional>
#include <string>
#include <vector>

namespace corvanta {

/// Asks the system for the languages that the user prefers, best first, as language tags such as "de-DE".
using PreferredLanguages = std::function<std::vector<std::string>()>;

} // namespace corvanta
