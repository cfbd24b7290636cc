#include "Platform/PosixFileManager.hpp"

#include "Support/TemporaryFolder.hpp"
#include "Support/UnprivilegedUser.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <fstream>
#include <iterator>

namespace corvanta {
namespace {

class PosixFileManagerTest : public testing::Test {
protected:
    static void write(const std::filesystem::path& file, const std::string& bytes) {
        std::ofstream(file, std::ios::binary) << bytes;
    }

    /// The error of reading `file`, which must fail.
    std::error_code failure(const std::filesystem::path& file) {
        std::error_code reason;
        EXPECT_FALSE(files.contents(file, reason).has_value());
        return reason;
    }

    TemporaryFolder folder;
    PosixFileManager files;
    std::error_code error;
};

TEST_F(PosixFileManagerTest, ReadsEveryByte) {
    const std::string bytes("<p>\0\r\n\xff\xfe\xc3\xa4", 10);
    write(folder / "seite.html", bytes);
    error = make_error_code(std::errc::io_error);
    EXPECT_EQ(files.contents(folder / "seite.html", error), bytes);
    EXPECT_FALSE(error);
}

TEST_F(PosixFileManagerTest, ReadsAnEmptyFile) {
    write(folder / "leer.css", "");
    EXPECT_EQ(files.contents(folder / "leer.css", error), "");
    EXPECT_FALSE(error);
}

TEST_F(PosixFileManagerTest, ReadsALargeFile) {
    std::string bytes(5'000'000, 'x');
    bytes.back() = 'y';
    write(folder / "gross.js", bytes);
    EXPECT_EQ(files.contents(folder / "gross.js", error), bytes);
}

TEST_F(PosixFileManagerTest, ReadsAFileThatIsLongerThanItsSizeSays) {
    // The kernel's own files have the size 0; to the reader they are files that grew after it asked.
    ASSERT_EQ(std::filesystem::file_size("/proc/self/status"), 0U);
    const auto bytes = files.contents("/proc/self/status", error);
    ASSERT_TRUE(bytes.has_value());
    EXPECT_NE(bytes->find("Pid:"), std::string::npos);
    EXPECT_EQ(bytes->back(), '\n');
}

TEST_F(PosixFileManagerTest, FollowsLinks) {
    write(folder / "seite.html", "x");
    std::filesystem::create_symlink("seite.html", folder / "verweis.html");
    EXPECT_EQ(files.contents(folder / "verweis.html", error), "x");
}

TEST_F(PosixFileManagerTest, SaysWhyAFileCannotBeRead) {
    EXPECT_EQ(failure(folder / "fehlt.html"), std::errc::no_such_file_or_directory);

    write(folder / "seite.html", "x");
    EXPECT_EQ(failure(folder / "seite.html" / "darunter"), std::errc::not_a_directory);

    std::filesystem::create_symlink("kreis", folder / "kreis");
    EXPECT_EQ(failure(folder / "kreis"), std::errc::too_many_symbolic_link_levels);
}

TEST_F(PosixFileManagerTest, RefusesAFolder) {
    EXPECT_EQ(failure(folder.path()), std::errc::not_supported);
}

TEST_F(PosixFileManagerTest, RefusesADevice) {
    EXPECT_EQ(failure("/dev/null"), std::errc::not_supported);
    EXPECT_EQ(failure("/dev/zero"), std::errc::not_supported);
}

TEST_F(PosixFileManagerTest, RefusesAPipeWithoutWaitingForItsWriter) {
    ASSERT_EQ(::mkfifo((folder / "rohr").c_str(), 0600), 0);
    EXPECT_EQ(failure(folder / "rohr"), std::errc::not_supported);
}

TEST_F(PosixFileManagerTest, RefusesASocket) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = folder / "dose";
    ASSERT_LT(name.size(), sizeof address.sun_path);
    name.copy(address.sun_path, name.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(failure(name), std::errc::not_supported);
    ::close(socket);
}

TEST_F(PosixFileManagerTest, RefusesAFileThatMayNotBeRead) {
    const UnprivilegedUser user(folder.path());
    write(folder / "geheim.html", "x");
    ASSERT_EQ(::chmod((folder / "geheim.html").c_str(), 0), 0);
    EXPECT_EQ(failure(folder / "geheim.html"), std::errc::permission_denied);
}

TEST_F(PosixFileManagerTest, LeavesNoDescriptorBehind) {
    const auto openDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    write(folder / "seite.html", "x");
    const auto before = openDescriptors();
    files.contents(folder / "seite.html", error);
    failure(folder.path());
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(PosixFileManagerTest, KnowsTheSizeOfRegularFilesOnly) {
    write(folder / "seite.html", "12345");
    std::filesystem::create_symlink("seite.html", folder / "verweis.html");
    ASSERT_EQ(::mkfifo((folder / "rohr").c_str(), 0600), 0);
    EXPECT_EQ(files.fileSize(folder / "seite.html"), 5U);
    EXPECT_EQ(files.fileSize(folder / "verweis.html"), 5U);
    EXPECT_EQ(files.fileSize(folder.path()), std::nullopt);
    EXPECT_EQ(files.fileSize(folder / "rohr"), std::nullopt);
    EXPECT_EQ(files.fileSize(folder / "fehlt"), std::nullopt);
}

TEST_F(PosixFileManagerTest, ListsOnlyWhatIsAReadableFolder) {
    const UnprivilegedUser user(folder.path());
    std::filesystem::create_directory(folder / "offen");
    std::filesystem::create_directory(folder / "zu");
    ASSERT_EQ(::chmod((folder / "zu").c_str(), 0300), 0);
    write(folder / "seite.html", "x");
    EXPECT_TRUE(files.isListable(folder / "offen"));
    EXPECT_FALSE(files.isListable(folder / "zu"));
    EXPECT_FALSE(files.isListable(folder / "seite.html"));
    EXPECT_FALSE(files.isListable(folder / "fehlt"));
    ASSERT_EQ(::chmod((folder / "zu").c_str(), 0700), 0);
}

TEST_F(PosixFileManagerTest, ListsEverythingInAFolderInTheOrderOfTheNames) {
    write(folder / "b.json", "x");
    write(folder / ".versteckt", "x");
    write(folder / "B.json", "x");
    std::filesystem::create_directory(folder / "a");
    write(folder / "a" / "darin.json", "x");
    std::filesystem::create_symlink("nirgends", folder / "link");
    const std::vector<std::filesystem::path> all{folder / ".versteckt", folder / "B.json", folder / "a",
                                                 folder / "b.json", folder / "link"};
    EXPECT_EQ(files.contentsOfFolder(folder.path()), all);
    EXPECT_EQ(files.contentsOfFolder(folder / "a" / "darin.json"), std::nullopt);
    EXPECT_EQ(files.contentsOfFolder(folder / "fehlt"), std::nullopt);
}

TEST_F(PosixFileManagerTest, ListsAnEmptyFolder) {
    EXPECT_EQ(files.contentsOfFolder(folder.path()), std::vector<std::filesystem::path>());
}

TEST_F(PosixFileManagerTest, ResolvesLinksAndDots) {
    std::filesystem::create_directories(folder / "echt" / "tief");
    std::filesystem::create_directory_symlink(folder / "echt" / "tief", folder / "kurz");
    EXPECT_EQ(files.resolvingSymlinks(folder / "kurz" / "." / "seite.html"),
              folder / "echt" / "tief" / "seite.html");
    // ".." leads out of the folder behind the link, not out of the one that holds the link.
    EXPECT_EQ(files.resolvingSymlinks(folder / "kurz" / ".." / "a.html"), folder / "echt" / "a.html");
}

TEST_F(PosixFileManagerTest, ResolvesWhatDoesNotExistAsFarAsItDoes) {
    std::filesystem::create_directory(folder / "echt");
    std::filesystem::create_directory_symlink("echt", folder / "kurz");
    EXPECT_EQ(files.resolvingSymlinks(folder / "kurz" / "neu" / ".." / "b.html"), folder / "echt" / "b.html");
}

TEST_F(PosixFileManagerTest, ResolvesACircleOfLinksToItsPlainPath) {
    std::filesystem::create_symlink("kreis", folder / "kreis");
    EXPECT_EQ(files.resolvingSymlinks(folder / "." / "kreis" / "a"), folder / "kreis" / "a");
}

} // namespace
} // namespace corvanta
