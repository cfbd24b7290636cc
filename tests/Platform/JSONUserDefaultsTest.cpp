#include "Platform/JSONUserDefaults.hpp"

#include "Support/TemporaryFolder.hpp"
#include "Support/UnprivilegedUser.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <random>
#include <set>
#include <sstream>

namespace corvanta {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Json = nlohmann::json;
using Strings = std::vector<std::string>;

class JSONUserDefaultsTest : public testing::Test {
protected:
    static std::string read(const std::filesystem::path& path) {
        std::ostringstream bytes;
        bytes << std::ifstream(path, std::ios::binary).rdbuf();
        return bytes.str();
    }

    Json stored() const { return Json::parse(read(file), nullptr, false); }

    void store(const std::string& content) const {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
    }

    std::set<std::string> entries() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(file.parent_path()))
            names.insert(entry.path().filename());
        return names;
    }

    TemporaryFolder folder;
    const std::filesystem::path file = folder / "config" / "Corvanta" / "settings.json";
};

TEST_F(JSONUserDefaultsTest, HasNoValuesWithoutAFileAndMakesNone) {
    {
        const JSONUserDefaults defaults(file);
        EXPECT_FALSE(defaults.value("sprache"));
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "config"));
}

TEST_F(JSONUserDefaultsTest, KeepsEveryTypeFromOneLaunchToTheNext) {
    const std::string text = "Größe \"14\"\n\0 €"s;
    {
        JSONUserDefaults defaults(file);
        defaults.set("bool", true);
        defaults.set("double", 13.5);
        defaults.set("whole", 14.0);
        defaults.set("string", text);
        defaults.set("list", Strings{"de", "en"});
        defaults.set("empty", Strings{});
    }
    const JSONUserDefaults defaults(file);
    EXPECT_EQ(defaults.get<bool>("bool"), true);
    EXPECT_EQ(defaults.get<double>("double"), 13.5);
    EXPECT_EQ(defaults.get<double>("whole"), 14.0);
    EXPECT_EQ(defaults.get<std::string>("string"), text);
    EXPECT_EQ(defaults.get<Strings>("list"), (Strings{"de", "en"}));
    EXPECT_EQ(defaults.get<Strings>("empty"), Strings{});
}

TEST_F(JSONUserDefaultsTest, TellsTheTypesApart) {
    store(R"({"number": 1, "flag": false, "text": "1", "list": ["1"], "mixed": ["1", 1], "none": null,
              "object": {"a": "b"}})");
    const JSONUserDefaults defaults(file);
    EXPECT_EQ(defaults.get<double>("number"), 1.0);
    EXPECT_FALSE(defaults.get<bool>("number"));
    EXPECT_EQ(defaults.get<bool>("flag"), false);
    EXPECT_FALSE(defaults.get<double>("flag"));
    EXPECT_FALSE(defaults.get<double>("text"));
    EXPECT_FALSE(defaults.get<std::string>("list"));
    EXPECT_FALSE(defaults.value("mixed"));
    EXPECT_FALSE(defaults.value("none"));
    EXPECT_FALSE(defaults.value("object"));
    EXPECT_FALSE(defaults.value("missing"));
}

TEST_F(JSONUserDefaultsTest, ForgetsARemovedValue) {
    store(R"({"sprache": "en", "schriftgroesse": 15})");
    {
        JSONUserDefaults defaults(file);
        defaults.remove("sprache");
        EXPECT_FALSE(defaults.value("sprache"));
    }
    EXPECT_EQ(stored(), Json({{"schriftgroesse", 15}}));
}

TEST_F(JSONUserDefaultsTest, KeepsWhatItDoesNotKnow) {
    store(R"({"later": {"nested": [1, null, {"x": 12345678901234567890}]}, "precise": 0.1, "sprache": 7})");
    {
        JSONUserDefaults defaults(file);
        defaults.set("neu", true);
    }
    EXPECT_EQ(stored(), Json::parse(R"({"later": {"nested": [1, null, {"x": 12345678901234567890}]},
                                        "precise": 0.1, "sprache": 7, "neu": true})"));
}

