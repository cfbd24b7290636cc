#pragma once

#include "Support/TemporaryFolder.hpp"
#include "Support/gtk/Keyboard.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

namespace corvanta {

/// The program as a process of its own, which only its windows tell about.
class ProgramTest : public testing::Test {
protected:
    /// Waits until the user is at the window with this title.
    static testing::AssertionResult isAt(const std::string& title);

    /// Waits until the user is asked or told something, in a window without a title.
    static testing::AssertionResult isAtADialog();

    static testing::AssertionResult
    waitForTitle(const std::function<bool(const std::optional<std::string>&)>& fits);

    /// What a file in `folder` holds.
    std::string content(const std::string& name) const;

    TemporaryFolder folder;
    /// Where the program keeps its state.
    TemporaryFolder state;
    Keyboard keyboard;
};

} // namespace corvanta
