#include "Documents/Journal.hpp"

#include "Documents/ManualWorkerQueue.hpp"
#include "Documents/TypedText.hpp"
#include "Documents/WaitingJournal.hpp"
#include "Platform/SafeFileWriter.hpp"
#include "Support/InterruptedFileOperations.hpp"
#include "Support/SimulatedDisk.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using File = WaitingJournal::File;

const std::filesystem::path journals = "/journale";
const std::filesystem::path page = "/web/seite.html";
const std::string pageText = "<html>\n<body>\n</body>\n</html>\n";

Journal::Base baseOf(std::optional<std::filesystem::path> file, const std::string& text) {
    Journal::Base base;
    base.fileContent = file ? Fingerprint::of(text) : Fingerprint();
    base.file = std::move(file);
    base.text = text;
    return base;
}

/// A disk with one page and an empty folder for journals, and who types into the page.
struct Desk {
    explicit Desk(std::optional<std::filesystem::path> file = page, const std::string& text = pageText,
                  unsigned seed = 1)
        : typed(text, seed), base(baseOf(std::move(file), text)) {
        disk.place("/web", std::nullopt);
        disk.place(page, text);
        disk.place(journals, std::nullopt);
    }

    Journal makeJournal() { return {operations, worker, journals, base}; }

    /// One edit, and its entry in the journal.
    std::error_code type(Journal& journal) {
        const TextChange change = typed.type();
        return journal.append(change, typed.text());
    }

    std::vector<WaitingJournal> waiting() { return WaitingJournal::allIn(disk, journals); }

    /// What the only waiting journal gives; nothing when none waits.
    std::optional<WaitingJournal::Recovered> recovered() {
        const auto found = waiting();
        EXPECT_LE(found.size(), 1U);
        return found.empty() ? std::nullopt : std::optional(found.front().read());
    }

    /// Of all its files, in bytes.
    std::size_t sizeOfJournal() {
        std::size_t size = 0;
        const std::filesystem::path folder = journals / disk.entries(journals).value().front();
        const auto names = disk.entries(folder).value();
        for (const std::string& name : names)
            size += disk.content(folder / name).value().size();
        return size;
    }

    SimulatedDisk disk;
    InterruptedFileOperations operations{disk};
    ManualWorkerQueue worker;
    TypedText typed;
    Journal::Base base;
};

TEST(JournalTest, WritesNothingBeforeTheFirstEdit) {
    Desk desk;
    Journal journal = desk.makeJournal();
    EXPECT_FALSE(journal.sync());
    EXPECT_EQ(desk.operations.count(), 0);
    EXPECT_EQ(desk.worker.pendingCount(), 0U);
}

TEST(JournalTest, WritesNothingWhenNothingChanged) {
    Desk desk;
    Journal journal = desk.makeJournal();
    const auto size = static_cast<std::int64_t>(pageText.size());
    EXPECT_FALSE(journal.append({size, size}, pageText));
    EXPECT_EQ(desk.operations.count(), 0);
}

TEST(JournalTest, OnlyWritesWhenAPlaceForTheFirstEditWasPrepared) {
    Desk desk;
    Journal journal = desk.makeJournal();
    journal.prepare();
    desk.worker.advance(0ms);
    EXPECT_FALSE(journal.name());
    const auto prepared = static_cast<std::size_t>(desk.operations.count());
    EXPECT_FALSE(desk.type(journal));
    const auto& calls = desk.operations.calls();
    EXPECT_TRUE(std::all_of(calls.begin() + static_cast<std::ptrdiff_t>(prepared), calls.end(),
                            [](const std::string& call) { return call == "write"; }));
    EXPECT_EQ(desk.recovered()->text, desk.typed.text());
    EXPECT_EQ(journal.name(), desk.waiting().front().name());
}

