#include "Documents/RecentDocuments.hpp"

#include "EditorCore/Utf8.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace corvanta {

namespace {

std::vector<std::string> namesIn(const UserDefaults& defaults) {
    return defaults.get<std::vector<std::string>>(RecentDocuments::key).value_or(std::vector<std::string>());
}

} // namespace

std::vector<std::filesystem::path> RecentDocuments::files() const {
    const std::vector<std::string> names = namesIn(defaults_);
    return {names.begin(), names.end()};
}

void RecentDocuments::add(const std::filesystem::path& file) {
    if (!Utf8::isValid(file.native()))
        return;
    std::vector<std::string> names = namesIn(defaults_);
    std::erase(names, file.native());
    names.insert(names.begin(), file.native());
    names.resize(std::min(names.size(), longest));
    defaults_.set(key, std::move(names));
}

void RecentDocuments::remove(const std::filesystem::path& file) {
    std::vector<std::string> names = namesIn(defaults_);
    if (std::erase(names, file.native()) > 0)
        defaults_.set(key, std::move(names));
}

} // namespace corvanta
