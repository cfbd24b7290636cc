#pragma once

#include "PreviewColumnFixture.hpp"

#include <gtest/gtest.h>

#include <chrono>

namespace corvanta {

/// A preview column that shows pages which try to get at what they should not.
class HostilePageFixture : public PreviewColumnFixture {
protected:
    /// The page tried what it could; its source and its place are as they were.
    void expectNothingHappened() {
        letPass(std::chrono::milliseconds(600));
        EXPECT_EQ(edits, 0) << source;
        EXPECT_EQ(inPage("location.href"), "vmpreview://dokument/index.html");
    }
};

} // namespace corvanta
