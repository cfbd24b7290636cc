#include "Platform/SafeFileWriter.hpp"

#include "Support/TemporaryFolder.hpp"
#include "Support/UnprivilegedUser.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <thread>

namespace corvanta {
namespace {

/// As long as this lives no file grows beyond `bytes`, as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        oldHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &oldLimit_);
        rlimit limit = oldLimit_;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &oldLimit_);
        std::signal(SIGXFSZ, oldHandler_);
    }

private:
    rlimit oldLimit_{};
    void (*oldHandler_)(int) = nullptr;
};

/// The umask for the duration of a test.
class Umask {
public:
    explicit Umask(mode_t mask) : old_(::umask(mask)) {}
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;
    ~Umask() { ::umask(old_); }

private:
    mode_t old_;
};

class SafeFileWriterTest : public testing::Test {
protected:
    static void make(const std::filesystem::path& file, const std::string& bytes) {
        std::ofstream(file, std::ios::binary) << bytes;
    }

    static std::string read(const std::filesystem::path& file) {
        std::ostringstream bytes;
        bytes << std::ifstream(file, std::ios::binary).rdbuf();
        return bytes.str();
    }

    static struct stat status(const std::filesystem::path& file) {
        struct stat result {};
        EXPECT_EQ(::lstat(file.c_str(), &result), 0) << file;
        return result;
    }

    static mode_t mode(const std::filesystem::path& file) { return status(file).st_mode & 07777; }

    std::set<std::string> entries() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            names.insert(entry.path().filename());
        return names;
    }

    TemporaryFolder folder;
    const std::filesystem::path page = folder / "seite.html";
};

using Names = std::set<std::string>;

TEST_F(SafeFileWriterTest, MakesANewFile) {
    EXPECT_FALSE(SafeFileWriter::write(page, "<p>neu</p>\n"));
    EXPECT_EQ(read(page), "<p>neu</p>\n");
    EXPECT_EQ(entries(), Names{"seite.html"});
}

TEST_F(SafeFileWriterTest, ReplacesTheContent) {
    make(page, "der alte und viel laengere Inhalt");
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    EXPECT_EQ(read(page), "neu");
    EXPECT_EQ(entries(), Names{"seite.html"});
}

TEST_F(SafeFileWriterTest, WritesEveryByteAsItIs) {
    const std::string bytes("\xef\xbb\xbf\0\r\n\r\xff\xc3\xa4\n", 11);
    EXPECT_FALSE(SafeFileWriter::write(page, bytes));
    EXPECT_EQ(read(page), bytes);
}

TEST_F(SafeFileWriterTest, WritesAnEmptyFile) {
    EXPECT_FALSE(SafeFileWriter::write(page, ""));
    EXPECT_EQ(status(page).st_size, 0);

    make(page, "etwas");
    EXPECT_FALSE(SafeFileWriter::write(page, ""));
    EXPECT_EQ(status(page).st_size, 0);
}

TEST_F(SafeFileWriterTest, WritesALargeFile) {
    std::string bytes;
    bytes.resize(20'000'000, 'a');
    bytes.back() = 'z';
    EXPECT_FALSE(SafeFileWriter::write(page, bytes));
    EXPECT_TRUE(read(page) == bytes);
}

TEST_F(SafeFileWriterTest, LeavesTheOldContentToWhoeverHasItOpen) {
    make(page, "alt");
    std::ifstream reader(page, std::ios::binary);
    const ino_t before = status(page).st_ino;
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    std::string seen;
    reader >> seen;
    EXPECT_EQ(seen, "alt");
    EXPECT_NE(status(page).st_ino, before);
}

TEST_F(SafeFileWriterTest, NeverShowsAPartOfAContent) {
    const std::string first(300'000, 'a');
    const std::string second(200'000, 'b');
    make(page, first);
    std::jthread writer([&](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            EXPECT_FALSE(SafeFileWriter::write(page, second));
            EXPECT_FALSE(SafeFileWriter::write(page, first));
        }
    });
    for (int round = 0; round < 200; ++round) {
        const std::string seen = read(page);
        ASSERT_TRUE(seen == first || seen == second) << "saw " << seen.size() << " bytes";
    }
}

TEST_F(SafeFileWriterTest, TakesAFileNameWithoutAFolder) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    const std::error_code error = SafeFileWriter::write("seite.html", "x");
    std::filesystem::current_path(before);
    EXPECT_FALSE(error);
    EXPECT_EQ(read(page), "x");
}

