#pragma once

#include "Platform/Workspace.hpp"

namespace corvanta {

/// The desktop as freedesktop.org's specifications describe it.
class DesktopWorkspace final : public Workspace {
public:
    void open(const std::string& url) override;

    /// Through org.freedesktop.FileManager1; where no file manager speaks it, the folder is opened.
    void showInFileManager(const std::filesystem::path& path) override;
};

} // namespace corvanta
