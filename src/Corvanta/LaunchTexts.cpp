#include "Corvanta/LaunchTexts.hpp"

#include "DesignSystem/t.hpp"

#include <fmt/format.h>

namespace corvanta {

namespace {

std::string option(std::string_view name, const std::string& help) {
    return fmt::format("  {:<12}{}\n", name, help);
}

} // namespace

std::string LaunchTexts::help() {
    return t("Aufruf: corvanta [Option] [Datei[:Zeile] …]") + "\n\n" +
           t("Öffnet jede Datei in einem Fenster und springt zur angegebenen Zeile.") + "\n\n" +
           option("-", t("macht aus der Standardeingabe ein neues Dokument")) +
           option("--", t("beendet die Optionen: alles Weitere sind Dateien")) +
           option("-h, --help", t("zeigt diese Hilfe")) + option("--version", t("zeigt die Version"));
}

std::string LaunchTexts::version(std::string_view version) {
    return fmt::format("Corvanta {}\n", version);
}

std::string LaunchTexts::unknownOption(const std::string& option) {
    return "corvanta: " + t("Die Option %@ gibt es nicht. corvanta --help nennt alle.", option) + "\n";
}

std::string LaunchTexts::inputTooLarge() {
    return "corvanta: " + t("Die Standardeingabe ist zu groß.") + "\n";
}

} // namespace corvanta