TEST_F(SafeFileWriterTest, TakesTheLongestNameThatAFolderAllows) {
    const std::filesystem::path longest = folder / std::string(255, 'n');
    EXPECT_FALSE(SafeFileWriter::write(longest, "x"));
    EXPECT_FALSE(SafeFileWriter::write(longest, "y"));
    EXPECT_EQ(read(longest), "y");
}

TEST_F(SafeFileWriterTest, KeepsTheMode) {
    const Umask mask(022);
    for (const mode_t kept : {0600U, 0664U, 0755U, 0777U}) {
        make(page, "alt");
        ASSERT_EQ(::chmod(page.c_str(), kept), 0);
        EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
        EXPECT_EQ(mode(page), kept);
    }
}

TEST_F(SafeFileWriterTest, GivesANewFileWhatTheUmaskLeaves) {
    {
        const Umask mask(022);
        EXPECT_FALSE(SafeFileWriter::write(folder / "offen", "x"));
    }
    {
        const Umask mask(077);
        EXPECT_FALSE(SafeFileWriter::write(folder / "eigen", "x"));
    }
    EXPECT_EQ(mode(folder / "offen"), 0644U);
    EXPECT_EQ(mode(folder / "eigen"), 0600U);
}

TEST_F(SafeFileWriterTest, KeepsTheOwner) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file that belongs to somebody else";
    make(page, "alt");
    ASSERT_EQ(::chown(page.c_str(), 12345, 23456), 0);
    ASSERT_EQ(::chmod(page.c_str(), 02750), 0);
    const ino_t before = status(page).st_ino;
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    EXPECT_EQ(status(page).st_uid, 12345U);
    EXPECT_EQ(status(page).st_gid, 23456U);
    EXPECT_EQ(mode(page), 02750U);
    EXPECT_NE(status(page).st_ino, before);
}

TEST_F(SafeFileWriterTest, OverwritesWhenTheOwnerCannotBeKept) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file that belongs to somebody else";
    make(page, "alt, und laenger");
    ASSERT_EQ(::chmod(page.c_str(), 0666), 0);
    const ino_t before = status(page).st_ino;
    {
        const UnprivilegedUser user(folder.path());
        EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    }
    EXPECT_EQ(read(page), "neu");
    EXPECT_EQ(status(page).st_uid, 0U);
    EXPECT_EQ(status(page).st_ino, before);
    EXPECT_EQ(entries(), Names{"seite.html"});
}

TEST_F(SafeFileWriterTest, KeepsExtendedAttributes) {
    make(page, "alt");
    const std::string value("wert\0mit Null", 13);
    if (::setxattr(page.c_str(), "user.herkunft", value.data(), value.size(), 0) != 0)
        GTEST_SKIP() << "this file system knows no extended attributes";
    ASSERT_EQ(::setxattr(page.c_str(), "user.leer", "", 0, 0), 0);
    const ino_t before = status(page).st_ino;
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    std::string seen(100, '\0');
    const ssize_t length = ::getxattr(page.c_str(), "user.herkunft", seen.data(), seen.size());
    ASSERT_GE(length, 0);
    seen.resize(static_cast<std::size_t>(length));
    EXPECT_EQ(seen, value);
    EXPECT_EQ(::getxattr(page.c_str(), "user.leer", nullptr, 0), 0);
    EXPECT_NE(status(page).st_ino, before);
}

/// An access control list as the kernel stores it: the owner may read and write, user 4711 may read, the
/// group and all others nothing.
std::string accessControlList() {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t permissions;
        std::uint32_t id;
    };
    constexpr std::uint32_t version = 2;
    constexpr std::uint32_t none = 0xffffffff;
    constexpr std::array entries{Entry{0x01, 6, none}, Entry{0x02, 4, 4711}, Entry{0x04, 0, none},
                                 Entry{0x10, 4, none}, Entry{0x20, 0, none}};
    std::string list(reinterpret_cast<const char*>(&version), sizeof version);
    return list.append(reinterpret_cast<const char*>(entries.data()), sizeof entries);
}

