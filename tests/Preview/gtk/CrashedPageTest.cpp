#include "PreviewColumnFixture.hpp"
#include "WebProcess.hpp"

#include <csignal>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

class CrashedPageTest : public PreviewColumnFixture {
protected:
    void SetUp() override {
        PreviewColumnFixture::SetUp();
        show("<p>da</p>");
        ASSERT_TRUE(becomes("document.body.textContent", "da"));
        ASSERT_TRUE(waitUntil([this] { return column.coordinator()->isSettled(); }));
    }

    /// Kills the page's process; false when there is none.
    static bool crash() {
        const std::vector<pid_t> processes = webProcesses();
        if (processes.size() != 1)
            return false;
        ::kill(processes.front(), SIGKILL);
        return waitUntil([&] { return webProcesses() != processes; });
    }
};

TEST_F(CrashedPageTest, IsBackSoon) {
    ASSERT_TRUE(crash());
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(becomes("document.body.textContent", "da"));
    const auto took = std::chrono::steady_clock::now() - start;
    RecordProperty("milliseconds", std::to_string(took / 1ms));
    // One second on a machine with nothing else to do.
    EXPECT_LT(took, 4s);
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
