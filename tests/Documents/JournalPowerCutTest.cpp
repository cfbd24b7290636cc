// Somebody types in real time, on the real disk, with the real worker. What a power cut at any moment would
// have left is found out from the calls that were made.

#include "Documents/Journal.hpp"
#include "Documents/TracedFileOperations.hpp"
#include "Documents/TypedText.hpp"
#include "Documents/WaitingJournal.hpp"
#include "Documents/WorkerThread.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "Support/SimulatedDisk.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using Clock = TracedFileOperations::Clock;
using UnsyncedNames = SimulatedDisk::UnsyncedNames;

const std::string pageText = "<html>\n<body>\n</body>\n</html>\n";

/// The text from a moment on.
struct Typed {
    Clock::time_point time;
    std::string text;
};

/// A folder that has long been on the disk, and all above it.
void placeFolder(SimulatedDisk& disk, const std::filesystem::path& folder) {
    if (folder == folder.root_path())
        return;
    placeFolder(disk, folder.parent_path());
    disk.place(folder, std::nullopt);
}

class JournalPowerCutTest : public testing::TestWithParam<bool> {
protected:
    /// Types without rest for as long as `duration`.
    void type(Clock::duration duration) {
        Journal journal(operations, worker, folder.path(), base());
        TypedText typing(pageText);
        typed.push_back({Clock::now(), pageText});
        const Clock::time_point end = Clock::now() + duration;
        while (Clock::now() < end) {
            const TextChange change = typing.type();
            ASSERT_FALSE(journal.append(change, typing.text()));
            typed.push_back({Clock::now(), typing.text()});
            std::this_thread::sleep_for(std::chrono::milliseconds(random() % 20));
        }
    }

    /// The text that comes back when the power goes at `moment`.
    std::string comesBack(Clock::time_point moment, UnsyncedNames names) {
        SimulatedDisk disk;
        placeFolder(disk, folder.path());
        if (isTitled()) {
            placeFolder(disk, page.parent_path());
            disk.place(page, pageText);
        }
        operations.replay(disk, moment);
        disk.cutPower(names);
        const auto waiting = WaitingJournal::allIn(disk, folder.path());
        return waiting.empty() ? pageText : waiting.front().read().text.value_or("(lost)");
    }

    /// Whether `text` stood there in the second before `moment`.
    bool isNewEnough(const std::string& text, Clock::time_point moment) const {
        for (std::size_t i = 0; i < typed.size() && typed[i].time <= moment; ++i) {
            const bool wasReplacedLately = i + 1 == typed.size() || typed[i + 1].time >= moment - 1s;
            if (wasReplacedLately && typed[i].text == text)
                return true;
        }
        return false;
    }

    bool isTitled() const { return GetParam(); }

    Journal::Base base() const {
        Journal::Base base;
        base.text = pageText;
        if (isTitled()) {
            base.file = page;
            base.fileContent = Fingerprint::of(pageText);
        }
        return base;
    }

    const std::filesystem::path page = "/web/seite.html";
    TemporaryFolder folder;
    PosixFileOperations real;
    TracedFileOperations operations{real};
    WorkerThread worker;
    std::vector<Typed> typed;
    std::mt19937 random{1};
};

TEST_P(JournalPowerCutTest, TakesAtMostASecondOfRestlessTyping) {
    const Clock::duration duration = std::getenv("CORVANTA_LONG_TESTS") == nullptr ? 4s : 60s;
    type(duration);
    const Clock::time_point start = typed.front().time;
    std::size_t cuts = 0;
    for (auto moment = start; moment < typed.back().time; moment += duration / 150) {
        for (const auto names : {UnsyncedNames::lost, UnsyncedNames::kept}) {
            const std::string text = comesBack(moment, names);
            EXPECT_TRUE(isNewEnough(text, moment))
                << "cut after " << std::chrono::duration<double>(moment - start).count() << " s";
            ++cuts;
        }
    }
    EXPECT_GT(cuts, 200U);
    EXPECT_NE(comesBack(typed.back().time, UnsyncedNames::lost), pageText);
}

INSTANTIATE_TEST_SUITE_P(Documents, JournalPowerCutTest, testing::Bool(),
                         [](const auto& instance) { return instance.param ? "WithAFile" : "WithoutAFile"; });

} // namespace
} // namespace corvanta
