#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// What was on the screen, to be there again after the next start.
struct Session {
    struct Window {
        /// Absent for a document that was never saved.
        std::optional<std::filesystem::path> file;

        /// The name of the journal that holds what is not saved; absent when everything is.
        std::optional<std::string> journal;

        /// The selection in UTF-16 code units.
        std::int64_t caret = 0;
        std::int64_t selectionLength = 0;

        /// The first line that is visible, counted from 0.
        std::int64_t firstLine = 0;

        bool showsPreview = true;
        bool showsAssistant = false;

        /// In the toolkit's pixels; of a window that fills the screen, what it goes back to.
        int width = 0;
        int height = 0;
        bool isMaximized = false;

        /// How much of `width` the code has; 0: half of it.
        int codeWidth = 0;

        friend bool operator==(const Window&, const Window&) = default;
    };

    /// The frontmost last.
    std::vector<Window> windows;

    /// Whether the program ended in good order, so that nobody need be told of what comes back.
    bool hasEndedWell = false;

    friend bool operator==(const Session&, const Session&) = default;
};

} // namespace corvanta
