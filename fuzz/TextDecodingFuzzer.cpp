// Any bytes become well-formed text, and well-formed text without a byte-order mark stays as it is.

#include "EditorCore/TextDecoding.hpp"
#include "EditorCore/Utf8.hpp"

#include <unicode/ustring.h>

#include <cstdlib>
#include <string_view>

namespace {

/// Asks ICU, which knows nothing of our own reading of UTF-8.
bool isWellFormed(std::string_view bytes) {
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t length = 0;
    u_strFromUTF8(nullptr, 0, &length, bytes.data(), static_cast<std::int32_t>(bytes.size()), &error);
    return error != U_INVALID_CHAR_FOUND;
}

bool startsWithAMark(std::string_view bytes) {
    return bytes.starts_with("\xEF\xBB\xBF") || bytes.starts_with("\xFF\xFE") ||
           bytes.starts_with("\xFE\xFF");
}

void require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string text = corvanta::TextDecoding::string(std::string(bytes));
    require(isWellFormed(text));
    require(corvanta::Utf8::isValid(bytes) == isWellFormed(bytes));
    require(isWellFormed(corvanta::Utf8::repaired(bytes)));
    if (isWellFormed(bytes) && !startsWithAMark(bytes)) {
        require(text == bytes);
        require(corvanta::Utf8::repaired(bytes) == bytes);
    }
    return 0;
}
