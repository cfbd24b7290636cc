#include "Corvanta/SessionKeeper.hpp"

#include "Documents/SessionFile.hpp"

#include <mutex>
#include <utility>

namespace corvanta {

/// Writes one session after another; one that comes too late does not undo a newer one.
class SessionKeeper::Writer {
public:
    Writer(FileOperations& operations, std::filesystem::path file)
        : operations_(operations), file_(std::move(file)) {}

    void write(std::uint64_t number, const Session& session) {
        const std::lock_guard lock(mutex_);
        if (number < newest_)
            return;
        newest_ = number;
        // The windows' places are no work of the user's that a failure would have to be told of.
        SessionFile::write(operations_, file_, session);
    }

private:
    FileOperations& operations_;
    const std::filesystem::path file_;
    std::mutex mutex_;
    std::uint64_t newest_ = 0;
};

SessionKeeper::SessionKeeper(const Services& services, std::filesystem::path file, Observation observe)
    : services_(services),
      file_(std::move(file)),
      observe_(std::move(observe)),
      writer_(std::make_shared<Writer>(services.operations, file_)) {}

Session SessionKeeper::lastSession() const {
    return SessionFile::read(services_.operations, file_);
}

void SessionKeeper::noteChange() {
    if (hasEnded_ || pending_)
        return;
    pending_ = services_.mainQueue.after(pause, [this] {
        pending_.reset();
        write();
    });
}

void SessionKeeper::write() {
    Session session = observe_();
    if (session == written_)
        return;
    written_ = session;
    services_.worker.after({}, [writer = writer_, number = ++number_, session = std::move(session)] {
        writer->write(number, session);
    });
}

void SessionKeeper::end() {
    if (std::exchange(hasEnded_, true))
        return;
    pending_.reset();
    Session session = observe_();
    session.hasEndedWell = true;
    writer_->write(++number_, session);
}

} // namespace corvanta
