// Formatting loses nothing but white space, keeps preformatted text byte for byte, and of well-formed text
// makes what the plain rules make.

#include "../tests/EditorCore/ReferenceFormatter.hpp"
#include "EditorCore/HTMLFormatter.hpp"
#include "EditorCore/HTMLFormatterSpace.hpp"
#include "EditorCore/Utf8.hpp"

#include <cstdlib>
#include <string>
#include <string_view>

namespace {

/// The plain rules take time that grows with the square of the text.
constexpr std::size_t comparableSize = 4096;

std::string withoutSpace(std::string_view text) {
    std::string rest;
    for (const char byte : text) {
        if (!corvanta::HTMLFormatterSpace::contains(byte))
            rest += byte;
    }
    return rest;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string formatted = corvanta::HTMLFormatter::format(text);
    if (withoutSpace(text) != withoutSpace(formatted))
        std::abort();
    if (size > comparableSize || !corvanta::Utf8::isValid(text))
        return 0;
    if (formatted != corvanta::ReferenceFormatter::format(text))
        std::abort();
    using Reference = corvanta::ReferenceFormatter;
    if (Reference::literalContents(formatted) != Reference::literalContents(text))
        std::abort();
    return 0;
}
