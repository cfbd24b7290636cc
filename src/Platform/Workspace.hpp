#pragma once

#include <filesystem>
#include <string>

namespace corvanta {

/// The desktop around the program: other programs that show what this one does not. Nothing is waited for and
/// no result is told.
class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// Opens an address with the program that the user chose for its kind.
    virtual void open(const std::string& url) = 0;

    /// Shows the folder that holds the file or folder at `path`, with it selected, in the file manager.
    virtual void showInFileManager(const std::filesystem::path& path) = 0;
};

} // namespace corvanta
