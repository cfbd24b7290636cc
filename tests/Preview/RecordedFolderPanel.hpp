#pragma once

#include "Preview/FolderPanel.hpp"

#include <optional>
#include <vector>

namespace corvanta {

/// A dialog whose user always gives `answer`.
class RecordedFolderPanel final : public FolderPanel {
public:
    void choose(const Question& question,
                std::function<void(const std::optional<std::filesystem::path>&)> chosen) override {
        questions.push_back(question);
        chosen(answer);
    }

    std::optional<std::filesystem::path> answer;
    std::vector<Question> questions;
};

} // namespace corvanta
