#pragma once

#include "DesignSystem/Sprachsatz.hpp"
#include "DesignSystem/Texttabelle.hpp"
#include "Platform/FileManager.hpp"
#include "Platform/PreferredLanguages.hpp"
#include "Platform/UserDefaults.hpp"

#include <atomic>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// Finds the texts of the interface in the language that the user reads. Texts stand in the code in German,
/// and the German text is the key of its translation; a text without translation is shown as it stands.
/// Translations are JSON files, one a language, which came with the program or which the user added.
class Sprache {
public:
    /// The member of a language file that holds the language's name.
    static constexpr std::string_view schluesselName = "_sprache";

    /// The program's folder among the user's data.
    static constexpr std::string_view programm = "Corvanta";

    /// What the catalogue needs of its surroundings.
    struct Umgebung {
        UserDefaults& einstellungen;
        const FileManager& dateien;
        PreferredLanguages bevorzugteSprachen;

        /// The files that came with the program; nothing when there are none.
        std::optional<std::filesystem::path> ressourcenordner;

        /// Where the user's programs keep their data; absolute.
        std::filesystem::path datenordner;
    };

    /// Makes a catalogue the one that all views ask, as long as it lives.
    class Sitzung {
    public:
        explicit Sitzung(Sprache& sprache) : vorherige_(sitzung_.exchange(&sprache)) {}
        Sitzung(const Sitzung&) = delete;
        Sitzung& operator=(const Sitzung&) = delete;
        ~Sitzung() { sitzung_ = vorherige_; }

    private:
        Sprache* vorherige_;
    };

    /// The objects that `umgebung` refers to outlive the catalogue. Throws `std::invalid_argument` without a
    /// folder for the user's data: there is no going on without one.
    explicit Sprache(Umgebung umgebung);

    /// The catalogue that all views ask, or null when none has been put in place.
    static Sprache* sitzung() { return sitzung_; }

    /// The translation of `schluessel`, or `schluessel` itself. Reads the language's file at the first call.
    /// May be called on every thread.
    std::string text(std::string_view schluessel);

    /// Forgets what has been read, so that the next call of `text` reads again.
    void neuLaden();

    /// Writes the templates for further languages into the user's folder. For the start of the program.
    void vorbereiten() const;

    /// The language code that the user chose; empty: the system's language.
    std::string gewaehlteKennung() const;

    /// Stores the choice, for the texts from the next call on and for the toolkit from the next start on.
    void setGewaehlteKennung(std::string kennung);

    /// The language code in use: the user's choice, whether there is a file for it or not, else the first
    /// preferred language of the system that there is a file for, else "de".
    std::string wirksameKennung() const;

    /// All languages, sorted by name as the user's language sorts. Reads every file.
    std::vector<Sprachsatz> verfuegbare() const;

    /// The user's folder for language files. Each call makes it if needed; a failure to do so is ignored.
    std::filesystem::path eigenerOrdner() const;

    /// The folder of the languages that came with the program, or nothing when it came without resources.
    std::optional<std::filesystem::path> mitgelieferterOrdner() const;

private:
    /// A file that may hold a language; nobody has read it yet.
    struct Fundstelle {
        std::string kennung;
        bool eigen;
        std::filesystem::path ort;
    };

    std::vector<Fundstelle> fundstellen() const;
    void sammle(const std::filesystem::path& ordner, bool eigen, std::vector<Fundstelle>& stellen) const;
    std::optional<Texttabelle> tabelle(const std::vector<Fundstelle>& stellen,
                                       std::string_view kennung) const;
    std::string wirksameKennung(const std::vector<Fundstelle>& stellen) const;
    void lade();

    static inline std::atomic<Sprache*> sitzung_ = nullptr;

    Umgebung umgebung_;

    /// Guards `eintraege_` and `geladen_`.
    std::mutex sperre_;
    Texttabelle eintraege_;
    bool geladen_ = false;
};

} // namespace corvanta
