// The whole program as a user's process: typed into by real keys, killed, ended by signals and started again.

#include "Documents/WaitingJournal.hpp"
#include "NameHolder.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "ProgramTest.hpp"
#include "StartedProgram.hpp"
#include "Support/gtk/ActiveWindow.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <glibmm/miscutils.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

constexpr const char* newDocument = "Ohne Titel – Corvanta";
constexpr const char* editedNewDocument = "• Ohne Titel – Corvanta";
constexpr const char* line = "Jeder Buchstabe zaehlt";

class ProgramLifeTest : public ProgramTest {
protected:
    /// Whoever closes all windows within the launch is offered a new document.
    static void letTheLaunchPass() { letPass(2s); }

    /// Types `line` and waits until it has arrived.
    void typeLine() {
        keyboard.type(line);
        // A key behind them all, of which can be seen that it has arrived.
        keyboard.press("F1");
        ASSERT_TRUE(isAt("Corvanta-Hilfe"));
    }

    /// What the dead processes left unsaved; the texts.
    std::vector<std::string> leftBehind() {
        PosixFileOperations operations;
        std::vector<std::string> texts;
        for (const WaitingJournal& journal :
             WaitingJournal::allIn(operations, state / "Corvanta" / "Journale"))
            texts.push_back(journal.read().text.value_or("(lost)"));
        return texts;
    }

    /// Leaves the count that two starts leave that died at once; on a busy machine they may not be quick
    /// enough.
    void letTwoStartsDie() const {
        std::filesystem::create_directories(state / "Corvanta");
        state.write("Corvanta/Start", "2");
    }
};

TEST_F(ProgramLifeTest, PutsTheTemplatesForFurtherLanguagesIntoTheUsersFolder) {
    const auto languages = std::filesystem::path(Glib::get_user_data_dir()) / "Corvanta" / "Sprachen";
    std::filesystem::remove_all(languages);
    StartedProgram program(state.path());
    EXPECT_TRUE(waitUntil([&] {
        return std::filesystem::exists(languages / "_Vorlage.json") &&
               std::filesystem::exists(languages / "_Vorlage_Plattform.json");
    }));
}

TEST_F(ProgramLifeTest, LosesNoKeyWhenItIsKilled) {
    folder.write("index.html", "");
    StartedProgram program(state.path(), {folder / "index.html"});
    ASSERT_TRUE(isAt("index.html – Corvanta"));
    typeLine();
    EXPECT_EQ(program.end(SIGKILL), 128 + SIGKILL);
    EXPECT_EQ(leftBehind(), std::vector<std::string>{line});
    EXPECT_EQ(content("index.html"), "");
}

TEST_F(ProgramLifeTest, LosesNoKeyWhenTheDisplayVanishes) {
    folder.write("index.html", "");
    StartedProgram program(state.path(), {folder / "index.html"});
    ASSERT_TRUE(isAt("index.html – Corvanta"));
    typeLine();
    takeDisplayFromActiveWindow();
    EXPECT_NE(program.wait(), 128 + SIGKILL) << "it went on without a display";
    EXPECT_EQ(leftBehind(), std::vector<std::string>{line});
    EXPECT_EQ(content("index.html"), "");
}

TEST_F(ProgramLifeTest, BringsBackAfterAKillWhatWasNeverSavedAndSaysSo) {
    {
        StartedProgram program(state.path());
        ASSERT_TRUE(isAt(newDocument));
        keyboard.type("x");
        ASSERT_TRUE(isAt(editedNewDocument));
    }
    StartedProgram program(state.path());
    ASSERT_TRUE(isAtADialog());
    keyboard.press("Escape");
    EXPECT_TRUE(isAt(editedNewDocument));
}

class ProgramSignalTest : public ProgramLifeTest, public testing::WithParamInterface<int> {};

TEST_P(ProgramSignalTest, EndsWithoutLossAndComesBackWithoutAWord) {
    folder.write("index.html", "");
    {
        StartedProgram program(state.path(), {folder / "index.html"});
        ASSERT_TRUE(isAt("index.html – Corvanta"));
        keyboard.type("a");
        ASSERT_TRUE(isAt("• index.html – Corvanta"));
        EXPECT_EQ(program.end(GetParam()), 0);
    }
    {
        StartedProgram program(state.path());
        ASSERT_TRUE(isAt("• index.html – Corvanta"));
        // The caret is where it was.
        keyboard.type("b");
        keyboard.press("Control+s");
        ASSERT_TRUE(isAt("index.html – Corvanta"));
        EXPECT_EQ(content("index.html"), "ab");
        EXPECT_EQ(program.end(GetParam()), 0);
    }
    EXPECT_TRUE(leftBehind().empty());
}

