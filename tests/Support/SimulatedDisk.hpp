#pragma once

#include "Platform/FileOperations.hpp"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// A disk in memory that knows what of its content would outlast a power cut: of a file what it held when it
/// was last synced, of a folder the names that it held then. Paths are absolute. Knows neither owners nor
/// extended attributes, and every lock is free.
class SimulatedDisk final : public FileOperations {
public:
    /// What a power cut leaves of names that were not synced.
    enum class UnsyncedNames { lost, kept };

    /// Everything that was not synced is gone, also files that are open.
    void cutPower(UnsyncedNames names) {
        opened_.clear();
        restore(*root_, names);
    }

    /// A file, or a folder when `content` is absent, that has long been on the disk.
    void place(const std::filesystem::path& path, std::optional<std::string> content) {
        auto node = std::make_shared<Node>();
        node->isFolder = !content;
        node->links = 1;
        node->content = node->synced = content.value_or("");
        Node& folder = *find(path.parent_path());
        folder.names[path.filename()] = folder.syncedNames[path.filename()] = node;
    }

    /// Gives the file at `path` a second name somewhere else.
    void addLink(const std::filesystem::path& path) { ++find(path)->links; }

    std::optional<std::string> content(const std::filesystem::path& path) const {
        const auto node = find(path);
        return node && !node->isFolder ? std::optional(node->content) : std::nullopt;
    }

    int open(const std::filesystem::path& path, int flags, mode_t mode) override {
        auto node = find(path);
        if (node && (flags & O_CREAT) != 0 && (flags & O_EXCL) != 0)
            return fail(EEXIST);
        if (!node && (flags & O_CREAT) != 0) {
            const auto folder = find(path.parent_path());
            if (!folder)
                return fail(ENOENT);
            node = std::make_shared<Node>();
            node->mode = mode;
            node->links = 1;
            folder->names[path.filename()] = node;
        }
        if (!node)
            return fail(ENOENT);
        if (node->isFolder && (flags & O_ACCMODE) != O_RDONLY)
            return fail(EISDIR);
        if (!node->isFolder && (flags & O_DIRECTORY) != 0)
            return fail(ENOTDIR);
        if ((flags & O_TRUNC) != 0)
            node->content.clear();
        opened_[next_] = {node, 0, (flags & O_APPEND) != 0};
        return next_++;
    }

    int close(int descriptor) override { return opened_.erase(descriptor) == 1 ? 0 : fail(EBADF); }

    ssize_t read(int descriptor, void* bytes, std::size_t size) override {
        Opened& file = opened_.at(descriptor);
        const std::string& content = file.node->content;
        const std::size_t start = std::min(file.position, content.size());
        const std::size_t count = std::min(size, content.size() - start);
        std::memcpy(bytes, content.data() + start, count);
        file.position = start + count;
        return static_cast<ssize_t>(count);
    }

    ssize_t write(int descriptor, const void* bytes, std::size_t size) override {
        Opened& file = opened_.at(descriptor);
        std::string& content = file.node->content;
        if (file.appends)
            file.position = content.size();
        content.resize(std::max(content.size(), file.position + size));
        std::memcpy(content.data() + file.position, bytes, size);
        file.position += size;
        return static_cast<ssize_t>(size);
    }

    int ftruncate(int descriptor, off_t size) override {
        opened_.at(descriptor).node->content.resize(static_cast<std::size_t>(size));
        return 0;
    }

    int fallocate(int descriptor, off_t size) override {
        std::string& content = opened_.at(descriptor).node->content;
        content.resize(std::max(content.size(), static_cast<std::size_t>(size)));
        return 0;
    }

    int fsync(int descriptor) override {
        Node& node = *opened_.at(descriptor).node;
        node.synced = node.content;
        node.syncedNames = node.names;
        return 0;
    }

    int fdatasync(int descriptor) override { return fsync(descriptor); }
    int flock(int, int) override { return 0; }

    int fstat(int descriptor, struct stat& status) override {
        status = statusOf(*opened_.at(descriptor).node);
        return 0;
    }

