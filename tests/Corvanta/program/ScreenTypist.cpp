#include "ScreenTypist.hpp"

#include "Support/screen/ObservedScreen.hpp"

#include <X11/keysym.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <thread>

namespace corvanta {

namespace {

using namespace std::chrono_literals;

/// A letter and the caret behind it change fewer pixels than that; more is the window itself being drawn.
constexpr std::size_t mostPixelsOfALetter = 500;

std::size_t countDifferences(const Picture& before, const Picture& after) {
    std::size_t count = 0;
    for (std::size_t pixel = 0; pixel < before.pixels.size(); ++pixel)
        count += before.pixels[pixel] == after.pixels[pixel] ? 0U : 1U;
    return count;
}

void type(ObservedScreen& screen, KeySym key) {
    screen.pressKey(key);
    screen.releaseKey(key);
}

} // namespace

ScreenTypist::ScreenTypist() : screen_(std::make_unique<ObservedScreen>()) {}

ScreenTypist::~ScreenTypist() = default;

bool ScreenTypist::clickIntoTheText() {
    const auto end = Clock::now() + 5min;
    while (Clock::now() < end) {
        const bool rests = screen_->waitForSilence(500ms, 2s);
        const auto window = screen_->firstWindow();
        if (!rests || !window)
            continue;
        // Below a short text, so that the caret goes to its end: the first lines are above the pane.
        const Rectangle pane = textPane.within(screen_->area(*window));
        screen_->click(pane.x + pane.width / 2, pane.y + pane.height / 2);
        return screen_->waitForSilence(100ms, 10s);
    }
    return false;
}

std::size_t ScreenTypist::typeUntil(Clock::time_point end) {
    std::uniform_int_distribution<int> letters('a', 'z');
    std::uniform_int_distribution<int> pauses(5, 60);
    std::size_t shown = 0;
    while (Clock::now() < end) {
        typed_.push_back(static_cast<char>(letters(random_)));
        if (!appears(end))
            break;
        ++shown;
        std::this_thread::sleep_until(
            std::min(end, Clock::now() + std::chrono::milliseconds(pauses(random_))));
    }
    return shown;
}

/// Whether the last letter of `typed_` appears before `end` when it is typed.
bool ScreenTypist::appears(Clock::time_point end) {
    const auto window = screen_->firstWindow();
    if (!window)
        return false;
    const Rectangle pane = textPane.within(screen_->area(*window));
    const Picture before = screen_->capture(pane);
    screen_->forgetDamage();
    type(*screen_, static_cast<KeySym>(typed_.back()));
    while (const auto drawing = screen_->nextDamage(end)) {
        if (drawing->area.intersection(pane).isEmpty())
            continue;
        const std::size_t differences = countDifferences(before, screen_->capture(pane));
        if (differences > 0)
            return differences <= mostPixelsOfALetter;
    }
    return false;
}

} // namespace corvanta
