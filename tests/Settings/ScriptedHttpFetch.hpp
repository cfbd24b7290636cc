#pragma once

#include "Settings/HttpFetch.hpp"

#include <utility>
#include <vector>

namespace corvanta {

/// Keeps the requests, and answers the newest one when the test says so.
class ScriptedHttpFetch final : public HttpFetch {
public:
    std::unique_ptr<Handle> get(const Request& request,
                                std::function<void(const Answer&)> whenDone) override {
        requests.push_back(request);
        whenDone_ = std::move(whenDone);
        return std::make_unique<Fetch>(*this);
    }

    /// Does nothing when the fetch has been ended.
    void answer(const Answer& answer) {
        if (const auto whenDone = std::exchange(whenDone_, nullptr))
            whenDone(answer);
    }

    std::vector<Request> requests;

private:
    class Fetch final : public Handle {
    public:
        explicit Fetch(ScriptedHttpFetch& fetch) : fetch_(fetch), number_(fetch.requests.size()) {}
        ~Fetch() override {
            if (number_ == fetch_.requests.size())
                fetch_.whenDone_ = nullptr;
        }

    private:
        ScriptedHttpFetch& fetch_;
        std::size_t number_;
    };

    std::function<void(const Answer&)> whenDone_;
};

} // namespace corvanta