    int fchown(int, uid_t, gid_t) override { return 0; }
    int fchmod(int descriptor, mode_t mode) override {
        opened_.at(descriptor).node->mode = mode;
        return 0;
    }
    ssize_t flistxattr(int, char*, std::size_t) override { return 0; }
    ssize_t fgetxattr(int, const char*, void*, std::size_t) override { return fail(ENODATA); }
    int fsetxattr(int, const char*, const void*, std::size_t) override { return fail(ENOTSUP); }
    int fremovexattr(int, const char*) override { return fail(ENODATA); }

    int lstat(const std::filesystem::path& path, struct stat& status) override {
        const auto node = find(path);
        if (!node)
            return fail(ENOENT);
        status = statusOf(*node);
        return 0;
    }

    ssize_t readlink(const std::filesystem::path& path, char*, std::size_t) override {
        return fail(find(path) ? EINVAL : ENOENT);
    }

    int rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
        const auto node = find(from);
        const auto folder = find(to.parent_path());
        if (!node || !folder)
            return fail(ENOENT);
        find(from.parent_path())->names.erase(from.filename());
        folder->names[to.filename()] = node;
        return 0;
    }

    int unlink(const std::filesystem::path& path) override {
        const auto node = find(path);
        if (!node)
            return fail(ENOENT);
        if (node->isFolder)
            return fail(EISDIR);
        find(path.parent_path())->names.erase(path.filename());
        return 0;
    }

    int mkdir(const std::filesystem::path& path, mode_t mode) override {
        const auto folder = find(path.parent_path());
        if (!folder || find(path))
            return fail(folder ? EEXIST : ENOENT);
        auto node = std::make_shared<Node>();
        node->isFolder = true;
        node->mode = mode;
        folder->names[path.filename()] = node;
        return 0;
    }

    int rmdir(const std::filesystem::path& path) override {
        const auto node = find(path);
        if (!node || !node->names.empty())
            return fail(node ? ENOTEMPTY : ENOENT);
        find(path.parent_path())->names.erase(path.filename());
        return 0;
    }

    std::optional<std::vector<std::string>> entries(const std::filesystem::path& path) override {
        const auto node = find(path);
        if (!node || !node->isFolder) {
            fail(ENOENT);
            return std::nullopt;
        }
        std::vector<std::string> names;
        for (const auto& [name, entry] : node->names)
            names.push_back(name);
        return names;
    }

private:
    struct Node;
    using Names = std::map<std::string, std::shared_ptr<Node>>;

    struct Node {
        bool isFolder = false;
        mode_t mode = 0600;
        nlink_t links = 1;
        std::string content;
        std::string synced;
        Names names;
        Names syncedNames;
    };

    struct Opened {
        std::shared_ptr<Node> node;
        std::size_t position = 0;
        bool appends = false;
    };

    static int fail(int error) {
        errno = error;
        return -1;
    }

    static struct stat statusOf(const Node& node) {
        struct stat status {};
        status.st_mode = (node.isFolder ? S_IFDIR : S_IFREG) | node.mode;
        status.st_nlink = node.links;
        status.st_size = static_cast<off_t>(node.content.size());
        status.st_ino = reinterpret_cast<ino_t>(&node);
        return status;
    }

    std::shared_ptr<Node> find(const std::filesystem::path& path) const {
        std::shared_ptr<Node> node = root_;
        for (const std::filesystem::path& name : path.relative_path()) {
            const auto entry = node->names.find(name);
            if (entry == node->names.end())
                return nullptr;
            node = entry->second;
        }
        return node;
    }

    static void restore(Node& node, UnsyncedNames names) {
        node.content = node.synced;
        if (names == UnsyncedNames::lost)
            node.names = node.syncedNames;
        else
            node.syncedNames = node.names;
        for (const auto& [name, entry] : node.names)
            restore(*entry, names);
    }

    std::shared_ptr<Node> root_ = [] {
        auto root = std::make_shared<Node>();
        root->isFolder = true;
        return root;
    }();
    std::map<int, Opened> opened_;
    int next_ = 3;
};

} // namespace corvanta
