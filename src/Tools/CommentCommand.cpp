#include "EditorCore/CommentToggle.hpp"
#include "EditorCore/SharedText.hpp"
#include "Tools/Commands.hpp"
#include "Tools/Errors.hpp"
#include "Tools/Input.hpp"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace corvanta {

namespace {

/// The value of a required option that counts UTF-16 code units.
std::int64_t countValue(const Arguments& arguments, std::string_view option) {
    const std::string value = arguments.value(option).value_or("");
    const char* end = value.data() + value.size();
    std::int64_t count = 0;
    const auto [stop, error] = std::from_chars(value.data(), end, count);
    if (error != std::errc() || stop != end || count < 0)
        throw UsageError(fmt::format("comment: --{} takes a number from 0 on, not {}", option, value));
    return count;
}

void apply(const TextReplacement& replacement, SharedText& text) {
    text.replace(text.atCodeUnit(replacement.range.location).byte,
                 text.atCodeUnit(replacement.range.end()).byte, replacement.text);
}

} // namespace

int runComment(const Arguments& arguments, Output& output) {
    const TextRange selection{countValue(arguments, "location"), countValue(arguments, "length")};
    SharedText text = readText(arguments.operand(0));

    const TextReplacement replacement = CommentToggle::toggled(text, selection);
    apply(replacement, text);
    const nlohmann::ordered_json answer{{"text", text.string()},
                                        {"location", replacement.selection.location},
                                        {"length", replacement.selection.length}};
    output.write(answer.dump() + "\n");
    return 0;
}

} // namespace corvanta
