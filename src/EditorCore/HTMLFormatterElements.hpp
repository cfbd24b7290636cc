#pragma once

#include "EditorCore/ASCII.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvanta {

/// The elements that the formatter knows by name. Made by the compiler.
class HTMLFormatterElements {
public:
    /// What is special about an element, one bit each.
    using Traits = std::uint8_t;

    /// Belongs into a line of text.
    static constexpr Traits inlineElement = 1U << 0U;
    /// Its children always stand on lines of their own.
    static constexpr Traits blockContainer = 1U << 1U;
    /// Has no content and no closing tag.
    static constexpr Traits voidElement = 1U << 2U;
    /// Its content is not markup.
    static constexpr Traits rawText = 1U << 3U;
    /// Every blank of its content counts.
    static constexpr Traits literalWhitespace = 1U << 4U;

    /// Nothing special: a block that may stay on one line.
    static constexpr Traits ordinary = 0;

    struct Element {
        std::string_view name;
        Traits traits;
    };

    // The ordinary ones are here only because they are common: a name in this table is found faster than
    // others.
    static constexpr std::array elements{
        Element{"script", rawText},
        Element{"style", rawText},
        Element{"pre", rawText | literalWhitespace},
        Element{"textarea", rawText | literalWhitespace},
        Element{"area", voidElement},
        Element{"base", voidElement},
        Element{"br", voidElement | inlineElement},
        Element{"col", voidElement},
        Element{"embed", voidElement},
        Element{"hr", voidElement},
        Element{"img", voidElement | inlineElement},
        Element{"input", voidElement | inlineElement},
        Element{"link", voidElement},
        Element{"meta", voidElement},
        Element{"param", voidElement},
        Element{"source", voidElement},
        Element{"track", voidElement},
        Element{"wbr", voidElement | inlineElement},
        Element{"a", inlineElement},
        Element{"abbr", inlineElement},
        Element{"acronym", inlineElement},
        Element{"b", inlineElement},
        Element{"bdi", inlineElement},
        Element{"bdo", inlineElement},
        Element{"big", inlineElement},
        Element{"cite", inlineElement},
        Element{"code", inlineElement},
        Element{"data", inlineElement},
        Element{"del", inlineElement},
        Element{"dfn", inlineElement},
        Element{"em", inlineElement},
        Element{"font", inlineElement},
        Element{"i", inlineElement},
        Element{"ins", inlineElement},
        Element{"kbd", inlineElement},
        Element{"label", inlineElement},
        Element{"map", inlineElement},
        Element{"mark", inlineElement},
        Element{"meter", inlineElement},
        Element{"output", inlineElement},
        Element{"progress", inlineElement},
        Element{"q", inlineElement},
        Element{"rp", inlineElement},
        Element{"rt", inlineElement},
        Element{"ruby", inlineElement},
        Element{"s", inlineElement},
        Element{"samp", inlineElement},
        Element{"small", inlineElement},
        Element{"span", inlineElement},
        Element{"strong", inlineElement},
        Element{"sub", inlineElement},
        Element{"sup", inlineElement},
        Element{"time", inlineElement},
        Element{"tt", inlineElement},
        Element{"u", inlineElement},
        Element{"var", inlineElement},
        Element{"html", blockContainer},
        Element{"head", blockContainer},
        Element{"body", blockContainer},
        Element{"div", blockContainer},
        Element{"section", blockContainer},
        Element{"article", blockContainer},
        Element{"header", blockContainer},
        Element{"footer", blockContainer},
        Element{"nav", blockContainer},
        Element{"main", blockContainer},
        Element{"aside", blockContainer},
        Element{"form", blockContainer},
        Element{"fieldset", blockContainer},
        Element{"table", blockContainer},
        Element{"thead", blockContainer},
        Element{"tbody", blockContainer},
        Element{"tfoot", blockContainer},
        Element{"tr", blockContainer},
        Element{"ul", blockContainer},
        Element{"ol", blockContainer},
        Element{"dl", blockContainer},
        Element{"figure", blockContainer},
        Element{"blockquote", blockContainer},
        Element{"details", blockContainer},
        Element{"select", blockContainer},
        Element{"optgroup", blockContainer},
        Element{"colgroup", blockContainer},
        Element{"template", blockContainer},
        Element{"noscript", blockContainer},
        Element{"address", blockContainer},
        Element{"hgroup", blockContainer},
        Element{"menu", blockContainer},
        Element{"dialog", blockContainer},
        Element{"picture", blockContainer},
        Element{"p", ordinary},
        Element{"li", ordinary},
        Element{"td", ordinary},
        Element{"th", ordinary},
        Element{"h1", ordinary},
        Element{"h2", ordinary},
        Element{"h3", ordinary},
        Element{"h4", ordinary},
        Element{"h5", ordinary},
        Element{"h6", ordinary},
        Element{"dt", ordinary},
        Element{"dd", ordinary},
        Element{"title", ordinary},
        Element{"option", ordinary},
        Element{"caption", ordinary},
        Element{"legend", ordinary},
        Element{"button", ordinary},
        Element{"figcaption", ordinary},
        Element{"summary", ordinary},
        Element{"center", ordinary},
        Element{"iframe", ordinary},
        Element{"video", ordinary},
        Element{"audio", ordinary},
        Element{"object", ordinary},
        Element{"svg", ordinary},
    };

    constexpr HTMLFormatterElements() {
        static_assert(elements.size() < 256);
        slots_.fill(static_cast<std::uint8_t>(elements.size()));
        for (std::size_t index = 0; index < elements.size(); ++index) {
            std::size_t slot = slotOf(elements[index].name);
            while (slots_[slot] != elements.size())
                slot = (slot + 1) % slotCount;
            slots_[slot] = static_cast<std::uint8_t>(index);
        }
    }

    /// The index in `elements` of the element with this name, in capitals or small letters; the number of
    /// elements when there is none.
    constexpr std::size_t find(std::string_view name) const {
        if (name.empty())
            return elements.size();
        for (std::size_t slot = slotOf(name);; slot = (slot + 1) % slotCount) {
            const std::size_t index = slots_[slot];
            if (index == elements.size() || ASCII::equals(name, elements[index].name))
                return index;
        }
    }

private:
    static constexpr std::size_t slotCount = 512;

    /// Sets the bit that tells small letters from capitals, so that both come out the same.
    static constexpr std::uint32_t folded(char byte) { return static_cast<unsigned char>(byte) | 0x20U; }

    static constexpr std::size_t slotOf(std::string_view name) {
        const std::uint32_t key = (static_cast<std::uint32_t>(name.size()) << 16U) ^
                                  (folded(name[name.size() / 2]) << 11U) ^ (folded(name.front()) << 6U) ^
                                  folded(name.back());
        return (key * 0x9E3779B1U >> 16U) % slotCount;
    }

    /// Open addressing: an element stands in its own slot or in the next free one.
    std::array<std::uint8_t, slotCount> slots_{};
};

inline constexpr HTMLFormatterElements htmlFormatterElements;

} // namespace corvanta