TEST(JournalTest, PreparesAPlaceAgainAfterSaving) {
    Desk desk;
    Journal journal = desk.makeJournal();
    journal.prepare();
    desk.worker.advance(0ms);
    for (int saving = 0; saving < 3; ++saving) {
        desk.type(journal);
        desk.disk.place(page, desk.typed.text());
        journal.rebase(baseOf(page, desk.typed.text()));
        EXPECT_FALSE(desk.recovered());
        desk.worker.advance(1s);
        EXPECT_EQ(desk.disk.entries(journals)->size(), 1U);
    }
    desk.type(journal);
    EXPECT_EQ(desk.disk.entries(journals)->size(), 1U);
    EXPECT_EQ(desk.recovered()->text, desk.typed.text());
}

TEST(JournalTest, LeavesNoPreparedPlaceBehind) {
    for (const bool removed : {true, false}) {
        for (const bool typed : {true, false}) {
            Desk desk;
            {
                Journal journal = desk.makeJournal();
                journal.prepare();
                desk.worker.advance(0ms);
                if (typed && removed)
                    desk.type(journal);
                if (removed)
                    journal.remove();
                else if (typed)
                    journal.rebase(desk.base);
            }
            desk.worker.advance(10s);
            EXPECT_EQ(desk.disk.entries(journals)->size(), 0U);
        }
    }
}

TEST(JournalTest, TakesNoHarmFromAPlaceThatCouldNotBePrepared) {
    for (const int error : {ENOSPC, EROFS, EACCES}) {
        for (int call = 0; call < 12; ++call) {
            SCOPED_TRACE(testing::Message() << "call " << call << ", errno " << error);
            Desk desk;
            desk.operations.failAt(call, error);
            Journal journal = desk.makeJournal();
            journal.prepare();
            desk.worker.advance(0ms);
            for (int edit = 0; edit < 3; ++edit) {
                desk.type(journal);
                desk.worker.advance(200ms);
            }
            desk.operations.failAt(-1, 0);
            EXPECT_FALSE(desk.type(journal));
            EXPECT_EQ(desk.recovered()->text, desk.typed.text());
        }
    }
}

TEST(JournalTest, WaitsForNothingWhenItsProcessDiedBeforeTheFirstEdit) {
    for (int call = 0; call < 8; ++call) {
        SCOPED_TRACE(call);
        Desk desk;
        {
            Journal journal = desk.makeJournal();
            desk.operations.dieBefore(call);
            journal.prepare();
            desk.worker.advance(0ms);
            desk.operations.dieBefore(0);
        }
        EXPECT_TRUE(desk.waiting().empty());
        EXPECT_EQ(desk.disk.entries(journals)->size(), 0U);
    }
}

TEST(JournalTest, BringsBackEveryEditOfAKilledProcess) {
    for (const auto& file : {std::optional(page), std::optional<std::filesystem::path>()}) {
        Desk desk(file);
        Journal journal = desk.makeJournal();
        for (int edit = 0; edit < 200; ++edit) {
            ASSERT_FALSE(desk.type(journal));
            const auto recovered = desk.recovered();
            ASSERT_TRUE(recovered);
            ASSERT_EQ(recovered->text, desk.typed.text());
            EXPECT_TRUE(recovered->isWhole);
            EXPECT_EQ(recovered->file, file ? File::unchanged : File::none);
        }
    }
}

TEST(JournalTest, KnowsToWhichDocumentItBelongs) {
    Desk desk;
    Journal journal = desk.makeJournal();
    desk.type(journal);
    const auto waiting = desk.waiting();
    ASSERT_EQ(waiting.size(), 1U);
    ASSERT_TRUE(waiting.front().head());
    EXPECT_EQ(waiting.front().head()->file, page);
}

TEST(JournalTest, IsGoneWithoutATraceOnceRemoved) {
    for (const WorkerQueue::Duration pause : {0ms, 2000ms}) {
        Desk desk;
        Journal journal = desk.makeJournal();
        desk.type(journal);
        desk.worker.advance(pause);
        journal.remove();
        desk.worker.advance(10s);
        EXPECT_EQ(desk.disk.entries(journals)->size(), 0U);
    }
}

