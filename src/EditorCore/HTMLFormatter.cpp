#include "EditorCore/HTMLFormatter.hpp"

#include "EditorCore/HTMLFormatterParser.hpp"
#include "EditorCore/HTMLFormatterPrinter.hpp"

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

/// Longer results, in bytes, than these two are nothing that anybody could work with: they come from tens of
/// thousands of elements that are never closed, and hold little but tabs.
constexpr std::size_t alwaysFine = 64U << 20U;
constexpr std::size_t fineTimesThePage = 32;

} // namespace

std::string HTMLFormatter::format(std::string_view text) {
    HTMLFormatterPrinter printer(text.size(), std::max(alwaysFine, fineTimesThePage * text.size()));
    HTMLFormatterParser::parse(text, printer);
    if (printer.isTooLong())
        return std::string(text);
    std::string formatted = std::move(printer).take();
    if (text.ends_with('\n') && !formatted.empty())
        formatted += '\n';
    return formatted;
}

} // namespace corvanta
