#pragma once

#include "ClaudeAssistant/Keychain.hpp"

#include <deque>
#include <map>
#include <utility>

namespace corvanta {

/// A keychain of a test's own making. It answers when the test says so.
class InMemoryKeychain final : public Keychain {
public:
    void add(const std::string& service, const std::string& data,
             std::function<void(Status)> whenDone) override {
        answers_.emplace_back([this, service, data, whenDone = std::move(whenDone)] {
            if (refusal == Status::success)
                items.emplace(service, data);
            whenDone(refusal);
        });
    }

    void copyMatching(const std::string& service,
                      std::function<void(Status, std::optional<std::string>)> whenDone) override {
        answers_.emplace_back([this, service, whenDone = std::move(whenDone)] {
            if (refusal != Status::success) {
                whenDone(refusal, std::nullopt);
                return;
            }
            const auto item = items.find(service);
            if (item == items.end())
                whenDone(Status::itemNotFound, std::nullopt);
            else
                whenDone(Status::success, item->second);
        });
    }

    void remove(const std::string& service, std::function<void(Status)> whenDone) override {
        answers_.emplace_back([this, service, whenDone = std::move(whenDone)] {
            if (refusal != Status::success) {
                whenDone(refusal);
                return;
            }
            whenDone(items.erase(service) > 0 ? Status::success : Status::itemNotFound);
        });
    }

    /// Performs what was asked first and answers.
    void answerNext() {
        const auto answer = std::move(answers_.front());
        answers_.pop_front();
        answer();
    }

    /// Answers everything, also what is asked meanwhile.
    void answerAll() {
        while (!answers_.empty())
            answerNext();
    }

    std::size_t waitingCount() const { return answers_.size(); }

    /// Several items may have the same service.
    std::multimap<std::string, std::string> items;
    /// What every operation is refused with: `noService`, `locked`; or nothing is refused.
    Status refusal = Status::success;

private:
    std::deque<std::function<void()>> answers_;
};

} // namespace corvanta
