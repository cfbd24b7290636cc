#pragma once

#include "Documents/Session.hpp"
#include "Documents/WorkerQueue.hpp"
#include "Platform/FileOperations.hpp"
#include "Platform/MainQueue.hpp"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>

namespace corvanta {

/// Keeps the session on the disk while it changes, so that a process that is killed comes back nearly as it
/// was, and at the end of the program. Used on the main thread.
class SessionKeeper {
public:
    /// How long after a change it is written; what changes meanwhile is written with it.
    static constexpr MainQueue::Duration pause{1'000};

    using Observation = std::function<Session()>;

    struct Services {
        FileOperations& operations;
        MainQueue& mainQueue;
        WorkerQueue& worker;
    };

    /// Keeps in `file` what `observe` gives. The services outlive the keeper.
    SessionKeeper(const Services& services, std::filesystem::path file, Observation observe);

    /// What the last process kept. To be asked for before the first change.
    Session lastSession() const;

    /// Something that belongs to the session changed.
    void noteChange();

    /// The program ends in good order: writes the session as it is now, and nothing after it.
    void end();

private:
    class Writer;

    void write();

    Services services_;
    const std::filesystem::path file_;
    const Observation observe_;
    /// Also belongs to the work that the worker has not done yet.
    std::shared_ptr<Writer> writer_;
    Session written_;
    std::uint64_t number_ = 0;
    bool hasEnded_ = false;
    std::unique_ptr<MainQueue::Handle> pending_;
};

} // namespace corvanta
