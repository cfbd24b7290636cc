#pragma once

#include "Platform/SettingsFile.hpp"
#include "Platform/UserDefaults.hpp"

#include <nlohmann/json.hpp>

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <thread>

namespace corvanta {

/// Values in a JSON file. A change counts at once; a thread of its own brings it to the disk, so that a slow
/// disk never holds the caller up. Members of the file that are of other types, or that nobody asks for, are
/// kept as they are. Used on one thread.
class JSONUserDefaults final : public UserDefaults {
public:
    /// Reads `file`, which need not exist. A damaged one is set aside under another name and counts as
    /// absent.
    explicit JSONUserDefaults(std::filesystem::path file);

    /// Writes what is not written yet.
    ~JSONUserDefaults() override;

    std::optional<Value> value(std::string_view key) const override;
    void set(std::string_view key, Value value) override;
    void remove(std::string_view key) override;

    /// Takes over what other processes have changed in the file since it was last read, and tells the
    /// observers of every key whose value is another one now. Changes of our own that are not in the file yet
    /// stay. A file that is damaged or cannot be read changes nothing: somebody may be writing it right now.
    void reload();

    /// Waits until every change made so far is on the disk. Returns whether it is; what cannot be written is
    /// kept and tried again with the next call, the next change and at the end.
    bool flush();

private:
    void change(std::string_view key, std::optional<nlohmann::json> value);
    void requestWriting();
    void writeWhenRequested(const std::stop_token& stop);
    void write(std::unique_lock<std::mutex>& lock);

    SettingsFile file_;
    /// The values as the program sees them.
    nlohmann::json members_;

    std::mutex mutex_;
    std::condition_variable_any changed_;
    // Guarded by the mutex:
    SettingsFile::Changes unwritten_;
    bool isRequested_ = false;
    bool isWriting_ = false;

    // The last member, because the thread uses the others; started by the first change.
    std::jthread writer_;
};

} // namespace corvanta
