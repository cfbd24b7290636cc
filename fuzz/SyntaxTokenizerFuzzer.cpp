// The spans of any bytes are in order and inside the text; those of well-formed text are the plain rules'
// ones.

#include "../tests/EditorCore/ReferenceTokenizer.hpp"
#include "../tests/EditorCore/SpanProperties.hpp"
#include "EditorCore/SyntaxTokenizer.hpp"
#include "EditorCore/Utf8.hpp"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto spans = corvanta::SyntaxTokenizer::tokenize(text);
    if (!corvanta::complaintAbout(spans, corvanta::Utf8::codeUnitCount(text)).empty())
        std::abort();
    if (corvanta::Utf8::isValid(text) && spans != corvanta::ReferenceTokenizer::tokenize(text))
        std::abort();
    return 0;
}