TEST_F(SafeFileWriterTest, KeepsAnAccessControlList) {
    make(page, "alt");
    const std::string list = accessControlList();
    if (::setxattr(page.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "this file system knows no access control lists";
    const mode_t before = mode(page);
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    std::string seen(list.size(), '\0');
    ASSERT_EQ(::getxattr(page.c_str(), "system.posix_acl_access", seen.data(), seen.size()),
              static_cast<ssize_t>(list.size()));
    EXPECT_EQ(seen, list);
    EXPECT_EQ(mode(page), before);
}

TEST_F(SafeFileWriterTest, DoesNotGiveAnOldFileTheListOfItsFolder) {
    make(page, "alt");
    ASSERT_EQ(::chmod(page.c_str(), 0640), 0);
    const std::string list = accessControlList();
    if (::setxattr(folder.path().c_str(), "system.posix_acl_default", list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "this file system knows no access control lists";
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    EXPECT_LT(::getxattr(page.c_str(), "system.posix_acl_access", nullptr, 0), 0);
    EXPECT_EQ(mode(page), 0640U);

    EXPECT_FALSE(SafeFileWriter::write(folder / "neu.html", "neu"));
    EXPECT_GT(::getxattr((folder / "neu.html").c_str(), "system.posix_acl_access", nullptr, 0), 0);
}

TEST_F(SafeFileWriterTest, WritesBehindALinkAndKeepsIt) {
    std::filesystem::create_directory(folder / "tief");
    make(folder / "tief" / "echt.html", "alt");
    std::filesystem::create_symlink("tief/zwischen.html", page);
    std::filesystem::create_symlink("../tief/echt.html", folder / "tief" / "zwischen.html");
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    EXPECT_TRUE(std::filesystem::is_symlink(page));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "tief" / "zwischen.html"));
    EXPECT_EQ(read(folder / "tief" / "echt.html"), "neu");
    EXPECT_FALSE(std::filesystem::is_symlink(folder / "tief" / "echt.html"));
    EXPECT_EQ(entries(), (Names{"seite.html", "tief"}));
}

TEST_F(SafeFileWriterTest, MakesTheFileThatADanglingLinkNames) {
    std::filesystem::create_directory(folder / "tief");
    std::filesystem::create_symlink("tief/neu.html", page);
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    EXPECT_TRUE(std::filesystem::is_symlink(page));
    EXPECT_EQ(read(folder / "tief" / "neu.html"), "neu");
}

TEST_F(SafeFileWriterTest, FollowsDotsFromTheFolderBehindALink) {
    std::filesystem::create_directories(folder / "a" / "tief");
    std::filesystem::create_directory_symlink("a/tief", folder / "kurz");
    EXPECT_FALSE(SafeFileWriter::write(folder / "kurz" / ".." / "seite.html", "neu"));
    EXPECT_EQ(read(folder / "a" / "seite.html"), "neu");
}

TEST_F(SafeFileWriterTest, RefusesACircleOfLinks) {
    std::filesystem::create_symlink("zweiter", folder / "erster");
    std::filesystem::create_symlink("erster", folder / "zweiter");
    EXPECT_EQ(SafeFileWriter::write(folder / "erster", "neu"), std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(entries(), (Names{"erster", "zweiter"}));
}

TEST_F(SafeFileWriterTest, KeepsAllNamesOfAFile) {
    make(page, "alt");
    const std::filesystem::path other = folder / "zweitname.html";
    std::filesystem::create_hard_link(page, other);
    for (const std::string content : {"kurz", "und laenger als alles davor", ""}) {
        EXPECT_FALSE(SafeFileWriter::write(page, content));
        EXPECT_EQ(read(page), content);
        EXPECT_EQ(read(other), content);
        EXPECT_TRUE(std::filesystem::equivalent(page, other));
    }
    EXPECT_EQ(entries(), (Names{"seite.html", "zweitname.html"}));
}

TEST_F(SafeFileWriterTest, OverwritesInAFolderThatTakesNoNewFile) {
    const UnprivilegedUser user(folder.path());
    make(page, "der alte und laengere Inhalt");
    ASSERT_EQ(::chmod(folder.path().c_str(), 0500), 0);
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    EXPECT_EQ(read(page), "neu");
    EXPECT_EQ(SafeFileWriter::write(folder / "weitere.html", "x"), std::errc::permission_denied);
    EXPECT_EQ(entries(), Names{"seite.html"});
}

TEST_F(SafeFileWriterTest, SavesInAFolderThatCannotBeListed) {
    const UnprivilegedUser user(folder.path());
    make(page, "alt");
    const ino_t before = status(page).st_ino;
    ASSERT_EQ(::chmod(folder.path().c_str(), 0300), 0);
    EXPECT_FALSE(SafeFileWriter::write(page, "neu"));
    EXPECT_EQ(read(page), "neu");
    EXPECT_NE(status(page).st_ino, before);
}

TEST_F(SafeFileWriterTest, RefusesAFileThatMayNotBeWritten) {
    const UnprivilegedUser user(folder.path());
    make(page, "alt");
    ASSERT_EQ(::chmod(page.c_str(), 0444), 0);
    EXPECT_EQ(SafeFileWriter::write(page, "neu"), std::errc::permission_denied);
    EXPECT_EQ(read(page), "alt");
    EXPECT_EQ(entries(), Names{"seite.html"});
}

TEST_F(SafeFileWriterTest, RefusesWhatIsNotARegularFile) {
    std::filesystem::create_directory(page);
    EXPECT_EQ(SafeFileWriter::write(page, "neu"), std::errc::not_supported);
    EXPECT_TRUE(std::filesystem::is_directory(page));

    ASSERT_EQ(::mkfifo((folder / "rohr").c_str(), 0600), 0);
    EXPECT_EQ(SafeFileWriter::write(folder / "rohr", "neu"), std::errc::not_supported);
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "rohr"));

    std::filesystem::create_symlink("/dev/null", folder / "nichts");
    EXPECT_EQ(SafeFileWriter::write(folder / "nichts", "neu"), std::errc::not_supported);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));

    EXPECT_EQ(entries(), (Names{"nichts", "rohr", "seite.html"}));
}

