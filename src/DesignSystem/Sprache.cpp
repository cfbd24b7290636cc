#include "DesignSystem/Sprache.hpp"

#include "DesignSystem/Plattformtexte.hpp"
#include "DesignSystem/Sprachdatei.hpp"
#include "DesignSystem/Sprachvorlage.hpp"
#include "DesignSystem/Textkatalog.hpp"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace corvanta {

namespace {

constexpr std::string_view einstellungSprache = "sprache";
constexpr std::string_view einstellungSystemsprachen = "AppleLanguages";
constexpr std::string_view sprachordner = "Sprachen";

/// In every language alike: "I" becomes "i" also where the user's language is Turkish.
std::string kleingeschrieben(icu::UnicodeString text) {
    std::string ergebnis;
    text.toLower(icu::Locale::getRoot()).toUTF8String(ergebnis);
    return ergebnis;
}

std::string kleingeschrieben(const std::string& text) {
    return kleingeschrieben(icu::UnicodeString::fromUTF8(text));
}

/// The language code that a file gives its language by its name; empty when it is no language file.
std::string dateikennung(const std::filesystem::path& datei) {
    if (kleingeschrieben(datei.extension().string()) != ".json")
        return {};
    std::string stamm = kleingeschrieben(datei.stem().string());
    return stamm.starts_with('_') ? std::string() : stamm;
}

/// The language of a tag such as "de-DE".
std::string sprachcode(const std::string& tag) {
    const icu::UnicodeString zeichen = icu::UnicodeString::fromUTF8(tag);
    return kleingeschrieben(zeichen.tempSubStringBetween(0, zeichen.moveIndex32(0, 2)));
}

/// The name of a language whose file says nothing of it.
std::string grossgeschrieben(const std::string& kennung) {
    std::string ergebnis;
    icu::UnicodeString::fromUTF8(kennung).toUpper(icu::Locale::getRoot()).toUTF8String(ergebnis);
    return ergebnis;
}

std::string name(const Texttabelle& tabelle, const std::string& kennung) {
    const auto eintrag = tabelle.find(Sprache::schluesselName);
    return eintrag == tabelle.end() || eintrag->second.empty() ? grossgeschrieben(kennung) : eintrag->second;
}

/// Sorts by name as it is done where `sprache`, a language tag, is spoken.
void sortiere(std::vector<Sprachsatz>& saetze, const std::string& sprache) {
    UErrorCode fehler = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> ordnung(
        icu::Collator::createInstance(icu::Locale::createCanonical(sprache.c_str()), fehler));
    std::ranges::stable_sort(saetze, [&](const Sprachsatz& links, const Sprachsatz& rechts) {
        if (ordnung == nullptr || U_FAILURE(fehler) != 0)
            return links.name < rechts.name;
        return ordnung->compareUTF8(links.name, rechts.name, fehler) == UCOL_LESS;
    });
}

} // namespace

Sprache::Sprache(Umgebung umgebung) : umgebung_(std::move(umgebung)) {
    if (umgebung_.datenordner.empty())
        throw std::invalid_argument("there is no folder for the user's data");
}

std::string Sprache::text(std::string_view schluessel) {
    const std::scoped_lock gesperrt(sperre_);
    if (!geladen_)
        lade();
    const auto eintrag = eintraege_.find(schluessel);
    const bool fehlt = eintrag == eintraege_.end() || eintrag->second.empty();
    return fehlt ? std::string(schluessel) : eintrag->second;
}

/// Once only, also when there is nothing to read: the next attempt waits for `neuLaden`.
void Sprache::lade() {
    geladen_ = true;
    const std::vector<Fundstelle> stellen = fundstellen();
    if (auto gelesen = tabelle(stellen, wirksameKennung(stellen)))
        eintraege_ = std::move(*gelesen);
}

void Sprache::neuLaden() {
    const std::scoped_lock gesperrt(sperre_);
    geladen_ = false;
    eintraege_.clear();
}

