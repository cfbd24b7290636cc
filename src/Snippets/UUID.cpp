#include "Snippets/UUID.hpp"

#include <charconv>
#include <random>
#include <system_error>

namespace corvanta {

namespace {

constexpr std::size_t textLength = 36;

/// Whether a hyphen stands before the byte with this number.
constexpr bool followsHyphen(std::size_t byte) {
    return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

UUID::Bytes randomBytes() {
    std::random_device random;
    UUID::Bytes bytes{};
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0FU) | 0x40U);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3FU) | 0x80U);
    return bytes;
}

} // namespace

UUID::UUID() : bytes_(randomBytes()) {}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textLength)
        return std::nullopt;
    Bytes bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (followsHyphen(i)) {
            if (text.front() != '-')
                return std::nullopt;
            text.remove_prefix(1);
        }
        const auto [end, error] = std::from_chars(text.data(), text.data() + 2, bytes[i], 16);
        if (error != std::errc() || end != text.data() + 2)
            return std::nullopt;
        text.remove_prefix(2);
    }
    return UUID(bytes);
}

std::string UUID::text() const {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(textLength);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (followsHyphen(i))
            text += '-';
        text += digits[bytes_[i] >> 4U];
        text += digits[bytes_[i] & 0x0FU];
    }
    return text;
}

} // namespace corvanta
