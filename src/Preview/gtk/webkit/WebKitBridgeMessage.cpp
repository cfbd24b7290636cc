#include "Preview/gtk/webkit/WebKitBridgeMessage.hpp"

#include "Platform/gtk/GObjectReference.hpp"

namespace corvanta {

namespace {

GObjectReference<JSCValue> property(JSCValue* object, const std::string& name) {
    if (!jsc_value_is_object(object))
        return nullptr;
    return GObjectReference<JSCValue>(jsc_value_object_get_property(object, name.c_str()));
}

} // namespace

std::optional<std::string> WebKitBridgeMessage::string(const std::string& field) const {
    const GObjectReference<JSCValue> value = property(value_, field);
    if (!value || !jsc_value_is_string(value.get()))
        return std::nullopt;
    const std::unique_ptr<char, decltype(&g_free)> text(jsc_value_to_string(value.get()), &g_free);
    return std::string(text.get());
}

std::optional<double> WebKitBridgeMessage::number(const std::string& field) const {
    const GObjectReference<JSCValue> value = property(value_, field);
    if (!value || !jsc_value_is_number(value.get()))
        return std::nullopt;
    return jsc_value_to_double(value.get());
}

} // namespace corvanta
