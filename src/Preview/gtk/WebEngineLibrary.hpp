#pragma once

#include "Preview/gtk/WebEngine.hpp"

#include <filesystem>

namespace corvanta {

/// The program's own library with everything that touches the web engine. It is loaded while the program
/// runs: the engine is larger than all the rest, and loading it would make the text wait.
struct WebEngineLibrary {
    WebEngineLibrary() = delete;

    /// Makes the engine, which the caller owns; to be called on the main thread.
    using Maker = WebEngine* (*)();

    /// Where the library lies: in lib/corvanta beside the folder of the running program, in the build tree as
    /// in an installation.
    static std::filesystem::path file();

    /// Loads the library for as long as the program runs; null when `file` is none, for a reason that is
    /// logged. May be called on any thread.
    static Maker load(const std::filesystem::path& file);
};

} // namespace corvanta
