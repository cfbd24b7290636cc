#include "Documents/SessionFile.hpp"

#include "EditorCore/Utf8.hpp"
#include "Platform/OpenedFile.hpp"
#include "Platform/SafeFileWriter.hpp"

#include <fcntl.h>
#include <nlohmann/json.hpp>

#include <string>
#include <utility>

namespace corvanta {

namespace {

using Json = nlohmann::json;

/// The value under `key` as `Value`, or `otherwise` when there is none of this type.
template <typename Value>
Value get(const Json& object, const char* key, Value otherwise) {
    const auto found = object.find(key);
    if (found == object.end())
        return otherwise;
    const bool fits = std::is_same_v<Value, std::string> ? found->is_string()
                      : std::is_same_v<Value, bool>      ? found->is_boolean()
                                                         : found->is_number_integer();
    return fits ? found->template get<Value>() : otherwise;
}

Json toJson(const Session::Window& window) {
    Json object{{"caret", window.caret},
                {"selectionLength", window.selectionLength},
                {"firstLine", window.firstLine},
                {"showsPreview", window.showsPreview},
                {"showsAssistant", window.showsAssistant},
                {"width", window.width},
                {"height", window.height},
                {"isMaximized", window.isMaximized},
                {"codeWidth", window.codeWidth}};
    if (window.file)
        object["file"] = window.file->native();
    if (window.journal)
        object["journal"] = *window.journal;
    return object;
}

Session::Window toWindow(const Json& object) {
    Session::Window window;
    if (const std::string file = get(object, "file", std::string()); !file.empty())
        window.file = file;
    if (const std::string journal = get(object, "journal", std::string()); !journal.empty())
        window.journal = journal;
    window.caret = get(object, "caret", window.caret);
    window.selectionLength = get(object, "selectionLength", window.selectionLength);
    window.firstLine = get(object, "firstLine", window.firstLine);
    window.showsPreview = get(object, "showsPreview", window.showsPreview);
    window.showsAssistant = get(object, "showsAssistant", window.showsAssistant);
    window.width = get(object, "width", window.width);
    window.height = get(object, "height", window.height);
    window.isMaximized = get(object, "isMaximized", window.isMaximized);
    window.codeWidth = get(object, "codeWidth", window.codeWidth);
    return window;
}

} // namespace

Session SessionFile::read(FileOperations& operations, const std::filesystem::path& path) {
    const OpenedFile file(operations, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    std::error_code error;
    const auto bytes = file.isOpen() ? file.readAll(error) : std::nullopt;
    if (!bytes)
        return {};
    const Json json = Json::parse(*bytes, nullptr, false);
    if (json.is_discarded()) {
        std::filesystem::path aside = path;
        operations.rename(path, aside += ".beschädigt");
        return {};
    }
    Session session;
    session.hasEndedWell = json.is_object() && get(json, "hasEndedWell", false);
    const auto windows = json.is_object() ? json.find("windows") : json.end();
    if (windows == json.end() || !windows->is_array())
        return session;
    for (const Json& window : *windows) {
        if (window.is_object())
            session.windows.push_back(toWindow(window));
    }
    return session;
}

std::error_code SessionFile::write(FileOperations& operations, const std::filesystem::path& path,
                                   const Session& session) {
    Json windows = Json::array();
    for (const Session::Window& window : session.windows) {
        if (!window.file || Utf8::isValid(window.file->native()))
            windows.push_back(toJson(window));
    }
    const std::string bytes =
        Json{{"windows", std::move(windows)}, {"hasEndedWell", session.hasEndedWell}}.dump(
            2, ' ', false, Json::error_handler_t::replace) +
        "\n";
    // It is nobody's but the user's, also when it is new: its folder lets nobody else in.
    return SafeFileWriter::write(operations, path, bytes, [] { return std::error_code(); });
}

} // namespace corvanta
