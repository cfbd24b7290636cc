#pragma once

#include <string>

namespace corvanta {

/// The text in the display's clipboard; empty when there is none.
std::string clipboardText();

} // namespace corvanta
