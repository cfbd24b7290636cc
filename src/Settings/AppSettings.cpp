#include "Settings/AppSettings.hpp"

#include "EditorCore/EditorFont.hpp"
#include "EditorCore/EditorTheme.hpp"

namespace corvanta {

namespace {

constexpr const char* fontSizeKey = "editorFontSize";
constexpr const char* themeKey = "editorThemeID";
constexpr const char* updateCheckKey = "checkForUpdatesAtLaunch";

template <typename Value>
Subscription store(Published<Value>& property, UserDefaults& defaults, const char* key) {
    return property.subscribe([&defaults, key](const Value& value) { defaults.set(key, value); });
}

} // namespace

AppSettings::AppSettings(UserDefaults& defaults)
    : editorFontSize(defaults.get<double>(fontSizeKey).value_or(EditorFont().size)),
      editorThemeID(defaults.get<std::string>(themeKey).value_or(EditorTheme::dezent().id)),
      checkForUpdatesAtLaunch(defaults.get<bool>(updateCheckKey).value_or(false)),
      storesFontSize_(store(editorFontSize, defaults, fontSizeKey)),
      storesThemeID_(store(editorThemeID, defaults, themeKey)),
      storesUpdateCheck_(store(checkForUpdatesAtLaunch, defaults, updateCheckKey)) {}

} // namespace corvanta
