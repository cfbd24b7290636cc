// Measures the time from a key press to changed pixels in the text, for any editor.
//
//   key-latency-probe KEYS COMMAND [ARGUMENT...]
//
// Prints one line: keys=… lost=… median_ms=… p95_ms=… max_ms=…

#include "Samples.hpp"
#include "StartedProgram.hpp"
#include "Support/screen/ObservedScreen.hpp"

#include <X11/keysym.h>
#include <fmt/format.h>

#include <cstdio>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

constexpr int warmUpKeys = 10;
constexpr int keysInALine = 40;

Window waitForWindow(ObservedScreen& screen, StartedProgram& program) {
    const auto end = ObservedScreen::Clock::now() + 60s;
    while (ObservedScreen::Clock::now() < end && program.isRunning()) {
        if (const auto window = screen.firstWindow())
            return *window;
        std::this_thread::sleep_for(20ms);
    }
    throw std::runtime_error("no window appeared");
}

/// Types one letter after another into a program's text and takes the time.
class Typist {
public:
    Typist(ObservedScreen& screen, const Rectangle& pane) : screen_(screen), pane_(pane) {}

    /// Milliseconds until the pane looked otherwise, or nothing when it did not within 2 s.
    std::optional<double> typeLetter() {
        std::uniform_int_distribution<KeySym> letters(XK_a, XK_z);
        const KeySym letter = letters(random_);
        const Picture before = screen_.capture(pane_);
        screen_.forgetDamage();

        const auto start = ObservedScreen::Clock::now();
        screen_.pressKey(letter);
        const auto changed = waitForChange(before, start + 2s);
        screen_.releaseKey(letter);
        if (!changed)
            return std::nullopt;
        return std::chrono::duration<double, std::milli>(*changed - start).count();
    }

    void startNewLine() {
        screen_.pressKey(XK_Return);
        screen_.releaseKey(XK_Return);
        screen_.waitForSilence(200ms, 2s);
    }

    /// As a quick typist; irregular, so that no frame clock is met at the same point every time.
    void pause() {
        std::uniform_int_distribution<int> milliseconds(30, 80);
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds(random_)));
    }

private:
    std::optional<ObservedScreen::Clock::time_point>
    waitForChange(const Picture& before, ObservedScreen::Clock::time_point deadline) {
        while (const auto damage = screen_.nextDamage(deadline)) {
            const Rectangle area = damage->area.intersection(pane_);
            if (!area.isEmpty() && before.differsFrom(screen_.capture(area)))
                return damage->time;
        }
        return std::nullopt;
    }

    ObservedScreen& screen_;
    Rectangle pane_;
    std::mt19937 random_{1};
};

void measure(int keys, std::vector<std::string> command) {
    ObservedScreen screen;
    StartedProgram program(std::move(command));
    const Window window = waitForWindow(screen, program);
    screen.waitForSilence(500ms, 10s);
    screen.place(window, 1200, 900);
    screen.waitForSilence(1500ms, 30s);
    program.waitUntilIdle(60s);

    const Rectangle pane = textPane.within(screen.area(window));
    screen.click(pane.x + pane.width / 2, pane.y + pane.height / 2);
    screen.waitForSilence(500ms, 10s);

    Typist typist(screen, pane);
    Samples samples;
    int lost = 0;
    for (int key = 0; key < warmUpKeys + keys; ++key) {
        if (key % keysInALine == 0)
            typist.startNewLine();
        const auto milliseconds = typist.typeLetter();
        if (key >= warmUpKeys) {
            if (milliseconds)
                samples.add(*milliseconds);
            else
                ++lost;
        }
        typist.pause();
        if (!program.isRunning())
            throw std::runtime_error("the program ended");
    }
    fmt::print("keys={} lost={} median_ms={:.2f} p95_ms={:.2f} max_ms={:.2f}\n", keys, lost, samples.median(),
               samples.percentile(0.95), samples.maximum());
}

} // namespace
} // namespace corvanta

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    try {
        if (arguments.size() < 2)
            throw std::runtime_error("usage: key-latency-probe KEYS COMMAND [ARGUMENT...]");
        corvanta::measure(std::stoi(arguments[0]), {arguments.begin() + 1, arguments.end()});
    } catch (const std::exception& error) {
        fmt::print(stderr, "key-latency-probe: {}\n", error.what());
        return 1;
    }
    return 0;
}
