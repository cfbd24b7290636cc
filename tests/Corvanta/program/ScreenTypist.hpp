#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <random>
#include <string>

namespace corvanta {

class ObservedScreen;

/// Types into the window in front and counts the letters that it sees appear. The X server's own headers
/// define words that the test framework uses, so they are kept in here.
class ScreenTypist {
public:
    using Clock = std::chrono::steady_clock;

    ScreenTypist();
    ScreenTypist(const ScreenTypist&) = delete;
    ScreenTypist& operator=(const ScreenTypist&) = delete;
    ~ScreenTypist();

    /// Waits until a window is there in which nothing moves any more, and puts its caret to the end of its
    /// text, which fills less than half of the window. Returns false when that does not come about in five
    /// minutes.
    bool clickIntoTheText();

    /// Types letters with the pauses of a quick typist, and none any more after `end`. Returns how many
    /// had appeared in the text until then; a letter is typed when the one before it has appeared.
    std::size_t typeUntil(Clock::time_point end);

    /// All letters that were typed, also those that did not appear.
    const std::string& typed() const { return typed_; }

private:
    bool appears(Clock::time_point end);

    std::unique_ptr<ObservedScreen> screen_;
    std::string typed_;
    std::mt19937 random_{std::random_device{}()};
};

} // namespace corvanta
