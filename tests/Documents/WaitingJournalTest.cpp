// What comes back of a journal that was left behind, cut off, damaged, or read by a process that dies, too.

#include "Documents/WaitingJournal.hpp"

#include "Documents/Journal.hpp"
#include "Documents/JournalReader.hpp"
#include "Documents/ManualWorkerQueue.hpp"
#include "Documents/TypedText.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "Support/InterruptedFileOperations.hpp"
#include "Support/SimulatedDisk.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using End = JournalReader::End;

const std::string pageText = "<p>alt</p>\n";

Journal::Base baseOf(std::optional<std::filesystem::path> file) {
    Journal::Base base;
    base.fileContent = file ? Fingerprint::of(pageText) : Fingerprint();
    base.file = std::move(file);
    base.text = pageText;
    return base;
}

/// The folder of the only journal in "/journale".
std::filesystem::path onlyJournal(SimulatedDisk& disk) {
    return "/journale/" + disk.entries("/journale").value().front();
}

/// A journal with some edits, and the text after each of them.
struct Recorded {
    Recorded() {
        SimulatedDisk disk;
        ManualWorkerQueue worker;
        disk.place("/journale", std::nullopt);
        TypedText typed(pageText);
        Journal journal(disk, worker, "/journale", baseOf("/web/seite.html"));
        texts.push_back(pageText);
        for (int edit = 0; edit < 12; ++edit) {
            const TextChange change = typed.type();
            journal.append(change, typed.text());
            texts.push_back(typed.text());
            bytes = disk.content(onlyJournal(disk) / "1").value();
            ends.push_back(bytes.size());
        }
    }

    std::string bytes;
    /// The text before any edit, and after each.
    std::vector<std::string> texts;
    /// How long the journal was after each edit.
    std::vector<std::size_t> ends;
};

TEST(JournalReaderTest, GivesEverythingBeforeTheByteAtWhichTheJournalIsCutOff) {
    const Recorded recorded;
    for (std::size_t length = 0; length <= recorded.bytes.size(); ++length) {
        const auto replay = JournalReader::replay(recorded.bytes.substr(0, length), pageText);
        const auto whole = std::ranges::upper_bound(recorded.ends, length) - recorded.ends.begin();
        if (!replay.text) {
            EXPECT_EQ(whole, 0);
            EXPECT_NE(replay.end, End::whole);
            continue;
        }
        EXPECT_EQ(*replay.text, recorded.texts.at(static_cast<std::size_t>(whole)));
        const bool isAtAnEnd = whole > 0 && recorded.ends.at(static_cast<std::size_t>(whole - 1)) == length;
        EXPECT_TRUE(isAtAnEnd || whole == 0 || replay.end == End::cutOff) << length;
    }
}

TEST(JournalReaderTest, GivesEverythingBeforeABitThatFlippedAndSaysSo) {
    const Recorded recorded;
    for (std::size_t bit = 0; bit < recorded.bytes.size() * 8; ++bit) {
        std::string bytes = recorded.bytes;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
        const auto replay = JournalReader::replay(bytes, pageText);
        EXPECT_NE(replay.end, End::whole) << bit;
        if (!replay.text)
            continue;
        const auto sound = std::ranges::upper_bound(recorded.ends, bit / 8) - recorded.ends.begin();
        EXPECT_EQ(*replay.text, recorded.texts.at(static_cast<std::size_t>(sound))) << bit;
    }
}

TEST(JournalReaderTest, TakesNoBaseTextThatDoesNotBelongToTheEdits) {
    const Recorded recorded;
    EXPECT_FALSE(JournalReader::replay(recorded.bytes, "<p>ein anderer</p>\n").text);
    EXPECT_FALSE(JournalReader::replay(recorded.bytes, std::nullopt).text);
}

TEST(JournalReaderTest, TakesNoRecordOfAnotherJournal) {
    const Recorded recorded;
    // What lay on this place of the disk before: the same edits once more.
    const std::string old = recorded.bytes.substr(recorded.ends.front());
    const auto replay = JournalReader::replay(recorded.bytes + old, pageText);
    EXPECT_EQ(replay.text, recorded.texts.back());
    EXPECT_EQ(replay.end, End::damaged);
}

