#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvanta {

/// What the words behind the program's name ask for.
struct LaunchArguments {
    enum class Request { open, service, help, version, wrongCall };

    /// A file to open.
    struct File {
        /// As it was written: a path, from the folder the program was called in, or a URI.
        std::string name;

        /// The line to jump to, the first being 1.
        std::optional<int> line;

        friend bool operator==(const File&, const File&) = default;
    };

    Request request = Request::open;
    std::vector<File> files;

    /// Whether the standard input is to become a new document.
    bool readsStandardInput = false;

    /// The word that no option has, for a wrong call.
    std::string unknownOption;

    /// `exists` answers whether there is a file of a name. A name that ends in a colon and a number is a file
    /// and its line, unless there is a file of the whole name or none of the shorter one.
    static LaunchArguments parse(std::span<const std::string> words,
                                 const std::function<bool(const std::string&)>& exists);
};

} // namespace corvanta