TEST_F(JSONUserDefaultsTest, TellsTheObserversOfAKeyOfEveryAssignment) {
    JSONUserDefaults defaults(file);
    std::vector<std::string> seen;
    const Subscription subscription = defaults.observe(
        "sprache", [&] { seen.push_back(defaults.get<std::string>("sprache").value_or("-")); });
    defaults.set("sprache", std::string("en"));
    defaults.set("sprache", std::string("en"));
    defaults.set("schriftgroesse", 15.0);
    defaults.remove("sprache");
    EXPECT_THAT(seen, ElementsAre("en", "en", "-"));
}

TEST_F(JSONUserDefaultsTest, AllowsAnObserverToChangeValues) {
    JSONUserDefaults defaults(file);
    const Subscription subscription =
        defaults.observe("sprache", [&] { defaults.set("AppleLanguages", Strings{"en"}); });
    defaults.set("sprache", std::string("en"));
    EXPECT_TRUE(defaults.flush());
    EXPECT_EQ(stored(), Json({{"AppleLanguages", {"en"}}, {"sprache", "en"}}));
}

TEST_F(JSONUserDefaultsTest, NeverLosesTheKeysOfAnother) {
    JSONUserDefaults one(file);
    JSONUserDefaults other(file);
    one.set("editorFontSize", 15.0);
    other.set("sprache", std::string("en"));
    EXPECT_TRUE(one.flush());
    EXPECT_TRUE(other.flush());
    one.set("editorThemeID", std::string("kontrast"));
    EXPECT_TRUE(one.flush());
    EXPECT_EQ(stored(), Json({{"editorFontSize", 15}, {"editorThemeID", "kontrast"}, {"sprache", "en"}}));
}

TEST_F(JSONUserDefaultsTest, DoesNotBringBackWhatAnotherRemoved) {
    store(R"({"sprache": "en"})");
    JSONUserDefaults one(file);
    JSONUserDefaults other(file);
    other.remove("sprache");
    EXPECT_TRUE(other.flush());
    one.set("schriftgroesse", 16.0);
    EXPECT_TRUE(one.flush());
    EXPECT_EQ(stored(), Json({{"schriftgroesse", 16}}));
}

TEST_F(JSONUserDefaultsTest, NeverLosesAKeyOfManyProcessesAtOnce) {
    constexpr int processes = 6;
    constexpr int keys = 10;
    std::vector<pid_t> children;
    for (int process = 0; process < processes; ++process) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            {
                JSONUserDefaults defaults(file);
                for (int key = 0; key < keys; ++key) {
                    defaults.set(std::to_string(process) + "." + std::to_string(key), true);
                    // On a busy machine the others may hold the lock for longer than one attempt waits.
                    while (!defaults.flush()) {
                    }
                }
            }
            ::_exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(stored().size(), static_cast<std::size_t>(processes * keys));
}

