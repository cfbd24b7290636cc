#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace corvanta {

/// The dialog in which the user chooses a folder.
class FolderPanel {
public:
    struct Question {
        /// Where the dialog opens.
        std::filesystem::path folder;
        /// What the button says that chooses.
        std::string prompt;
        /// What the choice is for.
        std::string message;
    };

    FolderPanel() = default;
    FolderPanel(const FolderPanel&) = delete;
    FolderPanel& operator=(const FolderPanel&) = delete;
    virtual ~FolderPanel() = default;

    /// Shows the dialog and calls `chosen` when it is over: with the folder, or with nothing when the user
    /// cancelled. A dialog that ends with its window calls nobody.
    virtual void choose(const Question& question,
                        std::function<void(const std::optional<std::filesystem::path>&)> chosen) = 0;
};

} // namespace corvanta
