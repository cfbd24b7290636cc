#include "EditorCore/CharacterReferences.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <system_error>

namespace corvanta {

namespace {

struct NamedReference {
    std::string_view name;
    char32_t character = 0;
};

/// The named character references of the HTML standard that hand-written pages use.
constexpr std::array<NamedReference, 58> namedReferences{{
    {"Auml", U'\u00C4'},   {"Ouml", U'\u00D6'},   {"Uuml", U'\u00DC'},   {"agrave", U'\u00E0'},
    {"amp", U'&'},         {"apos", U'\''},       {"auml", U'\u00E4'},   {"bdquo", U'\u201E'},
    {"bull", U'\u2022'},   {"ccedil", U'\u00E7'}, {"cent", U'\u00A2'},   {"copy", U'\u00A9'},
    {"dagger", U'\u2020'}, {"darr", U'\u2193'},   {"deg", U'\u00B0'},    {"divide", U'\u00F7'},
    {"eacute", U'\u00E9'}, {"egrave", U'\u00E8'}, {"euro", U'\u20AC'},   {"frac12", U'\u00BD'},
    {"frac14", U'\u00BC'}, {"gt", U'>'},          {"harr", U'\u2194'},   {"hellip", U'\u2026'},
    {"laquo", U'\u00AB'},  {"larr", U'\u2190'},   {"ldquo", U'\u201C'},  {"lsaquo", U'\u2039'},
    {"lsquo", U'\u2018'},  {"lt", U'<'},          {"mdash", U'\u2014'},  {"micro", U'\u00B5'},
    {"middot", U'\u00B7'}, {"nbsp", U'\u00A0'},   {"ndash", U'\u2013'},  {"ouml", U'\u00F6'},
    {"para", U'\u00B6'},   {"permil", U'\u2030'}, {"plusmn", U'\u00B1'}, {"pound", U'\u00A3'},
    {"quot", U'"'},        {"raquo", U'\u00BB'},  {"rarr", U'\u2192'},   {"rdquo", U'\u201D'},
    {"reg", U'\u00AE'},    {"rsaquo", U'\u203A'}, {"rsquo", U'\u2019'},  {"sbquo", U'\u201A'},
    {"sect", U'\u00A7'},   {"shy", U'\u00AD'},    {"sup2", U'\u00B2'},   {"sup3", U'\u00B3'},
    {"szlig", U'\u00DF'},  {"times", U'\u00D7'},  {"trade", U'\u2122'},  {"uarr", U'\u2191'},
    {"uuml", U'\u00FC'},   {"yen", U'\u00A5'},
}};

/// Finds a name with one look-up and at most one comparison. Made by the compiler, which looks for a hash
/// that gives every name a place of its own.
class NamedReferences {
public:
    consteval NamedReferences() {
        while (!place())
            ++seed_;
    }

    constexpr std::optional<char32_t> find(std::string_view name) const {
        if (name.size() < shortest)
            return std::nullopt;
        const NamedReference& found = slots_[slot(name)];
        return found.name == name ? std::optional(found.character) : std::nullopt;
    }

private:
    static constexpr std::size_t shortest = 2;
    static constexpr std::uint32_t slotBits = 9;

    /// False when two names share a slot.
    constexpr bool place() {
        slots_.fill({});
        return std::ranges::all_of(namedReferences, [this](const NamedReference& reference) {
            NamedReference& slotOfName = slots_[slot(reference.name)];
            const bool isFree = slotOfName.name.empty();
            slotOfName = reference;
            return isFree;
        });
    }

    /// The first two letters, the last two and the length tell all names apart.
    constexpr std::size_t slot(std::string_view name) const {
        const auto letter = [name](std::size_t index) {
            return static_cast<std::uint32_t>(static_cast<unsigned char>(name[index]));
        };
        const std::uint32_t key =
            (letter(0) << 24U | letter(1) << 16U | letter(name.size() - 2) << 8U | letter(name.size() - 1)) +
            static_cast<std::uint32_t>(name.size());
        return key * seed_ >> (32U - slotBits);
    }

    std::uint32_t seed_ = 0x9E3779B1U;
    std::array<NamedReference, 1U << slotBits> slots_{};
};

constexpr NamedReferences references;

constexpr bool isScalarValue(std::uint32_t number) {
    return number <= 0x10FFFF && (number < 0xD800 || number > 0xDFFF);
}

/// `text` must be digits and nothing else.
std::optional<char32_t> numbered(std::string_view text, int base) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size() || !isScalarValue(number))
        return std::nullopt;
    return static_cast<char32_t>(number);
}

} // namespace

std::optional<char32_t> CharacterReferences::decoded(std::string_view name) {
    if (!name.starts_with('#'))
        return references.find(name);
    name.remove_prefix(1);
    if (name.starts_with('x') || name.starts_with('X'))
        return numbered(name.substr(1), 16);
    return numbered(name, 10);
}

} // namespace corvanta
