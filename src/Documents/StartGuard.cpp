#include "Documents/StartGuard.hpp"

#include "Platform/OpenedFile.hpp"

#include <fcntl.h>

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>

namespace corvanta {

StartGuard::StartGuard(FileOperations& operations, MainQueue& mainQueue, std::filesystem::path file)
    : operations_(operations), file_(std::move(file)), deaths_(read()) {
    write(deaths_ + 1);
    growingUp_ = mainQueue.after(youth, [this] { write(0); });
}

void StartGuard::endWell() {
    growingUp_.reset();
    write(0);
}

/// One digit, or none in an empty or missing file.
int StartGuard::read() const {
    const OpenedFile file(operations_, file_, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    std::error_code error;
    const auto bytes = file.isOpen() ? file.readAll(error) : std::nullopt;
    if (!bytes || bytes->size() != 1 || bytes->front() < '0' || bytes->front() > '9')
        return 0;
    return bytes->front() - '0';
}

void StartGuard::write(int deaths) const {
    // Not synced: it is to outlast the process, not the machine, and the start does not wait for the disk.
    const OpenedFile file(operations_, file_, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file.isOpen())
        file.writeAll(std::to_string(std::min(deaths, 9)));
}

} // namespace corvanta
