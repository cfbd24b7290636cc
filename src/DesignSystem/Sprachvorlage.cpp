#include "DesignSystem/Sprachvorlage.hpp"

#include "Platform/SafeFileWriter.hpp"

#include <nlohmann/json.hpp>

#include <system_error>

namespace corvanta {

namespace {

bool haelt(const FileManager& dateien, const std::filesystem::path& ort, const std::string& inhalt) {
    std::error_code fehler;
    return dateien.fileSize(ort) == inhalt.size() && dateien.contents(ort, fehler) == inhalt;
}

} // namespace

void Sprachvorlage::schreibe(const FileManager& dateien, const std::filesystem::path& ort,
                             const std::map<std::string, std::string>& eintraege) {
    constexpr int einrueckung = 2;
    const std::string inhalt = nlohmann::json(eintraege).dump(einrueckung) + '\n';
    if (!haelt(dateien, ort, inhalt))
        SafeFileWriter::write(ort, inhalt);
}

} // namespace corvanta
