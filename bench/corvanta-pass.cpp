// Times one operation of the text engine on one file, pass by pass:
//
//   corvanta-pass {tokens|format|indent|decode} FILE LANG PASSES
//
// The file is loaded and decoded first. Each pass then prints one line, whose last number is the milliseconds
// that it took. LANG says what the file holds: html and php files are tokenized as they are; a css or js file
// is tokenized as the editor would find it in a page, after an opening tag that puts the tokenizer into its
// language, and formatted and indented likewise. Decoding does not ask for the language.

#include "EditorCore/HTMLFormatter.hpp"
#include "EditorCore/IndentationEngine.hpp"
#include "EditorCore/SyntaxTokenizer.hpp"
#include "EditorCore/TextDecoding.hpp"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace {

using Pass = std::function<std::size_t()>;

const std::map<std::string_view, std::string_view> openers{
    {"html", ""}, {"php", ""}, {"css", "<style>"}, {"js", "<script>"}};

std::optional<std::string> contents(const char* path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    return file.bad() ? std::nullopt : std::optional(std::move(bytes));
}

std::optional<int> passCount(std::string_view argument) {
    int count = 0;
    const char* end = argument.data() + argument.size();
    const auto result = std::from_chars(argument.data(), end, count);
    return result.ptr == end && count > 0 ? std::optional(count) : std::nullopt;
}

/// What one pass does, and what the number that it returns counts.
struct Operation {
    std::string_view unit;
    Pass pass;
};

std::optional<Operation> operationNamed(std::string_view name, const std::string& bytes,
                                        std::string_view opener) {
    if (name == "decode")
        return Operation{"bytes", [&bytes] { return corvanta::TextDecoding::string(bytes).size(); }};

    std::string text = std::string(opener) + corvanta::TextDecoding::string(bytes);
    if (name == "format") {
        return Operation{"bytes",
                         [text = std::move(text)] { return corvanta::HTMLFormatter::format(text).size(); }};
    }
    if (name == "indent") {
        return Operation{"tabs", [text = std::move(text)] {
                             return corvanta::IndentationEngine::indentForNewLine(text).size();
                         }};
    }
    if (name == "tokens") {
        return Operation{
            "spans", [text = std::move(text)] {
                std::size_t count = 0;
                corvanta::SyntaxTokenizer::tokenize(
                    text, [&count](std::span<const corvanta::SyntaxSpan> spans) { count += spans.size(); });
                return count;
            }};
    }
    return std::nullopt;
}

void run(const Operation& operation, int passes) {
    using Clock = std::chrono::steady_clock;
    for (int number = 1; number <= passes; ++number) {
        const Clock::time_point start = Clock::now();
        const std::size_t size = operation.pass();
        const std::chrono::duration<double, std::milli> elapsed = Clock::now() - start;
        std::printf("pass %d: %zu %.*s %.4f\n", number, size, static_cast<int>(operation.unit.size()),
                    operation.unit.data(), elapsed.count());
    }
}

int usage() {
    std::fputs("usage: corvanta-pass {tokens|format|indent|decode} FILE {html|css|js|php} PASSES\n", stderr);
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5)
        return usage();
    const auto opener = openers.find(argv[3]);
    const auto passes = passCount(argv[4]);
    if (opener == openers.end() || !passes)
        return usage();

    const auto bytes = contents(argv[2]);
    if (!bytes) {
        std::fprintf(stderr, "corvanta-pass: cannot read %s\n", argv[2]);
        return 1;
    }
    const auto operation = operationNamed(argv[1], *bytes, opener->second);
    if (!operation)
        return usage();
    run(*operation, *passes);
    return 0;
}
