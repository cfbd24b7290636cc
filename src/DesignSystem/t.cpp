#include "DesignSystem/t.hpp"

#include "DesignSystem/Sprache.hpp"

namespace corvanta {

std::string t(std::string_view schluessel) {
    Sprache* const sprache = Sprache::sitzung();
    return sprache == nullptr ? std::string(schluessel) : sprache->text(schluessel);
}

} // namespace corvanta