TEST(JournalTest, BelongsToTheSavedTextAfterSaving) {
    Desk desk;
    Journal journal = desk.makeJournal();
    desk.type(journal);
    desk.disk.place(page, desk.typed.text());
    journal.rebase(baseOf(page, desk.typed.text()));
    EXPECT_FALSE(desk.recovered());
    desk.type(journal);
    EXPECT_EQ(desk.recovered()->text, desk.typed.text());
    EXPECT_EQ(desk.recovered()->file, File::unchanged);
}

TEST(JournalTest, HasNothingToBringBackWhenTheFileWasSavedBeforeTheDeath) {
    Desk desk;
    Journal journal = desk.makeJournal();
    desk.type(journal);
    desk.disk.place(page, desk.typed.text());
    desk.worker.advance(1s);
    EXPECT_EQ(desk.recovered()->file, File::saved);
}

TEST(JournalTest, KeepsBothTextsWhenTheFileChangedSince) {
    Desk desk;
    Journal journal = desk.makeJournal();
    for (int edit = 0; edit < 20; ++edit)
        desk.type(journal);
    desk.worker.advance(20ms);
    desk.disk.place(page, "von jemand anderem");
    EXPECT_EQ(desk.recovered()->text, desk.typed.text());
    EXPECT_TRUE(desk.recovered()->isWhole);
    EXPECT_EQ(desk.recovered()->file, File::changed);
    EXPECT_EQ(desk.disk.content(page), "von jemand anderem");

    desk.disk.unlink(page);
    EXPECT_EQ(desk.recovered()->text, desk.typed.text());
    EXPECT_EQ(desk.recovered()->file, File::missing);
}

TEST(JournalTest, GivesAtLeastWhatWasTypedWhenTheFileChangedBeforeItWasCopied) {
    Desk desk;
    Journal journal = desk.makeJournal();
    journal.append({0, std::int64_t(pageText.size())}, "neu" + pageText);
    journal.append({3, std::int64_t(pageText.size())}, "neuer" + pageText);
    desk.disk.place(page, "von jemand anderem");
    const auto recovered = desk.recovered();
    EXPECT_FALSE(recovered->text);
    EXPECT_FALSE(recovered->isWhole);
    EXPECT_EQ(recovered->typed, "neu\ner\n");
}

TEST(JournalTest, HasCopiedTheTextBeforeTheProgramEnds) {
    Desk desk;
    {
        Journal journal = desk.makeJournal();
        desk.type(journal);
    }
    desk.disk.place(page, "von jemand anderem");
    EXPECT_EQ(desk.recovered()->text, desk.typed.text());
}

TEST(JournalTest, CopesWithTextsThatAreEmptyOrHoldAnyByte) {
    Desk desk(page, "");
    Journal journal = desk.makeJournal();
    const std::string anything("\0\r\n\xff\xc3\xa4", 6);
    EXPECT_FALSE(journal.append({0, 0}, anything));
    EXPECT_EQ(desk.recovered()->text, anything);
    EXPECT_FALSE(journal.append({0, 0}, ""));
    EXPECT_EQ(desk.recovered()->text, "");
}

