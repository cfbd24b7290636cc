#pragma once

#include "Platform/FileOperations.hpp"

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// Passes every call on and writes down, with the time, those that change the disk, from whatever thread, so
/// that they can be made again on another disk. Files are written to at their end only.
class TracedFileOperations final : public FileOperations {
public:
    using Clock = std::chrono::steady_clock;

    explicit TracedFileOperations(FileOperations& real) : real_(real) {}

    /// Makes all calls again, in their order, that had been carried out at `moment`. A sync counts for what
    /// had been done before it began, and only once it has ended: nobody knows what it had reached in
    /// between.
    void replay(FileOperations& disk, Clock::time_point moment) const {
        const std::lock_guard lock(mutex_);
        std::map<int, int> descriptors;
        for (const Call& call : calls_) {
            if (call.end <= moment)
                call.make(disk, descriptors);
        }
    }

    int open(const std::filesystem::path& path, int flags, mode_t mode) override {
        const int descriptor = real_.open(path, flags, mode);
        note(descriptor, [=](FileOperations& disk, Descriptors& descriptors) {
            descriptors[descriptor] = disk.open(path, flags, mode);
        });
        return descriptor;
    }
    int close(int descriptor) override {
        // Before it, because the number may be another file's right after it.
        note(0, [=](FileOperations& disk, Descriptors& descriptors) {
            disk.close(descriptors.extract(descriptor).mapped());
        });
        return real_.close(descriptor);
    }
    ssize_t read(int descriptor, void* bytes, std::size_t size) override {
        return real_.read(descriptor, bytes, size);
    }
    ssize_t write(int descriptor, const void* bytes, std::size_t size) override {
        const ssize_t count = real_.write(descriptor, bytes, size);
        if (count > 0) {
            const std::string written(static_cast<const char*>(bytes), static_cast<std::size_t>(count));
            note(0, [=](FileOperations& disk, Descriptors& descriptors) {
                disk.write(descriptors.at(descriptor), written.data(), written.size());
            });
        }
        return count;
    }
    int ftruncate(int descriptor, off_t size) override {
        return noted(real_.ftruncate(descriptor, size), [=](FileOperations& disk, Descriptors& descriptors) {
            disk.ftruncate(descriptors.at(descriptor), size);
        });
    }
    int fallocate(int descriptor, off_t size) override {
        return noted(real_.fallocate(descriptor, size), [=](FileOperations& disk, Descriptors& descriptors) {
            disk.fallocate(descriptors.at(descriptor), size);
        });
    }
    int fsync(int descriptor) override {
        return synced([&] { return real_.fsync(descriptor); }, descriptor);
    }
    int fdatasync(int descriptor) override {
        return synced([&] { return real_.fdatasync(descriptor); }, descriptor);
    }
    int flock(int descriptor, int operation) override { return real_.flock(descriptor, operation); }
    int fstat(int descriptor, struct stat& status) override { return real_.fstat(descriptor, status); }
    int fchown(int descriptor, uid_t owner, gid_t group) override {
        return real_.fchown(descriptor, owner, group);
    }
    int fchmod(int descriptor, mode_t mode) override { return real_.fchmod(descriptor, mode); }
    ssize_t flistxattr(int descriptor, char* list, std::size_t size) override {
        return real_.flistxattr(descriptor, list, size);
    }
    ssize_t fgetxattr(int descriptor, const char* name, void* value, std::size_t size) override {
        return real_.fgetxattr(descriptor, name, value, size);
    }
    int fsetxattr(int descriptor, const char* name, const void* value, std::size_t size) override {
        return real_.fsetxattr(descriptor, name, value, size);
    }
    int fremovexattr(int descriptor, const char* name) override {
        return real_.fremovexattr(descriptor, name);
    }
    int lstat(const std::filesystem::path& path, struct stat& status) override {
        return real_.lstat(path, status);
    }
    ssize_t readlink(const std::filesystem::path& path, char* target, std::size_t size) override {
        return real_.readlink(path, target, size);
    }
    int rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
        return noted(real_.rename(from, to),
                     [=](FileOperations& disk, Descriptors&) { disk.rename(from, to); });
    }
    int unlink(const std::filesystem::path& path) override {
        return noted(real_.unlink(path), [=](FileOperations& disk, Descriptors&) { disk.unlink(path); });
    }
    int mkdir(const std::filesystem::path& path, mode_t mode) override {
        return noted(real_.mkdir(path, mode),
                     [=](FileOperations& disk, Descriptors&) { disk.mkdir(path, mode); });
    }
    int rmdir(const std::filesystem::path& path) override {
        return noted(real_.rmdir(path), [=](FileOperations& disk, Descriptors&) { disk.rmdir(path); });
    }
    std::optional<std::vector<std::string>> entries(const std::filesystem::path& path) override {
        return real_.entries(path);
    }

private:
    /// Of the traced files, the descriptors on the other disk.
    using Descriptors = std::map<int, int>;
    using Making = std::function<void(FileOperations&, Descriptors&)>;

    struct Call {
        Clock::time_point end;
        Making make;
    };

    void note(int outcome, Making making) {
        if (outcome < 0)
            return;
        const std::lock_guard lock(mutex_);
        calls_.push_back({Clock::now(), std::move(making)});
    }

    int noted(int outcome, Making making) {
        note(outcome, std::move(making));
        return outcome;
    }

    template <typename Sync>
    int synced(Sync sync, int descriptor) {
        std::size_t place = 0;
        {
            const std::lock_guard lock(mutex_);
            place = calls_.size();
            calls_.push_back({Clock::time_point::max(), [=](FileOperations& disk, Descriptors& descriptors) {
                                  disk.fsync(descriptors.at(descriptor));
                              }});
        }
        const int outcome = sync();
        if (outcome == 0) {
            const std::lock_guard lock(mutex_);
            calls_[place].end = Clock::now();
        }
        return outcome;
    }

    FileOperations& real_;
    mutable std::mutex mutex_;
    std::vector<Call> calls_;
};

} // namespace corvanta
