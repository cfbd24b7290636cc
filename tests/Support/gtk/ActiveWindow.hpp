#pragma once

#include <optional>
#include <string>

namespace corvanta {

/// The title of the window, of whatever program, that is in front and has the keyboard. Absent when there
/// is none.
std::optional<std::string> activeWindowTitle();

/// Takes the display away from the program whose window is in front: its connection breaks as when the
/// display server ends.
void takeDisplayFromActiveWindow();

} // namespace corvanta
