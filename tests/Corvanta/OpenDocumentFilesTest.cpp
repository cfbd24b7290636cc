// Files of any content: looking at one changes nothing, and saving changes what was edited and nothing else.

#include "Corvanta/OpenDocument.hpp"
#include "EditorCore/TextDecoding.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <cstdlib>
#include <random>
#include <string>
#include <system_error>

namespace corvanta {
namespace {

/// A file made of pieces in several encodings, cut off anywhere.
std::string anyFile(std::mt19937& random) {
    static const std::array<std::string, 9> pieces{"<p>Text</p>\n",
                                                   "Grüße\r\n",
                                                   "Gr\xFC\xDF"
                                                   "e\r",
                                                   std::string("\0\0", 2),
                                                   "\xEF\xBB\xBF",
                                                   "\xFF\xFE",
                                                   "\xF0\x9F\x98\x80 \t",
                                                   "\x81\x8D\x8F\x90\x9D",
                                                   std::string("a\0b\0", 4)};
    std::string bytes;
    for (auto count = random() % 8; count > 0; --count)
        bytes += pieces.at(random() % pieces.size());
    if (random() % 4 == 0)
        bytes += static_cast<char>(random() % 256);
    if (random() % 4 == 0)
        bytes.resize(random() % (bytes.size() + 1));
    return bytes;
}

TEST(OpenDocumentFilesTest, ChangesOfAFileWhatWasEditedAndNothingElse) {
    const int files = std::getenv("CORVANTA_LONG_TESTS") == nullptr ? 500 : 10'000;
    const TemporaryFolder folder;
    const PosixFileManager fileManager;
    const std::filesystem::path page = folder / "seite.html";
    std::mt19937 random(1);
    for (int i = 0; i < files; ++i) {
        SCOPED_TRACE(i);
        const std::string bytes = anyFile(random);
        folder.write("seite.html", bytes);
        struct stat before {};
        ASSERT_EQ(::stat(page.c_str(), &before), 0);

        std::error_code error;
        auto document = OpenDocument::read(fileManager, page, error);
        ASSERT_TRUE(document);
        EXPECT_FALSE(document->isEdited());
        EXPECT_FALSE(document->save());
        struct stat after {};
        ASSERT_EQ(::stat(page.c_str(), &after), 0);
        EXPECT_EQ(fileManager.contents(page, error), bytes);
        EXPECT_EQ(after.st_ino, before.st_ino);
        EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);

        const std::string decoded = TextDecoding::string(bytes);
        document->document.text.replace(0, 0, "neu");
        EXPECT_FALSE(document->save());
        EXPECT_EQ(fileManager.contents(page, error), "neu" + decoded);
    }
}

} // namespace
} // namespace corvanta