TEST(JournalReaderTest, SurvivesWhatIsNoJournal) {
    for (const std::string bytes :
         {"", "Corvanta", "Corvanta journal\n", "Corvanta journal\n\xff\xff\xff\xff"}) {
        EXPECT_FALSE(JournalReader::head(bytes));
        EXPECT_FALSE(JournalReader::replay(bytes, pageText).text);
    }
    EXPECT_FALSE(JournalReader::replay(std::string(5'000, '\0'), pageText).text);
}

/// A disk on which a process died after typing into a page.
struct Wreck {
    explicit Wreck(std::optional<std::filesystem::path> file = "/web/seite.html") : file_(std::move(file)) {
        disk.place("/web", std::nullopt);
        disk.place("/web/seite.html", pageText);
        disk.place("/journale", std::nullopt);
        Journal journal(disk, worker, "/journale", baseOf(file_));
        for (int edit = 0; edit < 30; ++edit) {
            const TextChange change = typed.type();
            journal.append(change, typed.text());
        }
        worker.advance(2s);
    }

    std::vector<WaitingJournal> waiting(FileOperations& operations) {
        return WaitingJournal::allIn(operations, "/journale");
    }

    SimulatedDisk disk;
    ManualWorkerQueue worker;
    TypedText typed{pageText};

private:
    std::optional<std::filesystem::path> file_;
};

TEST(WaitingJournalTest, ComesBackTheSameHoweverOftenItIsRead) {
    Wreck wreck;
    for (int reading = 0; reading < 3; ++reading) {
        auto waiting = wreck.waiting(wreck.disk);
        ASSERT_EQ(waiting.size(), 1U);
        EXPECT_EQ(waiting.front().read().text, wreck.typed.text());
    }
}

TEST(WaitingJournalTest, ConvergesToTheSameTextWheneverTheRecoveryIsKilled) {
    for (const auto& file :
         {std::optional<std::filesystem::path>("/web/seite.html"), std::optional<std::filesystem::path>()}) {
        for (const bool cut : {false, true}) {
            for (int call = 0; call < 80; ++call) {
                SCOPED_TRACE(call);
                Wreck wreck(file);
                InterruptedFileOperations operations(wreck.disk);
                operations.dieWithin(call);
                {
                    auto waiting = wreck.waiting(operations);
                    if (!waiting.empty()) {
                        const std::string text = waiting.front().read().text.value_or("(lost)");
                        const Journal journal(operations, wreck.worker, waiting.front().takeFolder(),
                                              baseOf(file), text);
                        wreck.worker.advance(2s);
                    }
                    operations.dieBefore(0);
                }
                if (cut)
                    wreck.disk.cutPower(SimulatedDisk::UnsyncedNames::lost);
                auto waiting = wreck.waiting(wreck.disk);
                ASSERT_EQ(waiting.size(), 1U);
                const auto recovered = waiting.front().read();
                EXPECT_EQ(recovered.text, wreck.typed.text());
                EXPECT_TRUE(recovered.isWhole);
            }
        }
    }
}

TEST(WaitingJournalTest, GoesOnInTheJournalThatTookItsPlace) {
    Wreck wreck;
    auto waiting = wreck.waiting(wreck.disk);
    Journal journal(wreck.disk, wreck.worker, waiting.front().takeFolder(), baseOf("/web/seite.html"),
                    wreck.typed.text());
    for (int edit = 0; edit < 50; ++edit) {
        const TextChange change = wreck.typed.type();
        EXPECT_FALSE(journal.append(change, wreck.typed.text()));
        wreck.worker.advance(100ms);
        auto again = wreck.waiting(wreck.disk);
        ASSERT_EQ(again.size(), 1U);
        EXPECT_EQ(again.front().read().text, wreck.typed.text());
    }
    journal.remove();
    EXPECT_TRUE(wreck.disk.entries("/journale")->empty());
}

TEST(WaitingJournalTest, IsGoneOrTheSameWhenDiscardingItIsKilled) {
    for (int call = 0; call < 20; ++call) {
        SCOPED_TRACE(call);
        Wreck wreck;
        InterruptedFileOperations operations(wreck.disk);
        {
            auto waiting = wreck.waiting(operations);
            operations.dieBefore(operations.count() + call);
            waiting.front().discard();
            operations.dieBefore(0);
        }
        auto waiting = wreck.waiting(wreck.disk);
        EXPECT_TRUE(waiting.empty() || waiting.front().read().text == wreck.typed.text());
        EXPECT_EQ(wreck.disk.entries("/journale")->empty(), waiting.empty());
    }
}

TEST(WaitingJournalTest, SaysSoWhenTheCopyOfTheTextIsDamaged) {
    for (const bool fileIsThere : {true, false}) {
        Wreck wreck;
        std::string copy = wreck.disk.content(onlyJournal(wreck.disk) / "0").value();
        copy.back() = '!';
        wreck.disk.place(onlyJournal(wreck.disk) / "0", copy);
        if (!fileIsThere)
            wreck.disk.unlink("/web/seite.html");
        auto waiting = wreck.waiting(wreck.disk);
        const auto recovered = waiting.front().read();
        EXPECT_EQ(recovered.text.has_value(), fileIsThere);
        EXPECT_EQ(recovered.isWhole, fileIsThere);
        EXPECT_EQ(recovered.typed.empty(), fileIsThere);
    }
}

TEST(WaitingJournalTest, GivesTheTextBeforeWhenNothingThatWasTypedCanBeRead) {
    Wreck wreck;
    std::string bytes = wreck.disk.content(onlyJournal(wreck.disk) / "1").value();
    bytes[20] = static_cast<char>(bytes[20] ^ 1);
    wreck.disk.place(onlyJournal(wreck.disk) / "1", bytes);
    auto waiting = wreck.waiting(wreck.disk);
    ASSERT_EQ(waiting.size(), 1U);
    EXPECT_EQ(waiting.front().read().text, pageText);
    EXPECT_FALSE(waiting.front().read().isWhole);
    EXPECT_EQ(waiting.front().head()->file, "/web/seite.html");
}

TEST(WaitingJournalTest, IsNotDisturbedByStrangeThingsInTheFolder) {
    Wreck wreck;
    wreck.disk.place("/journale/datei", "x");
    wreck.disk.place(onlyJournal(wreck.disk) / "notiz.txt", "x");
    wreck.disk.place(onlyJournal(wreck.disk) / "99999999999999999999", "x");
    auto waiting = wreck.waiting(wreck.disk);
    ASSERT_EQ(waiting.size(), 1U);
    EXPECT_EQ(waiting.front().read().text, wreck.typed.text());
}

TEST(WaitingJournalTest, FindsNoneWhereNoFolderIs) {
    SimulatedDisk disk;
    EXPECT_TRUE(WaitingJournal::allIn(disk, "/fehlt").empty());
}

/// On a real disk, where locks and modes mean something.
class WaitingJournalOnDiskTest : public testing::Test {
protected:
    Journal makeJournal() { return {operations, worker, folder.path(), baseOf(folder / "seite.html")}; }

    TemporaryFolder folder;
    PosixFileOperations operations;
    ManualWorkerQueue worker;
};

TEST_F(WaitingJournalOnDiskTest, IsNotTakenFromALivingOwner) {
    TypedText typed(pageText);
    {
        Journal journal = makeJournal();
        const TextChange change = typed.type();
        ASSERT_FALSE(journal.append(change, typed.text()));
        EXPECT_TRUE(WaitingJournal::allIn(operations, folder.path()).empty());
        // Nor is it harmed by the attempt.
        ASSERT_FALSE(journal.append({0, std::int64_t(typed.text().size())}, "x" + typed.text()));
    }
    auto first = WaitingJournal::allIn(operations, folder.path());
    ASSERT_EQ(first.size(), 1U);
    EXPECT_TRUE(WaitingJournal::allIn(operations, folder.path()).empty()) << "taken twice";
}

TEST_F(WaitingJournalOnDiskTest, IsReadableForNobodyElse) {
    Journal journal = makeJournal();
    ASSERT_FALSE(journal.append({0, std::int64_t(pageText.size())}, "x" + pageText));
    worker.advance(1s);
    using std::filesystem::perms;
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
        const perms expected =
            entry.is_directory() ? perms::owner_all : perms::owner_read | perms::owner_write;
        EXPECT_EQ(entry.status().permissions(), expected) << entry.path();
        ++files;
    }
    EXPECT_EQ(files, 4);
}

TEST_F(WaitingJournalOnDiskTest, DelaysNoStartHoweverLongItIs) {
    const std::string text(300'000, 'x');
    Journal::Base base;
    base.file = folder / "seite.html";
    base.text = SharedText();
    for (int i = 0; i < 50; ++i) {
        Journal journal(operations, worker, folder.path(), base);
        ASSERT_FALSE(journal.append({}, text));
    }
    InterruptedFileOperations counted(operations);
    const auto start = std::chrono::steady_clock::now();
    const auto waiting = WaitingJournal::allIn(counted, folder.path());
    const auto duration = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(waiting.size(), 50U);
    // The time is that of a busy machine; the number of calls says the same more exactly.
    EXPECT_LT(duration, 1s);
    EXPECT_EQ(std::ranges::count(counted.calls(), "read"), 50);
}

} // namespace
} // namespace corvanta
