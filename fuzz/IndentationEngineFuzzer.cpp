// The indent after any bytes is found without harm; after well-formed text it is the plain rules' one.

#include "../tests/EditorCore/ReferenceIndentation.hpp"
#include "EditorCore/IndentationEngine.hpp"
#include "EditorCore/Utf8.hpp"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string indent = corvanta::IndentationEngine::indentForNewLine(text);
    if (indent.size() > size || indent.find_first_not_of('\t') != std::string::npos)
        std::abort();
    if (corvanta::Utf8::isValid(text) && indent != corvanta::ReferenceIndentation::indentForNewLine(text))
        std::abort();
    return 0;
}
