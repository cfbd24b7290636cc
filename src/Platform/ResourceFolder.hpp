#pragma once

#include <filesystem>
#include <optional>

namespace corvanta {

/// The folder of the files that come with the program: share/corvanta beside the folder "bin" that
/// `executable` lies in. It is the same in the build tree and after the installation. Nothing when there is
/// no such folder.
std::optional<std::filesystem::path> resourceFolder(const std::filesystem::path& executable);

/// The path of the running program, links resolved; empty when the system does not say.
std::filesystem::path runningExecutable();

} // namespace corvanta
