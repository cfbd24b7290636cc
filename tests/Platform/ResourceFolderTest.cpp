#include "Platform/ResourceFolder.hpp"

#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

TEST(ResourceFolderTest, LiesBesideTheFolderOfTheProgram) {
    const TemporaryFolder prefix;
    std::filesystem::create_directories(prefix / "share/corvanta");
    EXPECT_EQ(resourceFolder(prefix / "bin/corvanta"), prefix / "share/corvanta");
}

TEST(ResourceFolderTest, IsNothingWhenItIsNotThere) {
    const TemporaryFolder prefix;
    EXPECT_EQ(resourceFolder(prefix / "bin/corvanta"), std::nullopt);
}

TEST(ResourceFolderTest, IsNothingWhenAFileIsInItsPlace) {
    const TemporaryFolder prefix;
    std::filesystem::create_directories(prefix / "share");
    prefix.write("share/corvanta", "");
    EXPECT_EQ(resourceFolder(prefix / "bin/corvanta"), std::nullopt);
}

TEST(ResourceFolderTest, IsNothingWhenTheProgramDoesNotKnowWhereItIs) {
    EXPECT_EQ(resourceFolder({}), std::nullopt);
}

TEST(ResourceFolderTest, KnowsTheRunningProgram) {
    EXPECT_TRUE(std::filesystem::exists(runningExecutable()));
    EXPECT_EQ(runningExecutable().filename(), "PlatformTests");
}

} // namespace
} // namespace corvanta