TEST(JournalTest, TakesAnyFileName) {
    const std::filesystem::path odd = "/web/Zeile\nzwei \xff " + std::string(3'500, 'n') + ".html";
    Desk desk(odd);
    Journal journal = desk.makeJournal();
    desk.type(journal);
    EXPECT_EQ(desk.waiting().front().head()->file, odd);
}

TEST(JournalTest, IsWrittenAnewBeforeItOutgrowsTheText) {
    Desk desk;
    Journal journal = desk.makeJournal();
    std::size_t largest = 0;
    for (int edit = 0; edit < 60'000; ++edit) {
        ASSERT_FALSE(desk.type(journal));
        desk.worker.advance(1ms);
        if (edit % 1'000 == 0)
            largest = std::max(largest, desk.sizeOfJournal());
    }
    EXPECT_GT(largest, 800'000U);
    EXPECT_LT(largest, 1'100'000U);
    EXPECT_EQ(desk.recovered()->text, desk.typed.text());
    EXPECT_TRUE(desk.recovered()->isWhole);
    desk.worker.advance(1s);
    EXPECT_LT(desk.sizeOfJournal(), 1'100'000U);
}

TEST(JournalTest, CatchesUpWhenTheDiskTakesAnEditAgain) {
    // Which calls the edits make differs with the failures; every one of the first is hit.
    for (const int error : {ENOSPC, EDQUOT, EIO, EROFS}) {
        for (int call = 0; call < 40; ++call) {
            SCOPED_TRACE(testing::Message() << "call " << call << ", errno " << error);
            Desk desk;
            desk.operations.failAt(call, error);
            Journal journal = desk.makeJournal();
            for (int edit = 0; edit < 8; ++edit) {
                desk.type(journal);
                desk.worker.advance(200ms);
            }
            desk.operations.failAt(-1, 0);
            EXPECT_FALSE(desk.type(journal));
            const auto recovered = desk.recovered();
            ASSERT_TRUE(recovered);
            EXPECT_EQ(recovered->text, desk.typed.text());
            EXPECT_TRUE(recovered->isWhole);
        }
    }
}

TEST(JournalTest, IsNotDisturbedByInterruptedOrShortCalls) {
    for (const bool interrupted : {true, false}) {
        for (int call = 0; call < 40; ++call) {
            SCOPED_TRACE(call);
            Desk desk;
            if (interrupted)
                desk.operations.failAt(call, EINTR);
            else
                desk.operations.cutShortAt(call);
            Journal journal = desk.makeJournal();
            for (int edit = 0; edit < 8; ++edit) {
                EXPECT_FALSE(desk.type(journal));
                desk.worker.advance(200ms);
            }
            EXPECT_EQ(desk.recovered()->text, desk.typed.text());
        }
    }
}

TEST(JournalTest, SaysThatItCannotBeWritten) {
    Desk desk;
    Journal journal(desk.operations, desk.worker, "/fehlt", desk.base);
    EXPECT_EQ(desk.type(journal), std::errc::no_such_file_or_directory);
    desk.disk.place("/fehlt", std::nullopt);
    EXPECT_FALSE(desk.type(journal));
    EXPECT_EQ(WaitingJournal::allIn(desk.disk, "/fehlt").front().read().text, desk.typed.text());
}

TEST(JournalTest, IsCompleteAtEveryMomentAtWhichTheProcessMayDie) {
    for (const bool within : {false, true}) {
        for (int call = 0; call < 60; ++call) {
            SCOPED_TRACE(testing::Message() << (within ? "within " : "before ") << call);
            Desk desk;
            if (within)
                desk.operations.dieWithin(call);
            else
                desk.operations.dieBefore(call);
            // The texts at the last edit that succeeded and at the one that was under way.
            std::string shown = pageText;
            std::string underWay = pageText;
            Journal journal = desk.makeJournal();
            for (int edit = 0; edit < 12; ++edit) {
                const TextChange change = desk.typed.type();
                if (desk.operations.count() <= call)
                    underWay = desk.typed.text();
                const std::error_code error = journal.append(change, desk.typed.text());
                if (!error && desk.operations.count() <= call)
                    shown = desk.typed.text();
                desk.worker.advance(150ms);
            }
            const auto recovered = desk.recovered();
            const std::string text = recovered ? recovered->text.value_or("(lost)") : pageText;
            EXPECT_TRUE(text == shown || text == underWay) << text;
        }
    }
}

TEST(JournalTest, LosesAtMostASecondOfRestlessTypingToAPowerCut) {
    for (const auto names : {SimulatedDisk::UnsyncedNames::lost, SimulatedDisk::UnsyncedNames::kept}) {
        for (const auto& file : {std::optional(page), std::optional<std::filesystem::path>()}) {
            for (int keys = 1; keys < 150; ++keys) {
                Desk desk(file);
                std::vector<std::string> texts{pageText};
                {
                    Journal journal = desk.makeJournal();
                    for (int key = 0; key < keys; ++key) {
                        desk.worker.advance(30ms);
                        desk.type(journal);
                        texts.push_back(desk.typed.text());
                    }
                    desk.disk.cutPower(names);
                    desk.operations.dieBefore(0);
                }
                const auto recovered = desk.recovered();
                const std::string text = recovered ? recovered->text.value_or("(lost)") : pageText;
                const std::size_t keysInASecond = 1s / 30ms;
                const std::size_t first = texts.size() > keysInASecond ? texts.size() - keysInASecond : 0;
                const auto acceptable = texts.begin() + static_cast<std::ptrdiff_t>(first);
                EXPECT_NE(std::find(acceptable, texts.end(), text), texts.end())
                    << "after " << keys << " keys: " << text;
            }
        }
    }
}

TEST(JournalTest, LosesAtMostASecondToAPowerCutWhileItIsWrittenAnew) {
    const std::string text(700'000, 'x');
    for (int pause = 0; pause < 1'500; pause += 100) {
        SCOPED_TRACE(pause);
        Desk desk(page, text);
        std::vector<std::string> texts;
        {
            Journal journal = desk.makeJournal();
            std::string typed = text;
            for (int key = 0; key < 5; ++key) {
                typed += std::string(300'000, static_cast<char>('a' + key));
                journal.append({std::int64_t(text.size()), 0}, typed);
                desk.worker.advance(600ms);
                texts.push_back(typed);
            }
            desk.worker.advance(WorkerQueue::Duration(pause));
            desk.disk.cutPower(SimulatedDisk::UnsyncedNames::lost);
            desk.operations.dieBefore(0);
        }
        const auto recovered = desk.recovered();
        ASSERT_TRUE(recovered && recovered->text);
        EXPECT_TRUE(*recovered->text == texts.back());
        EXPECT_TRUE(recovered->isWhole);
    }
}

/// What a file on the disk and the journal together give back after `save` was killed.
void expectOldOrNew(Desk& desk, const std::string& saved) {
    const std::string content = desk.disk.content(page).value_or("(missing)");
    if (content == saved || content == pageText)
        return;
    const auto recovered = desk.recovered();
    ASSERT_TRUE(recovered && recovered->text);
    EXPECT_EQ(*recovered->text, saved);
    EXPECT_TRUE(recovered->wasOverwriting);
    EXPECT_TRUE(recovered->isWhole);
}

TEST(JournalTest, HasTheNewTextWheneverAFileIsTornByOverwritingIt) {
    // A second name keeps the file from being replaced.
    for (const auto names : {SimulatedDisk::UnsyncedNames::lost, SimulatedDisk::UnsyncedNames::kept}) {
        for (const bool cut : {false, true}) {
            for (int call = 0; call < 60; ++call) {
                SCOPED_TRACE(call);
                Desk desk;
                std::string saved;
                {
                    Journal journal = desk.makeJournal();
                    for (int edit = 0; edit < 30; ++edit)
                        desk.type(journal);
                    saved = desk.typed.text();
                    desk.disk.addLink(page);
                    desk.operations.dieWithin(desk.operations.count() + call);
                    SafeFileWriter::write(desk.operations, page, saved,
                                          [&] { return journal.keepCopy(saved); });
                    if (cut)
                        desk.disk.cutPower(names);
                    desk.operations.dieBefore(0);
                }
                expectOldOrNew(desk, saved);
            }
        }
    }
}

} // namespace
} // namespace corvanta