void Sprache::vorbereiten() const {
    std::map<std::string, std::string> katalog{{std::string(schluesselName), "Name dieser Sprache"}};
    for (const std::string_view schluessel : Textkatalog::alle)
        katalog.try_emplace(std::string(schluessel));
    std::map<std::string, std::string> plattform;
    for (const std::string_view schluessel : Plattformtexte::alle)
        plattform.try_emplace(std::string(schluessel));

    const std::filesystem::path ordner = eigenerOrdner();
    Sprachvorlage::schreibe(umgebung_.dateien, ordner / "_Vorlage.json", katalog);
    Sprachvorlage::schreibe(umgebung_.dateien, ordner / "_Vorlage_Plattform.json", plattform);
}

std::string Sprache::gewaehlteKennung() const {
    return umgebung_.einstellungen.get<std::string>(einstellungSprache).value_or("");
}

void Sprache::setGewaehlteKennung(std::string kennung) {
    umgebung_.einstellungen.set(einstellungSprache, kennung);
    if (kennung.empty())
        umgebung_.einstellungen.remove(einstellungSystemsprachen);
    else
        umgebung_.einstellungen.set(einstellungSystemsprachen, std::vector<std::string>{std::move(kennung)});
    neuLaden();
}

std::string Sprache::wirksameKennung() const {
    return wirksameKennung(fundstellen());
}

std::string Sprache::wirksameKennung(const std::vector<Fundstelle>& stellen) const {
    if (std::string gewaehlt = gewaehlteKennung(); !gewaehlt.empty())
        return gewaehlt;
    for (const std::string& tag : umgebung_.bevorzugteSprachen()) {
        if (std::string code = sprachcode(tag); tabelle(stellen, code))
            return code;
    }
    return "de";
}

std::vector<Sprachsatz> Sprache::verfuegbare() const {
    std::map<std::string, Sprachsatz> nachKennung;
    for (const Fundstelle& stelle : fundstellen()) {
        const auto gelesen = Sprachdatei::lies(umgebung_.dateien, stelle.ort);
        if (gelesen && !gelesen->empty()) {
            nachKennung.insert_or_assign(
                stelle.kennung,
                Sprachsatz{stelle.kennung, name(*gelesen, stelle.kennung), stelle.eigen, stelle.ort});
        }
    }

    std::vector<Sprachsatz> saetze;
    saetze.reserve(nachKennung.size());
    for (auto& [kennung, satz] : nachKennung)
        saetze.push_back(std::move(satz));
    const std::vector<std::string> bevorzugte = umgebung_.bevorzugteSprachen();
    sortiere(saetze, bevorzugte.empty() ? std::string() : bevorzugte.front());
    return saetze;
}

std::filesystem::path Sprache::eigenerOrdner() const {
    std::filesystem::path ordner = umgebung_.datenordner / programm / sprachordner;
    std::error_code fehler;
    std::filesystem::create_directories(ordner, fehler);
    return ordner;
}

std::optional<std::filesystem::path> Sprache::mitgelieferterOrdner() const {
    if (!umgebung_.ressourcenordner)
        return std::nullopt;
    return *umgebung_.ressourcenordner / sprachordner;
}

/// In the order in which a later file takes the place of an earlier one of the same code.
std::vector<Sprache::Fundstelle> Sprache::fundstellen() const {
    std::vector<Fundstelle> stellen;
    if (const auto mitgeliefert = mitgelieferterOrdner())
        sammle(*mitgeliefert, false, stellen);
    sammle(eigenerOrdner(), true, stellen);
    return stellen;
}

void Sprache::sammle(const std::filesystem::path& ordner, bool eigen,
                     std::vector<Fundstelle>& stellen) const {
    const auto inhalt = umgebung_.dateien.contentsOfFolder(ordner);
    if (!inhalt)
        return;
    for (const std::filesystem::path& datei : *inhalt) {
        if (std::string code = dateikennung(datei); !code.empty())
            stellen.push_back({std::move(code), eigen, datei});
    }
}

/// What `verfuegbare` has under this code, without reading the files of the other languages.
std::optional<Texttabelle> Sprache::tabelle(const std::vector<Fundstelle>& stellen,
                                            std::string_view kennung) const {
    for (auto stelle = stellen.rbegin(); stelle != stellen.rend(); ++stelle) {
        if (stelle->kennung != kennung)
            continue;
        auto gelesen = Sprachdatei::lies(umgebung_.dateien, stelle->ort);
        if (gelesen && !gelesen->empty())
            return gelesen;
    }
    return std::nullopt;
}

} // namespace corvanta