TEST_F(SafeFileWriterTest, SaysWhyAFileCannotBeMade) {
    make(page, "alt");
    EXPECT_EQ(SafeFileWriter::write(page / "darunter", "x"), std::errc::not_a_directory);
    EXPECT_EQ(SafeFileWriter::write(folder / "fehlt" / "neu.html", "x"),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(SafeFileWriter::write(folder / std::string(256, 'n'), "x"), std::errc::filename_too_long);
    EXPECT_EQ(entries(), Names{"seite.html"});
}

TEST_F(SafeFileWriterTest, LeavesTheOldFileWhenTheDiskIsFull) {
    make(page, "alt");
    ASSERT_EQ(::chmod(page.c_str(), 0640), 0);
    const ino_t before = status(page).st_ino;
    {
        const FileSizeLimit limit(4096);
        EXPECT_EQ(SafeFileWriter::write(page, std::string(10'000, 'n')), std::errc::file_too_large);
    }
    EXPECT_EQ(read(page), "alt");
    EXPECT_EQ(mode(page), 0640U);
    EXPECT_EQ(status(page).st_ino, before);
    EXPECT_EQ(entries(), Names{"seite.html"});
}

TEST_F(SafeFileWriterTest, MakesNoNewFileWhenTheDiskIsFull) {
    {
        const FileSizeLimit limit(4096);
        EXPECT_EQ(SafeFileWriter::write(page, std::string(10'000, 'n')), std::errc::file_too_large);
    }
    EXPECT_EQ(entries(), Names());
}

TEST_F(SafeFileWriterTest, LeavesTheOldContentOfAllNamesWhenTheDiskIsFull) {
    make(page, "alt");
    std::filesystem::create_hard_link(page, folder / "zweitname.html");
    {
        const FileSizeLimit limit(4096);
        EXPECT_EQ(SafeFileWriter::write(page, std::string(10'000, 'n')), std::errc::file_too_large);
    }
    EXPECT_EQ(read(page), "alt");
    EXPECT_EQ(read(folder / "zweitname.html"), "alt");
}

TEST_F(SafeFileWriterTest, LeavesNoDescriptorBehind) {
    const auto openDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    const auto before = openDescriptors();
    EXPECT_FALSE(SafeFileWriter::write(page, "x"));
    EXPECT_FALSE(SafeFileWriter::write(page, "y"));
    EXPECT_TRUE(SafeFileWriter::write(folder.path(), "z"));
    EXPECT_EQ(openDescriptors(), before);
}

} // namespace
} // namespace corvanta
