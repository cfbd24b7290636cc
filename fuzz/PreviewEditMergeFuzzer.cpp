// Whatever is edited in whatever page, the merge answers as the plain rules do, and bytes that are no text do
// it no harm.

#include "../tests/EditorCore/RandomEdit.hpp"
#include "../tests/EditorCore/ReferenceMerge.hpp"
#include "EditorCore/PreviewEditMerge.hpp"
#include "EditorCore/Utf8.hpp"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

/// Draws the pieces of an edit from the input, so that small changes of it are small changes of the edit.
class InputBytes {
public:
    explicit InputBytes(std::string_view input) : input_(input) {}

    unsigned operator()() {
        if (input_.empty())
            return 0;
        const auto byte = static_cast<unsigned char>(input_.front());
        input_.remove_prefix(1);
        return byte;
    }

private:
    std::string_view input_;
};

void require(bool condition) {
    if (!condition)
        std::abort();
}

void tryEdit(const corvanta::RandomEdit& edit) {
    const auto merged = corvanta::PreviewEditMerge::applyTextEdit(edit.before, edit.after, edit.occurrence,
                                                                  edit.total, edit.source);
    if (!corvanta::Utf8::isValid(edit.source) || !corvanta::Utf8::isValid(edit.before) ||
        !corvanta::Utf8::isValid(edit.after))
        return;
    require(merged == corvanta::ReferenceMerge::applyTextEdit(edit.before, edit.after, edit.occurrence,
                                                              edit.total, edit.source));
}

/// The input as it stands: the texts before and after the edit and the source, a line feed between them.
corvanta::RandomEdit editIn(std::string_view input) {
    const auto taken = [&input] {
        const std::string_view part = input.substr(0, input.find('\n'));
        input.remove_prefix(part.size() < input.size() ? part.size() + 1 : input.size());
        return std::string(part);
    };
    corvanta::RandomEdit edit;
    edit.before = taken();
    edit.after = taken();
    edit.source = input;
    edit.total = 1;
    return edit;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    tryEdit(editIn(input));
    InputBytes bytes(input);
    tryEdit(corvanta::RandomEdit::from(bytes));
    return 0;
}
