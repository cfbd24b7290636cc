#include "Corvanta/DocumentController.hpp"

#include "Corvanta/DocumentError.hpp"
#include "Documents/ManualWorkerQueue.hpp"
#include "EditorCore/DocumentTemplate.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Platform/PosixFileOperations.hpp"
#include "Support/InMemoryUserDefaults.hpp"
#include "Support/InterruptedFileOperations.hpp"
#include "Support/ManualMainQueue.hpp"
#include "Support/TemporaryFolder.hpp"
#include "Support/UnprivilegedUser.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using Reaction = OpenDocument::Reaction;

class DocumentControllerTest : public testing::Test {
protected:
    DocumentControllerTest() {
        std::filesystem::create_directory(state / "journale");
        web.write("seite.html", "<p>alt</p>\n");
        start();
    }

    /// A new start of the program. The one before died.
    void start() {
        controller.reset();
        worker = std::make_unique<ManualWorkerQueue>();
        operations = std::make_unique<InterruptedFileOperations>(real);
        controller = std::make_unique<DocumentController>(
            fileManager, defaults, OpenDocument::Services{*operations, queue, *worker, state / "journale"},
            [this](OpenDocument& document, const auto& finding) {
                reactions.push_back(document.reactionTo(finding));
                findings.push_back(finding);
            });
    }

    OpenDocument& open(const std::string& name = "seite.html") {
        std::error_code error;
        OpenDocument* document = controller->open(web / name, error);
        EXPECT_FALSE(error);
        return *document;
    }

    static void setText(OpenDocument& document, const std::string& text) {
        document.document.text = text;
        EXPECT_FALSE(document.textDidChange());
    }

    std::string content(const std::string& name = "seite.html") {
        std::error_code error;
        return fileManager.contents(web / name, error).value_or("(missing)");
    }

    void changeOutside(OpenDocument& document, const std::string& text) {
        web.write("seite.html", text);
        document.lookForOutsideChanges();
        queue.advance(10s);
    }

    std::size_t waitingCount() { return controller->waitingJournals().size(); }

    TemporaryFolder web;
    TemporaryFolder state;
    PosixFileManager fileManager;
    PosixFileOperations real;
    std::unique_ptr<InterruptedFileOperations> operations;
    ManualMainQueue queue;
    std::unique_ptr<ManualWorkerQueue> worker;
    InMemoryUserDefaults defaults;
    std::vector<Reaction> reactions;
    std::vector<OutsideChanges::Finding> findings;
    std::unique_ptr<DocumentController> controller;
};

TEST_F(DocumentControllerTest, OpensEachFileOnceWhateverLeadsToIt) {
    std::filesystem::create_symlink("seite.html", web / "verweis.html");
    std::filesystem::create_hard_link(web / "seite.html", web / "zweitname.html");
    OpenDocument& document = open();
    EXPECT_EQ(&open("verweis.html"), &document);
    EXPECT_EQ(&open("zweitname.html"), &document);
    EXPECT_EQ(&open("../" + web.path().filename().string() + "/seite.html"), &document);
    EXPECT_EQ(controller->documents().size(), 1U);
    web.write("andere.html", "<p>alt</p>\n");
    EXPECT_NE(&open("andere.html"), &document);
}

TEST_F(DocumentControllerTest, KnowsAFileAgainThatWasReplacedBySaving) {
    OpenDocument& document = open();
    setText(document, "neu");
    EXPECT_FALSE(document.save());
    EXPECT_EQ(&open(), &document);
}

TEST_F(DocumentControllerTest, SaysWhyADocumentCannotBeOpened) {
    std::error_code error;
    EXPECT_EQ(controller->open(web.path(), error), nullptr);
    EXPECT_EQ(error, DocumentError::fileReadCorruptFile);
    EXPECT_EQ(controller->open(web / "fehlt.html", error), nullptr);
    EXPECT_TRUE(controller->documents().empty());
    EXPECT_TRUE(controller->recentDocuments().files().empty());
}

TEST_F(DocumentControllerTest, RemembersWhatWasOpenedAndSaved) {
    open();
    EXPECT_FALSE(controller->saveAs(controller->openUntitled(), web / "neu.html"));
    const std::vector<std::filesystem::path> expected{web / "neu.html", web / "seite.html"};
    EXPECT_EQ(controller->recentDocuments().files(), expected);
}

