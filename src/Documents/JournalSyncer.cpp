#include "Documents/JournalSyncer.hpp"

#include "Platform/SystemCall.hpp"

#include <string>
#include <utility>

namespace corvanta {

JournalSyncer::JournalSyncer(FileOperations& operations, std::filesystem::path folder)
    : operations_(operations), folder_(std::move(folder)) {}

void JournalSyncer::begin(std::shared_ptr<const OpenedFile> file, int number) {
    const std::lock_guard lock(mutex_);
    task_ = {std::move(file), number, true};
    isUnsynced_ = true;
}

bool JournalSyncer::noteWriting() {
    const std::lock_guard lock(mutex_);
    isUnsynced_ = true;
    return !std::exchange(isAskedFor_, true);
}

std::error_code JournalSyncer::sync() {
    const std::lock_guard syncing(syncing_);
    Task task;
    {
        const std::lock_guard lock(mutex_);
        // What is written from here on needs another call.
        isAskedFor_ = false;
        if (isClosed_ || !std::exchange(isUnsynced_, false))
            return error_;
        task = task_;
        task_.hasNewName = false;
    }
    copyBaseOnce();
    const std::error_code error = carryOut(task);
    const std::lock_guard lock(mutex_);
    if (error) {
        error_ = error;
        task_.hasNewName = task_.hasNewName || task.hasNewName;
    }
    return error;
}

std::error_code JournalSyncer::carryOut(const Task& task) {
    if (const auto error = task.file->syncData())
        return error;
    if (!task.hasNewName)
        return {};
    if (const auto error = syncFolder(operations_, folder_))
        return error;
    if (const auto error = syncFolder(operations_, folder_.parent_path()))
        return error;
    for (; oldestNumber_ < task.number; ++oldestNumber_)
        uninterrupted([&] { return operations_.unlink(folder_ / std::to_string(oldestNumber_)); });
    return {};
}

void JournalSyncer::setBaseCopying(std::function<void()> copying) {
    const std::lock_guard syncing(syncing_);
    baseCopying_ = std::move(copying);
}

void JournalSyncer::copyBase() {
    const std::lock_guard syncing(syncing_);
    copyBaseOnce();
}

void JournalSyncer::copyBaseOnce() {
    const auto copying = std::exchange(baseCopying_, nullptr);
    if (copying && !isClosed_)
        copying();
}

void JournalSyncer::close() {
    const std::lock_guard syncing(syncing_);
    isClosed_ = true;
}

std::error_code JournalSyncer::takeError() {
    const std::lock_guard lock(mutex_);
    return std::exchange(error_, {});
}

} // namespace corvanta
