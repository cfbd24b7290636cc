#include "EditorCore/HTMLFormatter.hpp"
#include "Platform/SafeFileWriter.hpp"
#include "Tools/Commands.hpp"
#include "Tools/Complaint.hpp"
#include "Tools/Errors.hpp"
#include "Tools/ExitStatus.hpp"
#include "Tools/Input.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace corvanta {

namespace {

enum class Mode { print, write, check };

constexpr const char* standardInput = "-";

Mode modeOf(const Arguments& arguments) {
    if (arguments.has("write") && arguments.has("check"))
        throw UsageError("format: --write and --check exclude each other");
    if (arguments.has("write"))
        return Mode::write;
    return arguments.has("check") ? Mode::check : Mode::print;
}

std::vector<std::string> filesOf(const Arguments& arguments, Mode mode) {
    std::vector<std::string> files = arguments.operands;
    if (files.empty())
        files.emplace_back(standardInput);
    if (mode == Mode::write && std::ranges::find(files, standardInput) != files.end())
        throw UsageError("format: --write needs files, not standard input");
    return files;
}

void write(const std::string& file, const std::string& text) {
    if (const std::error_code error = SafeFileWriter::write(file, text))
        throw Failure(fmt::format("{}: {}", file, error.message()));
}

/// What comes of one file.
struct Outcome {
    std::string printed;
    bool isWell = true;
};

/// Does with one file what `mode` asks for. A file whose text is formatted already stays as it is, also when
/// it is not UTF-8.
Outcome format(const std::string& file, Mode mode) {
    const std::string text = readText(file);
    std::string formatted = HTMLFormatter::format(text);
    if (mode == Mode::print)
        return {std::move(formatted)};
    if (formatted == text)
        return {};
    if (mode == Mode::check)
        return {file + "\n", false};
    write(file, formatted);
    return {};
}

/// What is wrong with one file keeps nobody from the others.
Outcome formatOrComplain(const std::string& file, Mode mode) {
    try {
        return format(file, mode);
    } catch (const Failure& failure) {
        complain(failure.what());
        return {{}, false};
    }
}

} // namespace

int runFormat(const Arguments& arguments, Output& output) {
    const Mode mode = modeOf(arguments);
    bool isAllWell = true;
    for (const std::string& file : filesOf(arguments, mode)) {
        const Outcome outcome = formatOrComplain(file, mode);
        output.write(outcome.printed);
        isAllWell &= outcome.isWell;
    }
    return isAllWell ? 0 : ExitStatus::failure;
}

} // namespace corvanta
