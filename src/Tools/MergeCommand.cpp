#include "EditorCore/PreviewEditMerge.hpp"
#include "Tools/Commands.hpp"
#include "Tools/Complaint.hpp"
#include "Tools/ExitStatus.hpp"
#include "Tools/Input.hpp"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace corvanta {

namespace {

using JSON = nlohmann::json;

/// One line of the input.
struct Request {
    std::string before;
    std::string after;
    std::int64_t occurrence = 0;
    std::int64_t total = 0;
    std::string source;
};

/// Nothing can be read where there is no such member or where it has another type.
bool read(const JSON& object, std::string_view name, std::string& text) {
    const auto member = object.find(name);
    if (member == object.end() || !member->is_string())
        return false;
    text = member->get<std::string>();
    return true;
}

bool read(const JSON& object, std::string_view name, std::int64_t& number) {
    const auto member = object.find(name);
    if (member == object.end() || !member->is_number_integer())
        return false;
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (member->is_number_unsigned() && member->get<std::uint64_t>() > largest)
        return false;
    number = member->get<std::int64_t>();
    return true;
}

/// The request that `line` holds; nothing when it is none.
std::optional<Request> parsed(const std::string& line) {
    const JSON object = JSON::parse(line, nullptr, false);
    Request request;
    const bool isComplete = object.is_object() && read(object, "before", request.before) &&
                            read(object, "after", request.after) &&
                            read(object, "occurrence", request.occurrence) &&
                            read(object, "total", request.total) && read(object, "source", request.source);
    return isComplete ? std::optional(std::move(request)) : std::nullopt;
}

JSON answer(const Request& request) {
    const std::optional<std::string> source = PreviewEditMerge::applyTextEdit(
        request.before, request.after, request.occurrence, request.total, request.source);
    return source ? JSON{{"source", *source}} : JSON{{"refused", true}};
}

} // namespace

int runMerge(const Arguments&, Output& output) {
    int status = 0;
    InputLines lines;
    for (std::int64_t number = 1; const std::optional<std::string> line = lines.next(); ++number) {
        if (const std::optional<Request> request = parsed(*line)) {
            output.write(answer(*request).dump() + "\n");
            // The one who asks may wait for this answer before asking on.
            output.flush();
        } else {
            complain(fmt::format("merge: line {} is no edit", number));
            status = ExitStatus::wrongCall;
        }
    }
    return status;
}

} // namespace corvanta
