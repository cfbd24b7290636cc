#include "Platform/JSONUserDefaults.hpp"

#include <algorithm>
#include <set>
#include <utility>

namespace corvanta {

namespace {

using Json = nlohmann::json;

bool isListOfStrings(const Json& json) {
    return json.is_array() && std::ranges::all_of(json, [](const Json& item) { return item.is_string(); });
}

/// `json` as one of the types that settings have, or nothing.
std::optional<UserDefaults::Value> typed(const Json& json) {
    if (json.is_boolean())
        return json.get<bool>();
    if (json.is_number())
        return json.get<double>();
    if (json.is_string())
        return json.get<std::string>();
    if (isListOfStrings(json))
        return json.get<std::vector<std::string>>();
    return std::nullopt;
}

Json toJSON(const UserDefaults::Value& value) {
    return std::visit([](const auto& stored) { return Json(stored); }, value);
}

void apply(Json& members, std::string_view key, const std::optional<Json>& value) {
    if (value)
        members[std::string(key)] = *value;
    else
        members.erase(std::string(key));
}

/// The keys whose members differ between the two objects.
std::set<std::string> differences(const Json& before, const Json& after) {
    std::set<std::string> keys;
    const auto collect = [&keys](const Json& from, const Json& other) {
        for (const auto& [key, member] : from.items()) {
            const auto counterpart = other.find(key);
            if (counterpart == other.end() || *counterpart != member)
                keys.insert(key);
        }
    };
    collect(before, after);
    collect(after, before);
    return keys;
}

} // namespace

JSONUserDefaults::JSONUserDefaults(std::filesystem::path file) : file_(std::move(file)) {
    SettingsFile::Content content = file_.read();
    members_ = std::move(content.members);
    if (content.isDamaged)
        requestWriting();
}

JSONUserDefaults::~JSONUserDefaults() = default;

std::optional<UserDefaults::Value> JSONUserDefaults::value(std::string_view key) const {
    const auto found = members_.find(std::string(key));
    return found == members_.end() ? std::nullopt : typed(*found);
}

void JSONUserDefaults::set(std::string_view key, Value value) {
    change(key, toJSON(value));
}

void JSONUserDefaults::remove(std::string_view key) {
    change(key, std::nullopt);
}

void JSONUserDefaults::reload() {
    SettingsFile::Changes ours;
    {
        const std::scoped_lock lock(mutex_);
        ours = unwritten_;
    }
    // Read after that: a change that is written meanwhile is then seen twice instead of not at all.
    SettingsFile::Content content = file_.read();
    if (content.isDamaged || content.error)
        return;
    for (const auto& [key, value] : ours)
        apply(content.members, key, value);

    const std::set<std::string> changed = differences(members_, content.members);
    members_ = std::move(content.members);
    for (const std::string& key : changed)
        tellObservers(key);
}

bool JSONUserDefaults::flush() {
    std::unique_lock lock(mutex_);
    if (!unwritten_.empty()) {
        lock.unlock();
        requestWriting();
        lock.lock();
    }
    changed_.wait(lock, [this] { return !isRequested_ && !isWriting_; });
    return unwritten_.empty();
}

void JSONUserDefaults::change(std::string_view key, std::optional<Json> value) {
    apply(members_, key, value);
    {
        const std::scoped_lock lock(mutex_);
        unwritten_.insert_or_assign(std::string(key), std::move(value));
    }
    requestWriting();
    tellObservers(key);
}

void JSONUserDefaults::requestWriting() {
    {
        const std::scoped_lock lock(mutex_);
        isRequested_ = true;
    }
    changed_.notify_all();
    if (!writer_.joinable())
        writer_ = std::jthread([this](const std::stop_token& stop) { writeWhenRequested(stop); });
}

void JSONUserDefaults::writeWhenRequested(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    while (changed_.wait(lock, stop, [this] { return isRequested_; }))
        write(lock);
    if (!unwritten_.empty())
        write(lock);
}

void JSONUserDefaults::write(std::unique_lock<std::mutex>& lock) {
    isRequested_ = false;
    isWriting_ = true;
    const SettingsFile::Changes changes = unwritten_;

    lock.unlock();
    const std::error_code error = file_.apply(changes);
    lock.lock();

    if (!error) {
        // A key that has been changed again meanwhile is not done with.
        for (const auto& [key, value] : changes) {
            const auto found = unwritten_.find(key);
            if (found != unwritten_.end() && found->second == value)
                unwritten_.erase(found);
        }
    }
    isWriting_ = false;
    changed_.notify_all();
}

} // namespace corvanta
