#include "Corvanta/OpenDocument.hpp"

#include "Corvanta/DocumentError.hpp"
#include "EditorCore/DocumentTemplate.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Support/TemporaryFolder.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

class OpenDocumentTest : public testing::Test {
protected:
    OpenDocument open(const std::string& content) {
        folder.write("seite.html", content);
        std::error_code error;
        return OpenDocument::read(fileManager, folder / "seite.html", error).value();
    }

    std::string saved(const std::filesystem::path& name) {
        std::error_code error;
        return fileManager.contents(folder / name, error).value_or("(missing)");
    }

    TemporaryFolder folder;
    PosixFileManager fileManager;
};

TEST_F(OpenDocumentTest, StartsWithTheTemplateUntouched) {
    OpenDocument document;
    EXPECT_EQ(document.document.text, DocumentTemplate::newHTML);
    EXPECT_TRUE(document.isUntouched());
    EXPECT_EQ(document.displayName(), "Ohne Titel");
    document.document.text = document.document.text.string() + "x";
    EXPECT_TRUE(document.isEdited());
    EXPECT_FALSE(document.isUntouched());
}

TEST_F(OpenDocumentTest, IsUneditedAgainWhenItsTextIsTheSavedOne) {
    OpenDocument document = open("alt");
    EXPECT_FALSE(document.isEdited());
    document.document.text = "neu";
    EXPECT_TRUE(document.isEdited());
    document.document.text = "alt";
    EXPECT_FALSE(document.isEdited());
}

TEST_F(OpenDocumentTest, SavesItsTextAsItIs) {
    OpenDocument document = open("alt");
    document.document.text = "neu\r\nü";
    EXPECT_FALSE(document.save());
    EXPECT_EQ(saved("seite.html"), "neu\r\nü");
    EXPECT_FALSE(document.isEdited());
}

TEST_F(OpenDocumentTest, SavesAnEmptyTextAsAnEmptyFile) {
    OpenDocument document = open("alt");
    document.document.text = "";
    EXPECT_FALSE(document.save());
    EXPECT_EQ(saved("seite.html"), "");
}

TEST_F(OpenDocumentTest, IsNotWrittenWithoutAnEdit) {
    OpenDocument document = open("Gr\xFC\xDF");
    EXPECT_FALSE(document.save());
    EXPECT_EQ(saved("seite.html"), "Gr\xFC\xDF");
}

TEST_F(OpenDocumentTest, BelongsToTheNewFileAfterSavingAs) {
    OpenDocument document;
    EXPECT_FALSE(document.saveAs(folder / "neu.html"));
    EXPECT_EQ(document.fileLocation(), folder / "neu.html");
    EXPECT_EQ(document.displayName(), "neu.html");
    EXPECT_EQ(saved("neu.html"), DocumentTemplate::newHTML);
}

TEST_F(OpenDocumentTest, StaysEditedWhereItWasWhenItCannotBeSaved) {
    OpenDocument document = open("alt");
    document.document.text = "neu";
    EXPECT_TRUE(document.saveAs(folder / "fehlt" / "neu.html"));
    EXPECT_EQ(document.fileLocation(), folder / "seite.html");
    EXPECT_TRUE(document.isEdited());
}

} // namespace
} // namespace corvanta
