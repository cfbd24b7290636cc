#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace corvanta {

/// Eight bytes of a text that are looked at together, in one machine word and without a branch. Lengths of
/// names and words follow no pattern that a processor could learn; a loop over single bytes pays for a wrong
/// guess at the end of each.
class ByteWord {
public:
    static constexpr std::size_t size = sizeof(std::uint64_t);

    /// A mark for each byte: its highest bit.
    using Marks = std::uint64_t;

    /// `bytes` points to at least eight.
    explicit ByteWord(const char* bytes) { std::memcpy(&bytes_, bytes, size); }

    /// Marks the bytes that are not ASCII.
    Marks notASCII() const { return bytes_ & highBits; }

    /// Marks the bytes that are `byte`, which is ASCII.
    Marks equalTo(char byte) const { return inRange(byte, byte); }

    /// Marks the bytes from `first` to `last`, which are ASCII.
    Marks inRange(char first, char last) const { return inRange(bytes_, first, last); }

    /// Marks the ASCII letters.
    Marks letters() const { return inRange(bytes_ | everywhere(0x20), 'a', 'z'); }

    /// The number of bytes before the first marked one; `size` when none is marked.
    static std::size_t first(Marks marks) {
        if constexpr (std::endian::native == std::endian::little)
            return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
        else
            return static_cast<std::size_t>(std::countl_zero(marks)) / 8;
    }

    /// Marks what `marks` does not.
    static Marks others(Marks marks) { return ~marks & highBits; }

private:
    static constexpr std::uint64_t highBits = 0x8080808080808080U;

    static constexpr std::uint64_t everywhere(unsigned byte) { return 0x0101010101010101U * byte; }

    /// Adds to the low seven bits of each byte what lifts `first`, and what lifts the byte after `last`, into
    /// the eighth; no sum leaves its byte.
    static constexpr Marks inRange(std::uint64_t bytes, char first, char last) {
        const std::uint64_t low = bytes & ~highBits;
        const std::uint64_t notBefore = low + everywhere(0x80U - static_cast<unsigned>(first));
        const std::uint64_t after = low + everywhere(0x7FU - static_cast<unsigned>(last));
        return notBefore & ~after & ~bytes & highBits;
    }

    std::uint64_t bytes_ = 0;
};

} // namespace corvanta
