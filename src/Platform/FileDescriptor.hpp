#pragma once

#include <unistd.h>

#include <utility>

namespace corvanta {

/// Owns a POSIX file descriptor and closes it.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (isOpen())
            ::close(descriptor_);
    }

    bool isOpen() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

private:
    int descriptor_;
};

} // namespace corvanta
