#pragma once

#include "Platform/FileOperations.hpp"

#include <cerrno>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// Passes every call on to other operations and counts them. One call may fail or be cut short, and from
/// any call on the process may be dead: then nothing that it still does has an effect. Calls are numbered
/// from 0 in the order in which they are made; closing a file is among them.
class InterruptedFileOperations final : public FileOperations {
public:
    explicit InterruptedFileOperations(FileOperations& real) : real_(real) {}

    /// The call of this number fails with this errno and has no effect.
    void failAt(int call, int error) {
        failing_ = call;
        error_ = error;
    }

    /// The call of this number, if it reads or writes, handles only half of its bytes.
    void cutShortAt(int call) { shortened_ = call; }

    /// The call of this number and all after it have no effect.
    void dieBefore(int call) { dead_ = call; }

    /// As `dieBefore`, but the call before it, if it writes, writes only half of its bytes.
    void dieWithin(int call) {
        shortened_ = call;
        dead_ = call + 1;
    }

    /// Called before each call with its number.
    std::function<void(int)> beforeCall;

    /// The names of the calls made.
    const std::vector<std::string>& calls() const { return calls_; }

    int count() const { return static_cast<int>(calls_.size()); }

    int open(const std::filesystem::path& path, int flags, mode_t mode) override {
        return perform("open", [&] { return real_.open(path, flags, mode); });
    }
    int close(int descriptor) override {
        // The system closes the files of a dead process; here somebody has to.
        const int outcome = perform("close", [] { return 0; });
        const int error = errno;
        const int closed = real_.close(descriptor);
        if (outcome == 0)
            return closed;
        errno = error;
        return outcome;
    }
    ssize_t read(int descriptor, void* bytes, std::size_t size) override {
        return perform("read", [&] { return real_.read(descriptor, bytes, portion(size)); });
    }
    ssize_t write(int descriptor, const void* bytes, std::size_t size) override {
        return perform("write", [&] { return real_.write(descriptor, bytes, portion(size)); });
    }
    int ftruncate(int descriptor, off_t size) override {
        return perform("ftruncate", [&] { return real_.ftruncate(descriptor, size); });
    }
    int fallocate(int descriptor, off_t size) override {
        return perform("fallocate", [&] { return real_.fallocate(descriptor, size); });
    }
    int fsync(int descriptor) override {
        return perform("fsync", [&] { return real_.fsync(descriptor); });
    }
    int fdatasync(int descriptor) override {
        return perform("fdatasync", [&] { return real_.fdatasync(descriptor); });
    }
    int flock(int descriptor, int operation) override {
        return perform("flock", [&] { return real_.flock(descriptor, operation); });
    }
    int fstat(int descriptor, struct stat& status) override {
        return perform("fstat", [&] { return real_.fstat(descriptor, status); });
    }
    int fchown(int descriptor, uid_t owner, gid_t group) override {
        return perform("fchown", [&] { return real_.fchown(descriptor, owner, group); });
    }
    int fchmod(int descriptor, mode_t mode) override {
        return perform("fchmod", [&] { return real_.fchmod(descriptor, mode); });
    }
    ssize_t flistxattr(int descriptor, char* list, std::size_t size) override {
        return perform("flistxattr", [&] { return real_.flistxattr(descriptor, list, size); });
    }
    ssize_t fgetxattr(int descriptor, const char* name, void* value, std::size_t size) override {
        return perform("fgetxattr", [&] { return real_.fgetxattr(descriptor, name, value, size); });
    }
    int fsetxattr(int descriptor, const char* name, const void* value, std::size_t size) override {
        return perform("fsetxattr", [&] { return real_.fsetxattr(descriptor, name, value, size); });
    }
    int fremovexattr(int descriptor, const char* name) override {
        return perform("fremovexattr", [&] { return real_.fremovexattr(descriptor, name); });
    }
    int lstat(const std::filesystem::path& path, struct stat& status) override {
        return perform("lstat", [&] { return real_.lstat(path, status); });
    }
    ssize_t readlink(const std::filesystem::path& path, char* target, std::size_t size) override {
        return perform("readlink", [&] { return real_.readlink(path, target, size); });
    }
    int rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
        return perform("rename", [&] { return real_.rename(from, to); });
    }
    int unlink(const std::filesystem::path& path) override {
        return perform("unlink", [&] { return real_.unlink(path); });
    }
    int mkdir(const std::filesystem::path& path, mode_t mode) override {
        return perform("mkdir", [&] { return real_.mkdir(path, mode); });
    }
    int rmdir(const std::filesystem::path& path) override {
        return perform("rmdir", [&] { return real_.rmdir(path); });
    }
    std::optional<std::vector<std::string>> entries(const std::filesystem::path& path) override {
        std::optional<std::vector<std::string>> names;
        const int outcome = perform("entries", [&] {
            names = real_.entries(path);
            return names ? 0 : -1;
        });
        return outcome == 0 ? names : std::nullopt;
    }

private:
    template <typename Call>
    auto perform(const char* name, Call call) -> decltype(call()) {
        const int number = count();
        if (beforeCall)
            beforeCall(number);
        calls_.emplace_back(name);
        if (dead_ && number >= *dead_) {
            errno = EIO;
            return -1;
        }
        if (number == failing_) {
            errno = error_;
            return -1;
        }
        return call();
    }

    /// How many of `size` bytes the present call may handle.
    std::size_t portion(std::size_t size) const {
        const bool isShortened = count() - 1 == shortened_;
        return isShortened && size > 1 ? size / 2 : size;
    }

    FileOperations& real_;
    std::vector<std::string> calls_;
    int failing_ = -1;
    int error_ = 0;
    int shortened_ = -1;
    std::optional<int> dead_;
};

} // namespace corvanta
