#include "EditorCore/TextDecoding.hpp"

#include "EditorCore/CharacterEncoding.hpp"
#include "EditorCore/Utf8.hpp"

#include <array>
#include <optional>

namespace corvanta {

namespace {

using Decoder = std::optional<std::string> (*)(std::string_view bytes);

struct MarkedEncoding {
    std::string_view byteOrderMark;
    Decoder decoder;
};

constexpr std::array markedEncodings{MarkedEncoding{"\xEF\xBB\xBF", CharacterEncoding::utf8},
                                     MarkedEncoding{"\xFF\xFE", CharacterEncoding::utf16LittleEndian},
                                     MarkedEncoding{"\xFE\xFF", CharacterEncoding::utf16BigEndian}};

/// For what is not UTF-8, from the one that refuses most to those that take everything.
constexpr std::array<Decoder, 3> encodings{CharacterEncoding::windows1252, CharacterEncoding::latin1,
                                           CharacterEncoding::macOSRoman};

} // namespace

std::string TextDecoding::string(std::string bytes) {
    for (const auto& [byteOrderMark, decoder] : markedEncodings) {
        if (!bytes.starts_with(byteOrderMark))
            continue;
        if (auto text = decoder(std::string_view(bytes).substr(byteOrderMark.size())))
            return *std::move(text);
    }
    if (Utf8::isValid(bytes))
        return bytes;
    for (const Decoder decoder : encodings) {
        if (auto text = decoder(bytes))
            return *std::move(text);
    }
    return Utf8::repaired(bytes);
}

} // namespace corvanta
