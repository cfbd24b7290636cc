#pragma once

#include "ChildProcess.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <fstream>

namespace corvanta {

/// A test of corvanta-text with a folder for its files.
class ToolTest : public testing::Test {
protected:
    /// The path of a new file with this content.
    std::string file(const std::string& name, std::string_view content) {
        const std::filesystem::path path = folder / name;
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }

    static void expectFailure(const ProgramResult& result, int status, const std::string& message) {
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "corvanta-text: " + message + "\n");
    }

    TemporaryFolder folder;
};

} // namespace corvanta
