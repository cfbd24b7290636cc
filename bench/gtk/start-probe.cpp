// Measures how long a program takes from its start until its text is painted, and until nothing changes any
// more in the right half of its window, where a preview is.
//
//   start-probe RUNS COMMAND [ARGUMENT...]
//
// Prints the medians of all runs but the first, which only warms the caches up: runs=… text_ms=… preview_ms=…

#include "Samples.hpp"
#include "StartedProgram.hpp"
#include "Support/screen/ObservedScreen.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

/// A start is over when nothing changed for this time; a preview may begin long after the text.
constexpr auto silence = 3000ms;
constexpr auto longestStart = 90s;
/// Fewer pixels are no text, but perhaps a caret.
constexpr std::size_t leastInk = 200;

/// Which pixels stand out from the background: text in whatever colours, but not a marked line.
std::vector<bool> ink(const Picture& picture) {
    std::map<std::uint32_t, std::size_t> counts;
    for (const std::uint32_t pixel : picture.pixels)
        ++counts[pixel];
    std::uint32_t background = 0;
    std::size_t most = 0;
    for (const auto& [pixel, count] : counts) {
        if (count > most) {
            background = pixel;
            most = count;
        }
    }

    const auto standsOut = [background](std::uint32_t pixel) {
        constexpr int leastDifference = 48;
        return std::ranges::any_of(std::array{0U, 8U, 16U}, [=](unsigned shift) {
            const auto one = static_cast<int>(pixel >> shift & 0xffU);
            const auto other = static_cast<int>(background >> shift & 0xffU);
            return std::abs(one - other) > leastDifference;
        });
    };
    std::vector<bool> result;
    result.reserve(picture.pixels.size());
    for (const std::uint32_t pixel : picture.pixels)
        result.push_back(standsOut(pixel));
    return result;
}

std::size_t count(const std::vector<bool>& ink) {
    return static_cast<std::size_t>(std::count(ink.begin(), ink.end(), true));
}

/// How the window looked when something had been drawn.
struct Look {
    ObservedScreen::Clock::time_point time;
    Picture text;
    Picture preview;
};

struct Start {
    double text;
    double preview;
};

/// Every different look of the first window, until it stays as it is.
std::vector<Look> watch(ObservedScreen& screen, StartedProgram& program,
                        ObservedScreen::Clock::time_point start) {
    std::vector<Look> looks;
    std::optional<Window> window;
    auto lastChange = start;
    while (ObservedScreen::Clock::now() < start + longestStart) {
        if (!program.isRunning())
            throw std::runtime_error("the program ended");
        const bool hasText = !looks.empty() && count(ink(looks.back().text)) >= leastInk;
        if (hasText && ObservedScreen::Clock::now() - lastChange >= silence)
            return looks;

        auto damage = screen.nextDamage(ObservedScreen::Clock::now() + 50ms);
        if (!damage)
            continue;
        // What was drawn meanwhile is in the picture that is taken now, too.
        while (const auto next = screen.nextDamage({}))
            damage = next;
        if (!window)
            window = screen.firstWindow();
        if (!window)
            continue;
        const Rectangle area = screen.area(*window);
        Look look{.time = damage->time,
                  .text = screen.capture(textPane.within(area)),
                  .preview = screen.capture(previewPane.within(area))};
        if (looks.empty() || look.text != looks.back().text || look.preview != looks.back().preview) {
            lastChange = look.time;
            looks.push_back(std::move(look));
        }
    }
    throw std::runtime_error("no text appeared, or the window never came to rest");
}

/// The first look that shows nine tenths of the text that is there in the end, in the place where it stays.
ObservedScreen::Clock::time_point timeOfText(const std::vector<Look>& looks) {
    const Picture& last = looks.back().text;
    const std::vector<bool> wanted = ink(last);
    for (const Look& look : looks) {
        if (look.text.area != last.area)
            continue;
        std::vector<bool> both = ink(look.text);
        for (std::size_t pixel = 0; pixel < both.size(); ++pixel)
            both[pixel] = both[pixel] && wanted[pixel];
        if (count(both) * 10 >= count(wanted) * 9)
            return look.time;
    }
    return looks.back().time;
}

ObservedScreen::Clock::time_point timeOfPreview(const std::vector<Look>& looks) {
    std::size_t look = looks.size() - 1;
    while (look > 0 && looks[look - 1].preview == looks[look].preview)
        --look;
    return looks[look].time;
}

Start measureOnce(const std::vector<std::string>& command) {
    ObservedScreen screen;
    screen.forgetDamage();
    const auto start = ObservedScreen::Clock::now();
    StartedProgram program(command);
    const std::vector<Look> looks = watch(screen, program, start);
    const auto since = [start](ObservedScreen::Clock::time_point time) {
        return std::chrono::duration<double, std::milli>(time - start).count();
    };
    return {.text = since(timeOfText(looks)), .preview = since(timeOfPreview(looks))};
}

void measure(int runs, const std::vector<std::string>& command) {
    Samples text;
    Samples preview;
    for (int run = 0; run <= runs; ++run) {
        const Start start = measureOnce(command);
        std::this_thread::sleep_for(300ms);
        if (run == 0)
            continue;
        text.add(start.text);
        preview.add(start.preview);
    }
    fmt::print("runs={} text_ms={:.1f} preview_ms={:.1f}\n", runs, text.median(), preview.median());
}

} // namespace
} // namespace corvanta

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    try {
        if (arguments.size() < 2)
            throw std::runtime_error("usage: start-probe RUNS COMMAND [ARGUMENT...]");
        corvanta::measure(std::stoi(arguments[0]), {arguments.begin() + 1, arguments.end()});
    } catch (const std::exception& error) {
        fmt::print(stderr, "start-probe: {}\n", error.what());
        return 1;
    }
    return 0;
}
