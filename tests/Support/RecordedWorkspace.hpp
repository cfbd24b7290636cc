#pragma once

#include "Platform/Workspace.hpp"

#include <vector>

namespace corvanta {

/// Keeps what was to be opened and shown.
class RecordedWorkspace final : public Workspace {
public:
    void open(const std::string& url) override { opened.push_back(url); }
    void showInFileManager(const std::filesystem::path& path) override { shown.push_back(path); }

    std::vector<std::string> opened;
    std::vector<std::filesystem::path> shown;
};

} // namespace corvanta
