#include "PreviewColumnFixture.hpp"
#include "WebProcess.hpp"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

class CrashedPageTest : public PreviewColumnFixture {
protected:
    void SetUp() override {
        PreviewColumnFixture::SetUp();
        const auto start = std::chrono::steady_clock::now();
        show("<p>da</p>");
        ASSERT_TRUE(becomes("document.body.textContent", "da"));
        firstPageTook = std::chrono::steady_clock::now() - start;
        ASSERT_TRUE(waitUntil([this] { return column.coordinator()->isSettled(); }));
    }

    /// Kills the page's process; false when there is none. One of an earlier test may take its time to end.
    static bool crash() {
        std::vector<pid_t> processes;
        if (!waitUntil([&] { return (processes = webProcesses()).size() == 1; }))
            return false;
        ::kill(processes.front(), SIGKILL);
        return waitUntil([&] { return webProcesses() != processes; });
    }

    std::chrono::steady_clock::duration firstPageTook{};
};

TEST_F(CrashedPageTest, IsBackSoon) {
    ASSERT_TRUE(crash());
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(becomes("document.body.textContent", "da"));
    const auto took = std::chrono::steady_clock::now() - start;
    RecordProperty("milliseconds", std::to_string(took / 1ms));
    // One second on a machine with nothing else to do. Beside much other work a page's process alone takes
    // long to start.
    EXPECT_LT(took, std::max<std::chrono::steady_clock::duration>(4s, 4 * firstPageTook));
}

TEST_F(CrashedPageTest, StaysAwayAfterThreeCrashesUntilTheTextChanges) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(becomes("document.body.textContent", "da"));
        ASSERT_TRUE(crash());
    }
    letPass(1500ms);
    EXPECT_TRUE(webProcesses().empty());
    show("<p>neu</p>");
    EXPECT_TRUE(becomes("document.body.textContent", "neu"));
}

} // namespace
} // namespace corvanta
