#include "Corvanta/FileErrorText.hpp"

#include "Corvanta/DocumentError.hpp"

#include <gtest/gtest.h>

#include <cerrno>

namespace corvanta {
namespace {

std::string text(int number) {
    return fileErrorText({number, std::generic_category()});
}

TEST(FileErrorText, SaysInGermanWhatWentWrong) {
    EXPECT_EQ(fileErrorText(DocumentError::fileReadCorruptFile), "Das ist keine lesbare Datei.");
    EXPECT_EQ(text(ENOSPC), "Auf dem Datenträger ist kein Platz mehr.");
    EXPECT_EQ(text(EDQUOT), text(ENOSPC));
    EXPECT_EQ(text(EACCES), "Dafür fehlt die Berechtigung.");
    EXPECT_EQ(text(EPERM), text(EACCES));
    EXPECT_EQ(text(EROFS), "Der Datenträger ist schreibgeschützt.");
    EXPECT_EQ(text(ENOENT), "Den Ordner gibt es nicht mehr.");
    EXPECT_EQ(text(ENOTDIR), text(ENOENT));
    EXPECT_EQ(text(ENAMETOOLONG), "Der Name ist zu lang.");
    EXPECT_EQ(text(EISDIR), "Unter diesem Namen liegt keine gewöhnliche Datei.");
    EXPECT_EQ(text(ENOTSUP), text(EISDIR));
    EXPECT_EQ(text(EFBIG), "Die Datei ist für diesen Datenträger zu groß.");
    EXPECT_EQ(text(ELOOP), "Die Verweise auf die Datei drehen sich im Kreis.");
    EXPECT_EQ(text(ETXTBSY), "Ein anderes Programm benutzt die Datei gerade.");
    EXPECT_EQ(text(EIO), "Der Datenträger meldet einen Fehler.");
    EXPECT_EQ(text(ESTALE), "Der Datenträger ist nicht mehr da.");
    EXPECT_EQ(fileErrorText(DocumentError::fileChangedOutside),
              "Ein anderes Programm hat die Datei inzwischen geändert.");
    EXPECT_EQ(fileErrorText(DocumentError::fileIsOpenElsewhere),
              "Die Datei ist schon in einem anderen Fenster geöffnet.");
}

TEST(FileErrorText, LeavesAnUnknownErrorToTheSystem) {
    EXPECT_EQ(text(EPROTO), std::generic_category().message(EPROTO));
}

} // namespace
} // namespace corvanta
