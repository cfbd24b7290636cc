#include "Snippets/Snippet.hpp"

#include <nlohmann/json.hpp>

namespace corvanta {

namespace {

using Json = nlohmann::ordered_json;

std::optional<std::string> stringMember(const Json& object, const char* key) {
    const auto member = object.find(key);
    if (member == object.end() || !member->is_string())
        return std::nullopt;
    return member->get<std::string>();
}

} // namespace

std::string Snippet::toJSON() const {
    const Json object{{"id", id.text()}, {"title", title}, {"body", body}};
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<Snippet> Snippet::fromJSON(std::string_view text) {
    const Json object = Json::parse(text, nullptr, false);
    if (!object.is_object())
        return std::nullopt;
    const auto idText = stringMember(object, "id");
    const auto id = idText ? UUID::parse(*idText) : std::nullopt;
    auto title = stringMember(object, "title");
    auto body = stringMember(object, "body");
    if (!id || !title || !body)
        return std::nullopt;
    return Snippet{*id, std::move(*title), std::move(*body)};
}

} // namespace corvanta
