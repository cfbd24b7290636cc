#pragma once

#include <chrono>
#include <functional>

namespace corvanta {

/// Runs the main loop until `condition` holds; false when it does not within `deadline`. The deadline is for
/// a machine that is busy with much else; what works comes long before.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds deadline = std::chrono::seconds(60));

/// Runs the main loop for this long, for what must not happen.
void letPass(std::chrono::milliseconds duration);

} // namespace corvanta
