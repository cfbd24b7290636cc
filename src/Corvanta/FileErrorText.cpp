#include "Corvanta/FileErrorText.hpp"

#include "Corvanta/DocumentError.hpp"

#include <cerrno>

namespace corvanta {

std::string fileErrorText(const std::error_code& error) {
    if (error == DocumentError::fileReadCorruptFile)
        return "Das ist keine lesbare Datei.";
    if (error == DocumentError::fileChangedOutside)
        return "Ein anderes Programm hat die Datei inzwischen geändert.";
    if (error == DocumentError::fileIsOpenElsewhere)
        return "Die Datei ist schon in einem anderen Fenster geöffnet.";
    if (error == std::errc::no_space_on_device || error.value() == EDQUOT)
        return "Auf dem Datenträger ist kein Platz mehr.";
    if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted)
        return "Dafür fehlt die Berechtigung.";
    if (error == std::errc::read_only_file_system)
        return "Der Datenträger ist schreibgeschützt.";
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory)
        return "Den Ordner gibt es nicht mehr.";
    if (error == std::errc::filename_too_long)
        return "Der Name ist zu lang.";
    if (error == std::errc::not_supported || error == std::errc::is_a_directory)
        return "Unter diesem Namen liegt keine gewöhnliche Datei.";
    if (error == std::errc::file_too_large)
        return "Die Datei ist für diesen Datenträger zu groß.";
    if (error == std::errc::too_many_symbolic_link_levels)
        return "Die Verweise auf die Datei drehen sich im Kreis.";
    if (error == std::errc::text_file_busy || error == std::errc::device_or_resource_busy)
        return "Ein anderes Programm benutzt die Datei gerade.";
    if (error == std::errc::io_error)
        return "Der Datenträger meldet einen Fehler.";
    if (error == std::errc::no_such_device || error == std::errc::no_such_device_or_address ||
        error.value() == ESTALE)
        return "Der Datenträger ist nicht mehr da.";
    return error.message();
}

} // namespace corvanta