TEST_F(JSONUserDefaultsTest, SeesTheChangesOfAnotherAfterReloading) {
    store(R"({"stays": "a", "changes": "a", "goes": "a"})");
    JSONUserDefaults defaults(file);
    std::vector<std::string> told;
    std::vector<Subscription> subscriptions;
    for (const std::string key : {"stays", "changes", "goes", "comes"})
        subscriptions.push_back(defaults.observe(key, [&told, key] { told.push_back(key); }));

    store(R"({"stays": "a", "changes": "b", "comes": "b"})");
    EXPECT_EQ(defaults.get<std::string>("changes"), "a");
    defaults.reload();
    EXPECT_EQ(defaults.get<std::string>("changes"), "b");
    EXPECT_EQ(defaults.get<std::string>("comes"), "b");
    EXPECT_FALSE(defaults.value("goes"));
    EXPECT_THAT(told, UnorderedElementsAre("changes", "goes", "comes"));

    told.clear();
    defaults.reload();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(JSONUserDefaultsTest, IsNotToldOfItsOwnChangesAgain) {
    JSONUserDefaults defaults(file);
    defaults.set("list", Strings{"a"});
    defaults.set("whole", 14.0);
    defaults.set("fraction", 0.1 + 0.2);
    ASSERT_TRUE(defaults.flush());
    int told = 0;
    std::vector<Subscription> subscriptions;
    for (const std::string key : {"list", "whole", "fraction"})
        subscriptions.push_back(defaults.observe(key, [&told] { ++told; }));
    defaults.reload();
    EXPECT_EQ(told, 0);
}

TEST_F(JSONUserDefaultsTest, KeepsItsValuesWhenReloadingMeetsHalfAFile) {
    store(R"({"sprache": "en"})");
    JSONUserDefaults defaults(file);
    store(R"({"spra)");
    defaults.reload();
    EXPECT_EQ(defaults.get<std::string>("sprache"), "en");
    EXPECT_EQ(read(file), R"({"spra)");
}

TEST_F(JSONUserDefaultsTest, SetsADamagedFileAside) {
    for (const std::string& damage :
         {std::string("{\"sprache\": \"en\","), std::string("[1, 2]"), std::string("\"text\""),
          std::string("{} {}"), std::string("{\"a\": \"\xff\"}"), std::string("\0\0\0", 3),
          std::string(100'000, '[') + std::string(100'000, ']'),
          R"({"deep": )" + std::string(100'000, '[') + std::string(100'000, ']') + "}"}) {
        const TemporaryFolder own;
        own.write("settings.json", damage);
        {
            JSONUserDefaults defaults(own / "settings.json");
            EXPECT_FALSE(defaults.value("sprache"));
            defaults.set("sprache", std::string("de"));
        }
        EXPECT_EQ(read(own / "settings.json.damaged-1"), damage);
        EXPECT_EQ(Json::parse(read(own / "settings.json")), Json({{"sprache", "de"}}));
    }
}

TEST_F(JSONUserDefaultsTest, SetsADamagedFileAsideAlsoWhenNothingChanges) {
    store("kaputt");
    { const JSONUserDefaults defaults(file); }
    EXPECT_EQ(read(file.string() + ".damaged-1"), "kaputt");
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(JSONUserDefaultsTest, NeverReplacesAFileThatWasSetAsideBefore) {
    for (const std::string damage : {"erster", "zweiter"}) {
        store(damage);
        const JSONUserDefaults defaults(file);
    }
    EXPECT_EQ(read(file.string() + ".damaged-1"), "erster");
    EXPECT_EQ(read(file.string() + ".damaged-2"), "zweiter");
}

TEST_F(JSONUserDefaultsTest, SetsAFileOfUnreasonableSizeAsideWithoutReadingIt) {
    store("{}");
    std::filesystem::resize_file(file, std::uintmax_t{1} << 40U);
    const auto start = std::chrono::steady_clock::now();
    { const JSONUserDefaults defaults(file); }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_TRUE(std::filesystem::exists(file.string() + ".damaged-1"));
}

TEST_F(JSONUserDefaultsTest, TakesAnEmptyFileForNoSettings) {
    store("");
    {
        JSONUserDefaults defaults(file);
        defaults.set("sprache", std::string("en"));
    }
    EXPECT_THAT(entries(), UnorderedElementsAre("settings.json", "settings.json.lock"));
    EXPECT_EQ(stored(), Json({{"sprache", "en"}}));
}

TEST_F(JSONUserDefaultsTest, ReadsAFileWithAByteOrderMark) {
    store("\xef\xbb\xbf{\"sprache\": \"en\"}");
    EXPECT_EQ(JSONUserDefaults(file).get<std::string>("sprache"), "en");
}

TEST_F(JSONUserDefaultsTest, KeepsValuesForTheRunInAReadOnlyFolder) {
    const UnprivilegedUser user(folder.path());
    store(R"({"sprache": "en"})");
    ASSERT_EQ(::chmod(file.parent_path().c_str(), 0500), 0);
    {
        JSONUserDefaults defaults(file);
        int told = 0;
        const Subscription subscription = defaults.observe("sprache", [&] { ++told; });
        defaults.set("sprache", std::string("de"));
        EXPECT_FALSE(defaults.flush());
        EXPECT_EQ(defaults.get<std::string>("sprache"), "de");
        defaults.reload();
        EXPECT_EQ(defaults.get<std::string>("sprache"), "de");
        EXPECT_EQ(told, 1);
    }
    EXPECT_EQ(stored(), Json({{"sprache", "en"}}));
    EXPECT_EQ(::chmod(file.parent_path().c_str(), 0700), 0) << "so that it can be removed";
}

TEST_F(JSONUserDefaultsTest, WritesWhatItKeptAsSoonAsTheFolderAllowsIt) {
    const UnprivilegedUser user(folder.path());
    ASSERT_EQ(::chmod(folder.path().c_str(), 0500), 0);
    JSONUserDefaults defaults(file);
    defaults.set("sprache", std::string("de"));
    EXPECT_FALSE(defaults.flush());
    ASSERT_EQ(::chmod(folder.path().c_str(), 0700), 0);
    defaults.set("schriftgroesse", 16.0);
    EXPECT_TRUE(defaults.flush());
    EXPECT_EQ(stored(), Json({{"schriftgroesse", 16}, {"sprache", "de"}}));
}

TEST_F(JSONUserDefaultsTest, DoesNotReplaceAFileThatItMayNotRead) {
    const UnprivilegedUser user(folder.path());
    store(R"({"sprache": "en"})");
    ASSERT_EQ(::chmod(file.c_str(), 0200), 0);
    {
        JSONUserDefaults defaults(file);
        defaults.set("schriftgroesse", 16.0);
        EXPECT_FALSE(defaults.flush());
        EXPECT_EQ(defaults.get<double>("schriftgroesse"), 16.0);
    }
    ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
    EXPECT_EQ(stored(), Json({{"sprache", "en"}}));
}

TEST_F(JSONUserDefaultsTest, IsNotHeldUpByAPipe) {
    std::filesystem::create_directories(file.parent_path());
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    JSONUserDefaults defaults(file);
    defaults.set("sprache", std::string("en"));
    EXPECT_FALSE(defaults.flush());
    EXPECT_EQ(defaults.get<std::string>("sprache"), "en");
    EXPECT_TRUE(std::filesystem::is_fifo(file));
}

TEST_F(JSONUserDefaultsTest, KeepsTheFolderAndTheFileToTheUser) {
    JSONUserDefaults defaults(file);
    defaults.set("sprache", std::string("en"));
    ASSERT_TRUE(defaults.flush());
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(std::filesystem::status(file.parent_path()).permissions(), std::filesystem::perms(0700));
}

TEST_F(JSONUserDefaultsTest, KeepsTheModeThatAFileWasGiven) {
    store("{}");
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    JSONUserDefaults defaults(file);
    defaults.set("sprache", std::string("en"));
    ASSERT_TRUE(defaults.flush());
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0640));
}

TEST_F(JSONUserDefaultsTest, WritesBehindALinkAndKeepsIt) {
    std::filesystem::create_directories(file.parent_path());
    std::filesystem::create_directories(folder / "dotfiles");
    folder.write("dotfiles/echt.json", R"({"sprache": "en"})");
    std::filesystem::create_symlink(folder / "dotfiles" / "echt.json", file);
    {
        JSONUserDefaults defaults(file);
        EXPECT_EQ(defaults.get<std::string>("sprache"), "en");
        defaults.set("sprache", std::string("de"));
    }
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_EQ(Json::parse(read(folder / "dotfiles" / "echt.json")), Json({{"sprache", "de"}}));
}

TEST_F(JSONUserDefaultsTest, UsesUpWhatAKilledProcessLeftBehind) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file.string() + ".new") << "a half-written file that is much longer than the new settings";
    {
        JSONUserDefaults defaults(file);
        defaults.set("sprache", std::string("en"));
    }
    EXPECT_EQ(stored(), Json({{"sprache", "en"}}));
    EXPECT_THAT(entries(), UnorderedElementsAre("settings.json", "settings.json.lock"));
}