INSTANTIATE_TEST_SUITE_P(Signals, ProgramSignalTest, testing::Values(SIGTERM, SIGHUP, SIGINT),
                         [](const auto& signal) { return "Signal" + std::to_string(signal.param); });

TEST_F(ProgramLifeTest, ComesBackWithTheWindowsWithWhichItWasQuit) {
    folder.write("eins.html", "1");
    folder.write("zwei.html", "2");
    {
        StartedProgram program(state.path(), {folder / "eins.html", folder / "zwei.html"});
        ASSERT_TRUE(isAt("zwei.html – Corvanta"));
        keyboard.press("Control+q");
        EXPECT_EQ(program.wait(), 0);
    }
    StartedProgram program(state.path());
    ASSERT_TRUE(isAt("zwei.html – Corvanta"));
    letTheLaunchPass();
    keyboard.press("Control+w");
    EXPECT_TRUE(isAt("eins.html – Corvanta"));
    keyboard.press("Control+w");
    EXPECT_EQ(program.wait(), 0);
}

TEST_F(ProgramLifeTest, TakesThePlaceOfAProgramThatIsKilledBeforeItHasAnswered) {
    NameHolder running(NameHolder::WhenAsked::dies);
    StartedProgram program(state.path());
    EXPECT_TRUE(isAt(newDocument));
    EXPECT_TRUE(running.wasAsked());
}

TEST_F(ProgramLifeTest, EndsWithAFailureWhenTheProgramThatRunsGivesNoAnswer) {
    NameHolder running(NameHolder::WhenAsked::refuses);
    StartedProgram program(state.path());
    EXPECT_EQ(program.wait(), 1);
    EXPECT_TRUE(running.wasAsked());
}

TEST_F(ProgramLifeTest, DoesNotBringBackWhatWasClosed) {
    folder.write("eins.html", "1");
    {
        StartedProgram program(state.path(), {folder / "eins.html"});
        ASSERT_TRUE(isAt("eins.html – Corvanta"));
        letTheLaunchPass();
        keyboard.press("Control+w");
        EXPECT_EQ(program.wait(), 0);
    }
    StartedProgram program(state.path());
    EXPECT_TRUE(isAt(newDocument));
}

TEST_F(ProgramLifeTest, DoesNotRestoreAnythingAfterTwoStartsThatDiedAtOnceAndSaysSo) {
    folder.write("index.html", "");
    {
        StartedProgram program(state.path(), {folder / "index.html"});
        ASSERT_TRUE(isAt("index.html – Corvanta"));
        keyboard.type("a");
        ASSERT_TRUE(isAt("• index.html – Corvanta"));
    }
    letTwoStartsDie();
    {
        StartedProgram program(state.path());
        ASSERT_TRUE(isAtADialog());
        keyboard.press("Escape");
        EXPECT_TRUE(isAt(newDocument));
        EXPECT_EQ(program.end(SIGTERM), 0);
    }
    EXPECT_EQ(leftBehind(), std::vector<std::string>{"a"});
}

TEST_F(ProgramLifeTest, SaysAtTheWindowOfAFileThatTheLastStartsDied) {
    folder.write("index.html", "");
    letTwoStartsDie();
    StartedProgram program(state.path(), {folder / "index.html"});
    ASSERT_TRUE(isAtADialog());
    keyboard.press("Escape");
    EXPECT_TRUE(isAt("index.html – Corvanta"));
}

TEST_F(ProgramLifeTest, ChangesNotAByteOrTimeOfAFileThatIsOnlyLookedAt) {
    folder.write("index.html", "\xEF\xBB\xBF<p>Gr\xC3\xBC\xC3\x9F"
                               "e</p>\r\n");
    const std::filesystem::path file = folder / "index.html";
    struct stat before {};
    ASSERT_EQ(::stat(file.c_str(), &before), 0);
    StartedProgram program(state.path(), {file});
    ASSERT_TRUE(isAt("index.html – Corvanta"));
    keyboard.press("Control+s");
    keyboard.press("Control+q");
    EXPECT_EQ(program.wait(), 0);
    struct stat after {};
    ASSERT_EQ(::stat(file.c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
    EXPECT_TRUE(std::filesystem::is_empty(state / "Corvanta" / "Journale"));
}

} // namespace
} // namespace corvanta
