// Saving, killed before, within and after every single system call, with every call failing for every reason,
// and with the power cut at every call.

#include "Platform/PosixFileOperations.hpp"
#include "Platform/SafeFileWriter.hpp"
#include "Support/InterruptedFileOperations.hpp"
#include "Support/SimulatedDisk.hpp"
#include "Support/TemporaryFolder.hpp"
#include "Support/UnprivilegedUser.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace corvanta {
namespace {

const std::string oldContent(6'000, 'a');
const std::string newContent(9'000, 'n');
constexpr std::array errors{ENOSPC, EDQUOT, EIO, EROFS};

enum class Scene { plainFile, symbolicLink, hardLink, unwritableFolder, newFile };

/// A folder with a file to be saved, and what must be kept of it.
class Stage {
public:
    explicit Stage(Scene scene) : scene_(scene) {
        if (scene == Scene::unwritableFolder)
            user_ = std::make_unique<UnprivilegedUser>(folder_.path());
        if (scene == Scene::newFile)
            return;
        folder_.write("echt.html", oldContent);
        ::chmod(file().c_str(), 0640);
        if (::geteuid() == 0)
            owned_ = ::chown(file().c_str(), 12345, 23456) == 0;
        attributed_ = ::setxattr(file().c_str(), "user.herkunft", "wert", 4, 0) == 0;
        if (scene == Scene::symbolicLink)
            std::filesystem::create_symlink("echt.html", folder_ / "seite.html");
        if (scene == Scene::hardLink)
            std::filesystem::create_hard_link(file(), folder_ / "seite.html");
        if (scene == Scene::unwritableFolder)
            ::chmod(folder_.path().c_str(), 0500);
        ::lstat(file().c_str(), &before_);
    }

    /// By what name the user saves.
    std::filesystem::path name() const {
        const bool hasASecondName = scene_ == Scene::symbolicLink || scene_ == Scene::hardLink;
        return hasASecondName ? folder_ / "seite.html" : file();
    }

    std::optional<std::string> content() const {
        std::ifstream stream(name(), std::ios::binary);
        if (!stream)
            return std::nullopt;
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }

    std::optional<std::string> contentBefore() const {
        return scene_ == Scene::newFile ? std::nullopt : std::optional(oldContent);
    }

    /// Whether the file lost nothing of what it had besides its content.
    void expectTheFileIsStillItself() const {
        if (scene_ == Scene::newFile)
            return;
        struct stat now {};
        ASSERT_EQ(::lstat(file().c_str(), &now), 0);
        EXPECT_EQ(now.st_mode, before_.st_mode);
        EXPECT_EQ(now.st_nlink, before_.st_nlink);
        if (owned_) {
            EXPECT_EQ(now.st_uid, 12345U);
            EXPECT_EQ(now.st_gid, 23456U);
        }
        if (attributed_) {
            std::array<char, 10> value{};
            EXPECT_EQ(::getxattr(file().c_str(), "user.herkunft", value.data(), value.size()), 4);
        }
        EXPECT_EQ(std::filesystem::is_symlink(name()), scene_ == Scene::symbolicLink);
        EXPECT_TRUE(std::filesystem::equivalent(name(), file()));
    }

    /// Whether a save that failed cleaned up.
    std::size_t entryCount() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder_.path()),
                                                      std::filesystem::directory_iterator()));
    }

    std::size_t entryCountBefore() const {
        switch (scene_) {
        case Scene::newFile:
            return 0;
        case Scene::symbolicLink:
        case Scene::hardLink:
            return 2;
        default:
            return 1;
        }
    }

private:
    std::filesystem::path file() const { return folder_ / "echt.html"; }

    Scene scene_;
    TemporaryFolder folder_;
    std::unique_ptr<UnprivilegedUser> user_;
    struct stat before_ {};
    bool owned_ = false;
    bool attributed_ = false;
};

/// One save by real calls, of which one may go wrong.
struct Save {
    explicit Save(const Stage& stage, const std::function<void(InterruptedFileOperations&)>& prepare) {
        prepare(operations);
        error = SafeFileWriter::write(operations, stage.name(), newContent, [this] {
            copied = true;
            return std::error_code();
        });
    }

    PosixFileOperations real;
    InterruptedFileOperations operations{real};
    bool copied = false;
    std::error_code error;
};

int callsOfASave(Scene scene) {
    const Stage stage(scene);
    return Save(stage, [](auto&) {}).operations.count();
}

class SafeFileWriterFaultsTest : public testing::TestWithParam<Scene> {
protected:
    /// In place the content may be torn, but only when it is safe in a copy.
    static void expectOldOrNew(const Stage& stage, const Save& save) {
        const auto content = stage.content();
        const bool isOld = content == stage.contentBefore();
        const bool isNew = content == newContent;
        EXPECT_TRUE(isOld || isNew || save.copied) << "torn: " << content.value_or("").size() << " bytes";
    }

    static bool isOverwritten() {
        return GetParam() == Scene::hardLink || GetParam() == Scene::unwritableFolder;
    }
};

TEST_P(SafeFileWriterFaultsTest, SavesWhenNothingFails) {
    const Stage stage(GetParam());
    const Save save(stage, [](auto&) {});
    EXPECT_FALSE(save.error);
    EXPECT_TRUE(stage.content() == newContent);
    EXPECT_EQ(save.copied, isOverwritten());
    stage.expectTheFileIsStillItself();
}

TEST_P(SafeFileWriterFaultsTest, LeavesOldOrNewWhenKilledBeforeOrAfterAnyCall) {
    const int calls = callsOfASave(GetParam());
    for (int call = 0; call <= calls; ++call) {
        SCOPED_TRACE(call);
        const Stage stage(GetParam());
        const Save save(stage, [&](auto& operations) { operations.dieBefore(call); });
        expectOldOrNew(stage, save);
        stage.expectTheFileIsStillItself();
    }
}

