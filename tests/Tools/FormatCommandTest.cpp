#include "ToolTest.hpp"

#include <sys/stat.h>

#include <iterator>

namespace corvanta {

class FormatCommand : public ToolTest {
protected:
    static std::string contents(const std::string& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static constexpr const char* ugly = "<div><p>Text</p></div>\n";
    static constexpr const char* formatted = "<div>\n\t<p>Text</p>\n</div>\n";
};

TEST_F(FormatCommand, PrintsTheFormattedText) {
    const ProgramResult result = runTool({"format"}, ugly);
    EXPECT_EQ(result.output, formatted);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(runTool({"format", "-"}, ugly).output, formatted);
    EXPECT_EQ(runTool({"format"}).output, "");
}

TEST_F(FormatCommand, PrintsSeveralFilesOneAfterTheOtherAndChangesNone) {
    const std::string first = file("eins.html", ugly);
    const std::string second = file("zwei.html", "<p>zwei");
    EXPECT_EQ(runTool({"format", first, second}).output,
              std::string(formatted) + runTool({"format", second}).output);
    EXPECT_EQ(contents(first), ugly);
}

TEST_F(FormatCommand, RewritesFilesInPlace) {
    const std::string first = file("eins.html", ugly);
    const std::string second = file("zwei.html", ugly);
    const ProgramResult result = runTool({"format", "--write", first, second});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(contents(first), formatted);
    EXPECT_EQ(contents(second), formatted);
}

TEST_F(FormatCommand, WritesUtf8WhateverTheFileWas) {
    const std::string path = file("alt.html", "<div><p>M\xE4rz</p></div>\n");
    EXPECT_EQ(runTool({"format", "--write", path}).status, 0);
    EXPECT_EQ(contents(path), "<div>\n\t<p>März</p>\n</div>\n");
}

TEST_F(FormatCommand, LeavesAFileAloneThatIsFormatted) {
    for (const std::string& text : {std::string(formatted), std::string("<p>M\xE4rz</p>\n")}) {
        const std::string path = file("fertig.html", text);
        struct stat before {};
        ASSERT_EQ(::stat(path.c_str(), &before), 0);
        EXPECT_EQ(runTool({"format", "--write", path}).status, 0);
        struct stat after {};
        ASSERT_EQ(::stat(path.c_str(), &after), 0);
        EXPECT_EQ(after.st_ino, before.st_ino);
        EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
        EXPECT_EQ(contents(path), text);
    }
}

TEST_F(FormatCommand, KeepsTheLinkToAFile) {
    const std::string path = file("seite.html", ugly);
    const std::filesystem::path link = folder / "link.html";
    std::filesystem::create_symlink(path, link);
    EXPECT_EQ(runTool({"format", "--write", link}).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(contents(path), formatted);
}

TEST_F(FormatCommand, NamesTheFilesThatWouldChangeAndChangesNone) {
    const std::string first = file("eins.html", ugly);
    const std::string second = file("zwei.html", formatted);
    const std::string third = file("drei.html", ugly);
    const ProgramResult result = runTool({"format", "--check", first, second, third});
    EXPECT_EQ(result.output, first + "\n" + third + "\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(contents(first), ugly);
}

TEST_F(FormatCommand, ChecksStandardInputUnderTheNameOfADash) {
    EXPECT_EQ(runTool({"format", "--check"}, ugly).output, "-\n");
    EXPECT_EQ(runTool({"format", "--check"}, ugly).status, 1);
}

TEST_F(FormatCommand, IsContentWithFilesThatAreFormatted) {
    const ProgramResult result = runTool({"format", "--check", file("fertig.html", formatted)});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 0);
}

TEST_F(FormatCommand, HandlesTheOthersWhenOneFileCannotBeRead) {
    const std::string good = file("gut.html", ugly);
    const ProgramResult printed = runTool({"format", "/fehlt.html", good});
    EXPECT_EQ(printed.output, formatted);
    EXPECT_EQ(printed.errors, "corvanta-text: /fehlt.html: No such file or directory\n");
    EXPECT_EQ(printed.status, 1);

    const ProgramResult written = runTool({"format", "--write", "/fehlt.html", good});
    EXPECT_EQ(written.errors, "corvanta-text: /fehlt.html: No such file or directory\n");
    EXPECT_EQ(written.status, 1);
    EXPECT_EQ(contents(good), formatted);
}

TEST_F(FormatCommand, NamesTheFileThatCannotBeWritten) {
    const ProgramResult result = runToolInShell("format --write /dev/stdin < /dev/null");
    EXPECT_EQ(result.status, 0) << "nothing to write";
    const ProgramResult device = runProgram(
        {"/bin/sh", "-c", "echo '<div><p>x</div>' | \"$0\" format --write /dev/stdin", CORVANTA_TEXT});
    EXPECT_EQ(device.status, 1);
    EXPECT_EQ(device.errors.rfind("corvanta-text: /dev/stdin: ", 0), 0U) << device.errors;
}

TEST_F(FormatCommand, CannotWriteStandardInputInPlace) {
    expectFailure(runTool({"format", "--write"}), 2, "format: --write needs files, not standard input");
    expectFailure(runTool({"format", "--write", "a.html", "-"}), 2,
                  "format: --write needs files, not standard input");
}

TEST_F(FormatCommand, TakesOneOfItsOptionsAtATime) {
    expectFailure(runTool({"format", "--write", "--check", "a.html"}), 2,
                  "format: --write and --check exclude each other");
}

} // namespace corvanta
