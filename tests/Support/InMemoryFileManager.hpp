#pragma once

#include "Platform/FileManager.hpp"

#include <map>
#include <set>

namespace corvanta {

/// A file system of a test's own making; paths outside `files` do not exist.
class InMemoryFileManager final : public FileManager {
public:
    std::optional<std::string> contents(const std::filesystem::path& path,
                                        std::error_code& error) const override {
        if (const auto failure = failures.find(path); failure != failures.end()) {
            error = make_error_code(failure->second);
            return std::nullopt;
        }
        const auto file = files.find(path);
        if (file == files.end()) {
            error = make_error_code(std::errc::no_such_file_or_directory);
            return std::nullopt;
        }
        error.clear();
        return file->second;
    }

    std::optional<std::uintmax_t> fileSize(const std::filesystem::path& path) const override {
        const auto file = files.find(path);
        return file == files.end() ? std::nullopt : std::optional<std::uintmax_t>(file->second.size());
    }

    std::optional<std::vector<std::filesystem::path>>
    contentsOfFolder(const std::filesystem::path& path) const override {
        if (!isListable(path))
            return std::nullopt;
        std::vector<std::filesystem::path> contents;
        for (const auto& [file, bytes] : files) {
            if (file.parent_path() == path)
                contents.push_back(file);
        }
        return contents;
    }

    bool isListable(const std::filesystem::path& path) const override { return !unlistable.contains(path); }

    std::filesystem::path resolvingSymlinks(const std::filesystem::path& path) const override {
        const auto link = links.find(path);
        return link == links.end() ? path.lexically_normal() : link->second;
    }

    std::map<std::filesystem::path, std::string> files;
    std::map<std::filesystem::path, std::errc> failures;
    std::map<std::filesystem::path, std::filesystem::path> links;
    std::set<std::filesystem::path> unlistable;
};

} // namespace corvanta
