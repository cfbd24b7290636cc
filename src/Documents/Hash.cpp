#include "Documents/Hash.hpp"

#include <array>
#include <bit>
#include <cstring>

namespace corvanta {

namespace {

// The constants are part of the algorithm.
constexpr std::uint64_t prime1 = 0x9E3779B185EBCA87;
constexpr std::uint64_t prime2 = 0xC2B2AE3D27D4EB4F;
constexpr std::uint64_t prime3 = 0x165667B19E3779F9;
constexpr std::uint64_t prime4 = 0x85EBCA77C2B2AE63;
constexpr std::uint64_t prime5 = 0x27D4EB2F165667C5;

static_assert(std::endian::native == std::endian::little, "the words of the algorithm are little-endian");

/// Takes a word from the front of `bytes`.
template <typename Word>
Word take(std::string_view& bytes) {
    Word word;
    std::memcpy(&word, bytes.data(), sizeof word);
    bytes.remove_prefix(sizeof word);
    return word;
}

std::uint64_t round(std::uint64_t lane, std::uint64_t word) {
    return std::rotl(lane + word * prime2, 31) * prime1;
}

/// The four lanes over whole blocks of 32 bytes, which it takes from `bytes`.
std::uint64_t hashOfBlocks(std::string_view& bytes, std::uint64_t seed) {
    std::array<std::uint64_t, 4> lanes{seed + prime1 + prime2, seed + prime2, seed, seed - prime1};
    while (bytes.size() >= 32) {
        for (std::uint64_t& lane : lanes)
            lane = round(lane, take<std::uint64_t>(bytes));
    }
    std::uint64_t hash =
        std::rotl(lanes[0], 1) + std::rotl(lanes[1], 7) + std::rotl(lanes[2], 12) + std::rotl(lanes[3], 18);
    for (const std::uint64_t lane : lanes)
        hash = (hash ^ round(0, lane)) * prime1 + prime4;
    return hash;
}

std::uint64_t mixed(std::uint64_t hash) {
    hash = (hash ^ (hash >> 33U)) * prime2;
    hash = (hash ^ (hash >> 29U)) * prime3;
    return hash ^ (hash >> 32U);
}

} // namespace

std::uint64_t Hash::of(std::string_view bytes, std::uint64_t seed) {
    const std::uint64_t size = bytes.size();
    std::uint64_t hash = size >= 32 ? hashOfBlocks(bytes, seed) : seed + prime5;
    hash += size;
    while (bytes.size() >= 8)
        hash = std::rotl(hash ^ round(0, take<std::uint64_t>(bytes)), 27) * prime1 + prime4;
    if (bytes.size() >= 4)
        hash = std::rotl(hash ^ (take<std::uint32_t>(bytes) * prime1), 23) * prime2 + prime3;
    while (!bytes.empty())
        hash = std::rotl(hash ^ (take<std::uint8_t>(bytes) * prime5), 11) * prime1;
    return mixed(hash);
}

} // namespace corvanta