TEST_P(SafeFileWriterFaultsTest, LeavesOldOrNewWhenKilledWithinAnyCall) {
    const int calls = callsOfASave(GetParam());
    for (int call = 0; call < calls; ++call) {
        SCOPED_TRACE(call);
        const Stage stage(GetParam());
        const Save save(stage, [&](auto& operations) { operations.dieWithin(call); });
        expectOldOrNew(stage, save);
        stage.expectTheFileIsStillItself();
    }
}

TEST_P(SafeFileWriterFaultsTest, LeavesOldOrNewWhenAnyCallFails) {
    const int calls = callsOfASave(GetParam());
    for (const int error : errors) {
        for (int call = 0; call < calls; ++call) {
            SCOPED_TRACE(testing::Message() << "call " << call << ", errno " << error);
            const Stage stage(GetParam());
            const Save save(stage, [&](auto& operations) { operations.failAt(call, error); });
            expectOldOrNew(stage, save);
            stage.expectTheFileIsStillItself();
            EXPECT_TRUE(save.error || stage.content() == newContent)
                << save.operations.calls().at(static_cast<std::size_t>(call));
            const bool isAsBefore = stage.content() == stage.contentBefore();
            const bool removesFailed = save.operations.calls().at(static_cast<std::size_t>(call)) == "unlink";
            EXPECT_TRUE(!isAsBefore || removesFailed || stage.entryCount() == stage.entryCountBefore());
        }
    }
}

TEST_P(SafeFileWriterFaultsTest, SavesAllTheSameWhenAnyCallIsInterruptedOrShort) {
    const int calls = callsOfASave(GetParam());
    for (int call = 0; call < calls; ++call) {
        SCOPED_TRACE(call);
        for (const bool interrupted : {true, false}) {
            const Stage stage(GetParam());
            const Save save(stage, [&](auto& operations) {
                if (interrupted)
                    operations.failAt(call, EINTR);
                else
                    operations.cutShortAt(call);
            });
            EXPECT_FALSE(save.error);
            EXPECT_TRUE(stage.content() == newContent);
            stage.expectTheFileIsStillItself();
        }
    }
}

TEST_P(SafeFileWriterFaultsTest, OverwritesNothingOfWhichNoCopyCouldBeKept) {
    const Stage stage(GetParam());
    PosixFileOperations operations;
    const auto error = SafeFileWriter::write(operations, stage.name(), newContent,
                                             [] { return make_error_code(std::errc::no_space_on_device); });
    EXPECT_EQ(error == std::errc::no_space_on_device, isOverwritten());
    EXPECT_TRUE(stage.content() == (isOverwritten() ? oldContent : newContent));
}

std::string nameOfScene(const testing::TestParamInfo<Scene>& scene) {
    constexpr std::array names{"PlainFile", "SymbolicLink", "HardLink", "UnwritableFolder", "NewFile"};
    return names.at(static_cast<std::size_t>(scene.param));
}

INSTANTIATE_TEST_SUITE_P(Scenes, SafeFileWriterFaultsTest,
                         testing::Values(Scene::plainFile, Scene::symbolicLink, Scene::hardLink,
                                         Scene::unwritableFolder, Scene::newFile),
                         nameOfScene);

using UnsyncedNames = SimulatedDisk::UnsyncedNames;

class SafeFileWriterPowerCutTest : public testing::TestWithParam<UnsyncedNames> {
protected:
    static std::error_code save(FileOperations& operations) {
        return SafeFileWriter::write(operations, "/ordner/seite.html", newContent,
                                     [] { return std::error_code(); });
    }
};

TEST_P(SafeFileWriterPowerCutTest, LeavesOldOrNewWheneverThePowerGoes) {
    for (int call = 0;; ++call) {
        SCOPED_TRACE(call);
        SimulatedDisk disk;
        disk.place("/ordner", std::nullopt);
        disk.place("/ordner/seite.html", oldContent);
        InterruptedFileOperations operations(disk);
        operations.dieBefore(call);
        const std::error_code error = save(operations);
        disk.cutPower(GetParam());
        const auto content = disk.content("/ordner/seite.html");
        ASSERT_TRUE(content);
        EXPECT_TRUE(*content == oldContent || *content == newContent) << content->size();
        if (operations.count() <= call) {
            EXPECT_FALSE(error);
            break;
        }
    }
}

TEST_P(SafeFileWriterPowerCutTest, HasSavedForGoodWhenItSaysSo) {
    SimulatedDisk disk;
    disk.place("/ordner", std::nullopt);
    disk.place("/ordner/seite.html", oldContent);
    EXPECT_FALSE(save(disk));
    disk.cutPower(GetParam());
    EXPECT_TRUE(disk.content("/ordner/seite.html") == newContent);
}

TEST_P(SafeFileWriterPowerCutTest, HasMadeANewFileForGoodWhenItSaysSo) {
    SimulatedDisk disk;
    disk.place("/ordner", std::nullopt);
    EXPECT_FALSE(save(disk));
    disk.cutPower(GetParam());
    EXPECT_TRUE(disk.content("/ordner/seite.html") == newContent);
}

std::string nameOfCut(const testing::TestParamInfo<UnsyncedNames>& names) {
    return names.param == UnsyncedNames::lost ? "UnsyncedNamesLost" : "UnsyncedNamesKept";
}

INSTANTIATE_TEST_SUITE_P(Cut, SafeFileWriterPowerCutTest,
                         testing::Values(UnsyncedNames::lost, UnsyncedNames::kept), nameOfCut);

} // namespace
} // namespace corvanta
