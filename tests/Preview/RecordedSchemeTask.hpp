#pragma once

#include "Preview/SchemeTask.hpp"

#include <cstdint>
#include <utility>
#include <vector>

namespace corvanta {

/// A request that keeps its answer.
class RecordedSchemeTask final : public SchemeTask {
public:
    struct Answer {
        /// What was called, in order.
        std::vector<std::string> events;
        SchemeResponse response;
        std::string body;
        /// The size of a body that is a file.
        std::uint64_t fileSize = 0;
    };

    explicit RecordedSchemeTask(std::optional<std::string> requestedURL) : url_(std::move(requestedURL)) {}

    std::optional<std::string> url() const override { return url_; }

    void didReceive(const SchemeResponse& response) override {
        answer.events.emplace_back("response");
        answer.response = response;
    }

    void didReceive(std::string data) override {
        answer.events.emplace_back("body");
        answer.body = std::move(data);
    }

    void didReceive(FileBody file) override {
        answer.events.emplace_back("file");
        answer.fileSize = file.size;
    }

    void didFinish() override { answer.events.emplace_back("finish"); }

    void didFailWithBadURL() override { answer.events.emplace_back("bad URL"); }

    Answer answer;

private:
    std::optional<std::string> url_;
};

} // namespace corvanta
