#include "ClaudeAssistant/ClaudeSettingsModel.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace corvanta {

namespace {

/// The characters with Unicode's property White_Space, which a pasted key may carry along.
constexpr std::array<std::string_view, 25> whiteSpace{
    "\t",     "\n",     "\v",     "\f",     "\r",     " ",      "\u0085", "\u00A0", "\u1680",
    "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
    "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

std::string_view trimmed(std::string_view text) {
    const auto atStart = [&text](std::string_view space) { return text.starts_with(space); };
    const auto atEnd = [&text](std::string_view space) { return text.ends_with(space); };
    for (const auto* space = std::ranges::find_if(whiteSpace, atStart); space != whiteSpace.end();
         space = std::ranges::find_if(whiteSpace, atStart))
        text.remove_prefix(space->size());
    for (const auto* space = std::ranges::find_if(whiteSpace, atEnd); space != whiteSpace.end();
         space = std::ranges::find_if(whiteSpace, atEnd))
        text.remove_suffix(space->size());
    return text;
}

} // namespace

bool ClaudeSettingsModel::canSave() const {
    return !trimmed(*draftKey).empty();
}

void ClaudeSettingsModel::save() {
    assistant_.saveAPIKey(std::string(trimmed(*draftKey)));
    didSave = true;
}

void ClaudeSettingsModel::remove() {
    assistant_.clearAPIKey();
    draftKey = "";
    didSave = false;
}

} // namespace corvanta
