#pragma once

#include "Preview/FileBody.hpp"
#include "Preview/SchemeResponse.hpp"

#include <optional>
#include <string>

namespace corvanta {

/// One request of the web view that waits for its answer: response, body, finish, each once and in this
/// order, or the failure alone.
class SchemeTask {
public:
    SchemeTask() = default;
    SchemeTask(const SchemeTask&) = delete;
    SchemeTask& operator=(const SchemeTask&) = delete;
    virtual ~SchemeTask() = default;

    /// What is asked for, as the web view escaped it; nothing when the request has no URL.
    virtual std::optional<std::string> url() const = 0;

    virtual void didReceive(const SchemeResponse& response) = 0;

    /// The bytes of the body, handed over to the task.
    virtual void didReceive(std::string data) = 0;

    /// A file as the body, handed over to the task, which reads it as fast as the web view takes it.
    virtual void didReceive(FileBody file) = 0;

    virtual void didFinish() = 0;

    virtual void didFailWithBadURL() = 0;
};

} // namespace corvanta