TEST_F(DocumentControllerTest, ChangesNotAByteOrTimeOfAFileThatIsOnlyLookedAt) {
    const std::array<timespec, 2> times{timespec{1'000, 1}, timespec{2'000, 2}};
    ASSERT_EQ(::utimensat(-100, (web / "seite.html").c_str(), times.data(), 0), 0);
    struct stat before {};
    ASSERT_EQ(::stat((web / "seite.html").c_str(), &before), 0);
    OpenDocument& document = open();
    EXPECT_FALSE(document.save());
    setText(document, "neu");
    setText(document, "<p>alt</p>\n");
    EXPECT_FALSE(document.save());
    controller->close(document);
    struct stat after {};
    ASSERT_EQ(::stat((web / "seite.html").c_str(), &after), 0);
    EXPECT_EQ(after.st_mtim.tv_sec, 2'000);
    EXPECT_EQ(after.st_mtim.tv_nsec, 2);
    EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
    EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST_F(DocumentControllerTest, DuplicatesTheTextIntoAnUnsavedDocument) {
    OpenDocument& original = open();
    setText(original, "neu");
    OpenDocument& copy = controller->duplicate(original);
    EXPECT_EQ(copy.document.text, "neu");
    EXPECT_FALSE(copy.fileLocation());
    EXPECT_TRUE(copy.isEdited());
    EXPECT_EQ(content(), "<p>alt</p>\n");

    start();
    EXPECT_EQ(waitingCount(), 2U) << "the duplicate was nowhere kept";
}

TEST_F(DocumentControllerTest, RevertsToTheFile) {
    OpenDocument& document = open();
    setText(document, "neu");
    web.write("seite.html", "von jemand anderem");
    EXPECT_FALSE(document.revert(fileManager));
    EXPECT_EQ(document.document.text, "von jemand anderem");
    EXPECT_FALSE(document.isEdited());
    document.lookForOutsideChanges();
    queue.advance(10s);
    EXPECT_TRUE(findings.empty());
    std::filesystem::remove(web / "seite.html");
    setText(document, "neu");
    EXPECT_TRUE(document.revert(fileManager));
    EXPECT_EQ(document.document.text, "neu");
}

TEST_F(DocumentControllerTest, RefusesToSaveOverAFileThatIsOpenInAnotherWindow) {
    OpenDocument& document = open();
    OpenDocument& other = controller->openUntitled();
    EXPECT_EQ(controller->saveAs(other, web / "seite.html"), DocumentError::fileIsOpenElsewhere);
    EXPECT_EQ(content(), "<p>alt</p>\n");
    setText(document, "neu");
    EXPECT_FALSE(controller->saveAs(document, web / "seite.html"));
    EXPECT_EQ(content(), "neu");
}

TEST_F(DocumentControllerTest, LeavesNothingBehindOnceSavedOrClosed) {
    OpenDocument& document = open();
    setText(document, "neu");
    EXPECT_FALSE(document.save());
    EXPECT_EQ(waitingCount(), 0U);
    setText(document, "noch neuer");
    controller->close(document);
    controller->openUntitled();
    start();
    EXPECT_EQ(waitingCount(), 0U);
    EXPECT_TRUE(std::filesystem::is_empty(state / "journale"));
}

TEST_F(DocumentControllerTest, BringsBackWhatADeadProcessLeftUnsaved) {
    setText(open(), "neu, nie gesichert");
    setText(controller->openUntitled(), "ohne Titel, nie gesichert");
    for (int deaths = 0; deaths < 3; ++deaths) {
        start();
        auto waiting = controller->waitingJournals();
        ASSERT_EQ(waiting.size(), 2U);
        for (WaitingJournal& journal : waiting)
            ASSERT_TRUE(controller->restore(journal, journal.read()));
        std::vector<std::string> texts;
        for (const OpenDocument* document : controller->documents()) {
            EXPECT_TRUE(document->isEdited());
            texts.push_back(document->document.text);
        }
        std::ranges::sort(texts);
        EXPECT_EQ(texts, (std::vector<std::string>{"neu, nie gesichert", "ohne Titel, nie gesichert"}));
        EXPECT_EQ(content(), "<p>alt</p>\n");
    }
    OpenDocument* document = controller->find(web / "seite.html");
    ASSERT_TRUE(document);
    EXPECT_FALSE(document->save());
    EXPECT_EQ(content(), "neu, nie gesichert");
}

TEST_F(DocumentControllerTest, BringsBackNothingThatTheFileHas) {
    OpenDocument& document = open();
    setText(document, "neu");
    setText(document, "<p>alt</p>\n");
    EXPECT_FALSE(document.isEdited());
    start();
    auto waiting = controller->waitingJournals();
    ASSERT_EQ(waiting.size(), 1U);
    EXPECT_FALSE(controller->restore(waiting.front(), waiting.front().read()));
    waiting.clear();
    EXPECT_EQ(waitingCount(), 0U);
}

TEST_F(DocumentControllerTest, KeepsBothTextsWhenTheFileChangedAfterTheDeath) {
    setText(open(), "neu, nie gesichert");
    worker->advance(1s);
    start();
    web.write("seite.html", "von jemand anderem");
    auto waiting = controller->waitingJournals();
    const auto recovered = waiting.front().read();
    EXPECT_EQ(recovered.file, WaitingJournal::File::changed);
    OpenDocument* document = controller->restore(waiting.front(), recovered);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->document.text, "neu, nie gesichert");
    EXPECT_TRUE(document->isEdited());
    EXPECT_EQ(content(), "von jemand anderem");
    EXPECT_FALSE(document->revert(fileManager));
    EXPECT_EQ(document->document.text, "von jemand anderem");
}

TEST_F(DocumentControllerTest, BringsBackTheTextOfAFileThatIsGoneOrOpen) {
    setText(open(), "neu, nie gesichert");
    worker->advance(1s);
    start();
    open();
    auto waiting = controller->waitingJournals();
    const OpenDocument* document = controller->restore(waiting.front(), waiting.front().read());
    ASSERT_TRUE(document);
    EXPECT_FALSE(document->fileLocation());
    EXPECT_EQ(document->document.text, "neu, nie gesichert");

    start();
    std::filesystem::remove(web / "seite.html");
    waiting = controller->waitingJournals();
    ASSERT_EQ(waiting.size(), 1U);
    EXPECT_TRUE(controller->restore(waiting.front(), waiting.front().read()));
}

TEST_F(DocumentControllerTest, FollowsAChangedFileWhenNothingWasEdited) {
    OpenDocument& document = open();
    changeOutside(document, "von jemand anderem");
    ASSERT_EQ(reactions, std::vector{Reaction::follow});
    document.follow(findings.front());
    EXPECT_EQ(document.document.text, "von jemand anderem");
    EXPECT_FALSE(document.isEdited());
    changeOutside(document, "und noch einmal");
    EXPECT_EQ(reactions, (std::vector{Reaction::follow, Reaction::follow}));
}

TEST_F(DocumentControllerTest, AsksWhenBothTheTextAndTheFileChanged) {
    OpenDocument& document = open();
    setText(document, "eigenes");
    changeOutside(document, "von jemand anderem");
    ASSERT_EQ(reactions, std::vector{Reaction::ask});
    EXPECT_EQ(document.document.text, "eigenes");
    EXPECT_EQ(document.save(), DocumentError::fileChangedOutside);
    EXPECT_EQ(content(), "von jemand anderem");
    document.keepOwnText(findings.front());
    EXPECT_FALSE(document.save());
    EXPECT_EQ(content(), "eigenes");
}

TEST_F(DocumentControllerTest, DoesNotOverwriteAChangeThatNobodyNoticedYet) {
    OpenDocument& document = open();
    setText(document, "eigenes");
    web.write("seite.html", "von jemand anderem");
    EXPECT_EQ(document.save(), DocumentError::fileChangedOutside);
    EXPECT_EQ(content(), "von jemand anderem");
    EXPECT_FALSE(document.saveOverOutsideChange());
    EXPECT_EQ(content(), "eigenes");
    queue.advance(10s);
    EXPECT_TRUE(findings.empty());
}

TEST_F(DocumentControllerTest, IsSavedWhenSomebodyElseWroteTheSame) {
    OpenDocument& document = open();
    setText(document, "dasselbe");
    changeOutside(document, "dasselbe");
    EXPECT_EQ(reactions, std::vector{Reaction::none});
    EXPECT_FALSE(document.isEdited());
    setText(document, "wieder dasselbe");
    web.write("seite.html", "wieder dasselbe");
    EXPECT_FALSE(document.save());
    EXPECT_FALSE(document.isEdited());
}

TEST_F(DocumentControllerTest, KeepsTheTextOfAFileThatVanished) {
    OpenDocument& document = open();
    std::filesystem::remove(web / "seite.html");
    document.lookForOutsideChanges();
    queue.advance(10s);
    ASSERT_EQ(reactions, std::vector{Reaction::tell});
    EXPECT_TRUE(document.isEdited());
    EXPECT_FALSE(document.save());
    EXPECT_EQ(content(), "<p>alt</p>\n");
    EXPECT_FALSE(document.isEdited());
}

TEST_F(DocumentControllerTest, SavesAFileOfAnyEncodingWithoutTakingItForChanged) {
    web.write("seite.html", "Gr\xFC\xDF");
    OpenDocument& document = open();
    EXPECT_EQ(document.document.text, "Grüß");
    document.lookForOutsideChanges();
    queue.advance(10s);
    EXPECT_TRUE(findings.empty());
    setText(document, "Grüße");
    EXPECT_FALSE(document.save());
    EXPECT_EQ(content(), "Grüße");
}

TEST_F(DocumentControllerTest, KeepsEveryTextThatCouldNotBeSaved) {
    OpenDocument& document = open();
    setText(document, "neu");
    std::filesystem::remove(web / "seite.html");
    std::filesystem::create_directory(web / "seite.html");
    EXPECT_EQ(document.save(), std::errc::not_supported);
    EXPECT_EQ(controller->saveAs(document, web / "fehlt" / "seite.html"),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(controller->saveAs(document, web / std::string(256, 'n')), std::errc::filename_too_long);
    EXPECT_TRUE(document.isEdited());
    EXPECT_EQ(document.fileLocation(), web / "seite.html");
    start();
    auto waiting = controller->waitingJournals();
    ASSERT_EQ(waiting.size(), 1U);
    EXPECT_EQ(waiting.front().read().text, "neu");
}

TEST_F(DocumentControllerTest, IsNotAlarmedByItsOwnTornFile) {
    std::filesystem::create_hard_link(web / "seite.html", web / "zweitname.html");
    const std::string text(5'000, 'n');
    for (int call = 0; call < 40; ++call) {
        SCOPED_TRACE(call);
        web.write("seite.html", "<p>alt</p>\n");
        start();
        for (WaitingJournal& journal : controller->waitingJournals())
            journal.discard();
        findings.clear();
        OpenDocument& document = open();
        setText(document, text);
        operations->failAt(operations->count() + call, ENOSPC);
        const std::error_code error = document.save();
        document.lookForOutsideChanges();
        queue.advance(10s);
        EXPECT_TRUE(findings.empty());
        EXPECT_EQ(document.isEdited(), static_cast<bool>(error));
        EXPECT_FALSE(document.save());
        EXPECT_TRUE(content() == text);
        EXPECT_TRUE(content("zweitname.html") == text);
    }
}

TEST_F(DocumentControllerTest, TellsWhenTypedTextCannotBeKept) {
    OpenDocument& document = open();
    std::filesystem::remove(state / "journale");
    document.document.text = "neu";
    EXPECT_TRUE(document.textDidChange());
    EXPECT_FALSE(document.save());
    EXPECT_EQ(content(), "neu");
}

TEST_F(DocumentControllerTest, BringsEverythingToTheDiskBeforeItIsEnded) {
    setText(open(), "neu");
    setText(controller->openUntitled(), "neu");
    const auto before = std::ranges::count(operations->calls(), "fdatasync");
    controller->bringToDisk();
    EXPECT_EQ(std::ranges::count(operations->calls(), "fdatasync"), before + 2);
}

} // namespace
} // namespace corvanta
