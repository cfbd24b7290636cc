#include "Documents/FileIdentity.hpp"

#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace corvanta {
namespace {

TEST(FileIdentityTest, IsTheSameWhateverPathOrLinkLeadsToTheFile) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "tief");
    folder.write("seite.html", "x");
    folder.write("andere.html", "x");
    std::filesystem::create_symlink("seite.html", folder / "verweis.html");
    std::filesystem::create_hard_link(folder / "seite.html", folder / "zweitname.html");
    std::filesystem::create_directory_symlink(".", folder / "kreis");

    const auto page = folder / "seite.html";
    EXPECT_TRUE(areSameFile(page, folder / "verweis.html"));
    EXPECT_TRUE(areSameFile(page, folder / "zweitname.html"));
    EXPECT_TRUE(areSameFile(page, folder / "tief" / ".." / "seite.html"));
    EXPECT_TRUE(areSameFile(page, folder / "kreis" / "kreis" / "seite.html"));
    EXPECT_FALSE(areSameFile(page, folder / "andere.html"));
    EXPECT_FALSE(areSameFile(page, folder / "fehlt.html"));
}

TEST(FileIdentityTest, GoesByThePathWhereNoFileIs) {
    const TemporaryFolder folder;
    EXPECT_FALSE(FileIdentity::of(folder / "fehlt.html"));
    EXPECT_TRUE(areSameFile(folder / "fehlt.html", folder / "." / "fehlt.html"));
    EXPECT_FALSE(areSameFile(folder / "fehlt.html", folder / "auch.html"));
}

} // namespace
} // namespace corvanta
