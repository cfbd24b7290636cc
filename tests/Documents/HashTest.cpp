#include "Documents/Hash.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {
namespace {

TEST(HashTest, GivesThePublishedValues) {
    EXPECT_EQ(Hash::of(""), 0xEF46DB3751D8E999U);
    EXPECT_EQ(Hash::of("a"), 0xD24EC4F1A98C6E5BU);
    EXPECT_EQ(Hash::of("abc"), 0x44BC2CF5AD770999U);
}

TEST(HashTest, DependsOnEveryBitAndOnTheSeed) {
    for (const std::size_t size : {1U, 3U, 4U, 7U, 8U, 31U, 32U, 33U, 100U}) {
        std::string bytes(size, 'x');
        const std::uint64_t hash = Hash::of(bytes);
        EXPECT_NE(Hash::of(bytes, 1), hash);
        for (std::size_t bit = 0; bit < size * 8; ++bit) {
            bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
            EXPECT_NE(Hash::of(bytes), hash) << "bit " << bit << " of " << size << " bytes";
            bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
        }
    }
}

TEST(HashTest, TellsLengthsOfTheSameByteApart) {
    EXPECT_NE(Hash::of(std::string(1, '\0')), Hash::of(std::string(2, '\0')));
    EXPECT_NE(Hash::of(std::string(32, '\0')), Hash::of(std::string(64, '\0')));
}

} // namespace
} // namespace corvanta