TEST_F(JSONUserDefaultsTest, NeitherWaitsForAnotherProcessNorLosesTheChange) {
    store(R"({"sprache": "en"})");
    const int lock = ::open((file.string() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_GE(lock, 0);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    const auto start = std::chrono::steady_clock::now();
    {
        JSONUserDefaults defaults(file);
        defaults.set("sprache", std::string("de"));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
        EXPECT_EQ(stored(), Json({{"sprache", "en"}})) << "somebody else holds the lock";
        ::close(lock);
    }
    EXPECT_EQ(stored(), Json({{"sprache", "de"}}));
}

TEST_F(JSONUserDefaultsTest, WritesManyChangesInARowOnceTheyAreMade) {
    {
        JSONUserDefaults defaults(file);
        for (int step = 0; step <= 1000; ++step)
            defaults.set("editorFontSize", 10.0 + step * 0.01);
    }
    EXPECT_EQ(stored(), Json({{"editorFontSize", 20.0}}));
}

TEST_F(JSONUserDefaultsTest, ForgetsAValueThatIsNoNumberAtTheNextLaunch) {
    {
        JSONUserDefaults defaults(file);
        defaults.set("editorFontSize", std::numeric_limits<double>::quiet_NaN());
        defaults.set("sprache", std::string("en"));
    }
    const JSONUserDefaults defaults(file);
    EXPECT_FALSE(defaults.value("editorFontSize"));
    EXPECT_EQ(defaults.get<std::string>("sprache"), "en");
}

/// Writes settings without rest until it is killed; a byte through `pipe` says that it has begun.
[[noreturn]] void writeWithoutRest(const std::filesystem::path& file, int pipe) {
    JSONUserDefaults defaults(file);
    for (int round = 0;; ++round) {
        defaults.set("content", std::string(20'000, static_cast<char>('a' + round % 26)));
        defaults.set("round", static_cast<double>(round % 26));
        defaults.flush();
        if (round == 0 && ::write(pipe, "x", 1) != 1)
            ::_exit(1);
    }
}

TEST_F(JSONUserDefaultsTest, LeavesAWholeFileWhenItsProcessIsKilled) {
    store(R"({"bystander": "kept"})");
    const int kills = std::getenv("CORVANTA_LONG_TESTS") == nullptr ? 30 : 200;
    std::mt19937 random(1);
    for (int kill = 0; kill < kills; ++kill) {
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            writeWithoutRest(file, pipe[1]);
        char begun = 0;
        ASSERT_EQ(::read(pipe[0], &begun, 1), 1);
        ::close(pipe[0]);
        ::close(pipe[1]);
        ::usleep(static_cast<useconds_t>(random() % 10'000));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);

        const Json settings = stored();
        ASSERT_TRUE(settings.is_object()) << "after kill " << kill;
        ASSERT_EQ(settings.value("bystander", ""), "kept");
        const std::string content = settings.value("content", "");
        ASSERT_EQ(content.size(), 20'000U);
        ASSERT_EQ(content.find_first_not_of(content.front()), std::string::npos);
    }
    EXPECT_LE(entries().size(), 3U) << "the settings, the lock and at most one unfinished file";
}

} // namespace
} // namespace corvanta
