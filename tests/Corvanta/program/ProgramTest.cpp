#include "ProgramTest.hpp"

#include "Support/gtk/ActiveWindow.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <fstream>
#include <iterator>

namespace corvanta {

testing::AssertionResult ProgramTest::isAt(const std::string& title) {
    return waitForTitle([&](const auto& active) { return active == title; });
}

testing::AssertionResult ProgramTest::isAtADialog() {
    return waitForTitle([](const auto& active) { return active && active->empty(); });
}

testing::AssertionResult
ProgramTest::waitForTitle(const std::function<bool(const std::optional<std::string>&)>& fits) {
    std::optional<std::string> active;
    const bool came = waitUntil([&] {
        active = activeWindowTitle();
        return fits(active);
    });
    return (came ? testing::AssertionSuccess() : testing::AssertionFailure())
           << "at: " << active.value_or("(nothing)");
}

std::string ProgramTest::content(const std::string& name) const {
    std::ifstream file(folder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace corvanta
