#include "EditorCore/NulStandIn.hpp"

namespace corvanta {

namespace {

constexpr std::string_view nul("\0", 1);

/// The character for NUL from the block of control pictures.
constexpr char16_t pictureOfNul = 0x2400;

constexpr char16_t firstPrivateUse = 0xE000;

/// `codePoint`, which is at least U+0800, in UTF-8.
std::string encoded(char16_t codePoint) {
    return {static_cast<char>(0xE0 | (codePoint >> 12)), static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)),
            static_cast<char>(0x80 | (codePoint & 0x3F))};
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

} // namespace

NulStandIn::NulStandIn(std::string_view text) {
    if (text.find('\0') == std::string_view::npos)
        return;
    character_ = encoded(pictureOfNul);
    for (char16_t candidate = firstPrivateUse; text.find(character_) != std::string_view::npos; ++candidate)
        character_ = encoded(candidate);
}

bool NulStandIn::canShow(std::string_view text) const {
    return character_.empty() ? text.find('\0') == std::string_view::npos
                              : text.find(character_) == std::string_view::npos;
}

std::string NulStandIn::shown(std::string text) const {
    return character_.empty() ? std::move(text) : replaced(std::move(text), nul, character_);
}

std::string NulStandIn::meant(std::string shown) const {
    return character_.empty() ? std::move(shown) : replaced(std::move(shown), character_, nul);
}

} // namespace corvanta
