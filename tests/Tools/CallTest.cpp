#include "ToolTest.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>

namespace corvanta {

using testing::HasSubstr;

class Call : public ToolTest {};

TEST_F(Call, ExplainsEveryCommandWithAnExample) {
    const ProgramResult help = runTool({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    for (const char* line : {"\n  format [--write] [--check] [FILE…]\n",
                             "\n  indent [FILE]\n",
                             "\n  merge\n",
                             "\n  newer A B\n",
                             "\n  comment --location N --length N [FILE]\n",
                             "corvanta-text format ",
                             "corvanta-text indent",
                             "      corvanta-text merge",
                             "      corvanta-text newer ",
                             "      corvanta-text comment ",
                             "\n  tokens [FILE]\n",
                             "\n  highlight [--theme ID] [--dark] [--html] [FILE]\n",
                             "\n  decode [FILE]\n",
                             "\n  site --root DIR --document FILE\n",
                             "\n  links [FILE]\n",
                             "      corvanta-text tokens ",
                             "      corvanta-text highlight ",
                             "      corvanta-text decode ",
                             "      corvanta-text site ",
                             "      corvanta-text links "})
        EXPECT_THAT(help.output, HasSubstr(line));
}

TEST_F(Call, ExplainsAlsoWhenAskedBehindACommand) {
    EXPECT_EQ(runTool({"site", "--help"}).output, runTool({"--help"}).output);
    EXPECT_EQ(runTool({"-h"}).output, runTool({"--help"}).output);
}

TEST_F(Call, WithoutACommandIsWrong) {
    expectFailure(runTool({}), 2, "no command given; corvanta-text --help lists them");
}

TEST_F(Call, OfAnUnknownCommandIsWrong) {
    expectFailure(runTool({"tokenise"}), 2, "unknown command tokenise; corvanta-text --help lists them");
    expectFailure(runTool({""}), 2, "unknown command ; corvanta-text --help lists them");
}

TEST_F(Call, WithWrongOptionsIsWrong) {
    expectFailure(runTool({"tokens", "--dark"}), 2, "tokens: unknown option --dark");
    expectFailure(runTool({"tokens", "-x"}), 2, "tokens: unknown option -x");
    expectFailure(runTool({"highlight", "--dark=1"}), 2, "highlight: --dark takes no value");
    expectFailure(runTool({"highlight", "--theme"}), 2, "highlight: --theme needs a value");
    expectFailure(runTool({"highlight", "--html", "--html"}), 2, "highlight: --html is given twice");
    expectFailure(runTool({"site", "--root", "/web"}), 2, "site: --document FILE is missing");
    expectFailure(runTool({"site", "--document", "a.html"}), 2, "site: --root DIR is missing");
    expectFailure(runTool({"site", "--root", "", "--document", "a"}), 2, "site: --root names no file");
}

TEST_F(Call, WithTooManyArgumentsIsWrong) {
    expectFailure(runTool({"links", "a.html", "b.html"}), 2, "links: one argument too many: b.html");
    expectFailure(runTool({"site", "--root", "/", "--document", "/a", "b"}), 2,
                  "site: one argument too many: b");
}

TEST_F(Call, ComplainsOnOneLineWhateverTheNameHolds) {
    expectFailure(runTool({"zwei\nZeilen\x1b[31m"}), 2,
                  "unknown command zwei?Zeilen?[31m; corvanta-text --help lists them");
    expectFailure(runTool({"decode", "/fehlt\n"}), 1, "/fehlt?: No such file or directory");
}

TEST_F(Call, ReadsTheFileOrStandardInput) {
    const std::string path = file("seite.html", "aus der Datei");
    EXPECT_EQ(runTool({"decode", path}, "von der Eingabe").output, "aus der Datei");
    EXPECT_EQ(runTool({"decode", "-"}, "von der Eingabe").output, "von der Eingabe");
    EXPECT_EQ(runTool({"decode"}, "von der Eingabe").output, "von der Eingabe");
}

TEST_F(Call, TakesWhatFollowsTwoDashesForAFile) {
    file("--html", "seltsam");
    EXPECT_EQ(runToolInShell("decode < /dev/null").output, "");
    EXPECT_EQ(runProgram({"/bin/sh", "-c", "cd \"$1\" && exec \"$0\" decode -- --html", CORVANTA_TEXT,
                          folder.path()})
                  .output,
              "seltsam");
    expectFailure(runTool({"decode", "--", "--help"}), 1, "--help: No such file or directory");
}

TEST_F(Call, ReadsPipesToTheirEnd) {
    EXPECT_EQ(runToolInShell("decode /dev/stdin < /dev/null").output, "");
    EXPECT_EQ(runTool({"decode", "/dev/stdin"}, "durch die Röhre").output, "durch die Röhre");
}

TEST_F(Call, NamesTheFileThatCannotBeReadAndTheReason) {
    expectFailure(runTool({"tokens", "/fehlt.html"}), 1, "/fehlt.html: No such file or directory");
    expectFailure(runTool({"links", folder.path()}), 1, folder.path().string() + ": Is a directory");
    expectFailure(runTool({"decode", ""}), 1, ": No such file or directory");
    expectFailure(runToolInShell("decode <&-"), 1, "standard input: Bad file descriptor");
}

TEST_F(Call, IsNeverSilentAboutOutputThatIsLost) {
    EXPECT_EQ(runToolInShell("--help > /dev/full").errors,
              "corvanta-text: standard output: No space left on device\n");
    const std::string path = file("seite.html", "<p>Text</p>");
    for (const char* command :
         {"decode", "tokens", "highlight", "links", "format", "indent", "comment --location 0 --length 0"}) {
        expectFailure(runToolInShell(std::string(command) + " " + path + " > /dev/full"), 1,
                      "standard output: No space left on device");
        expectFailure(runToolInShell(std::string(command) + " " + path + " >&-"), 1,
                      "standard output: Bad file descriptor");
    }
    expectFailure(runToolInShell("decode /dev/null >&-"), 1, "standard output: Bad file descriptor");
    expectFailure(runProgram({"/bin/sh", "-c", "echo a.css | \"$0\" site --root / --document /a > /dev/full",
                              CORVANTA_TEXT}),
                  1, "standard output: No space left on device");
}

TEST_F(Call, FailsWhenTheReaderHasGone) {
    const std::string path = file("gross.html", std::string(1'000'000, 'x'));
    const ProgramResult result = runProgram(
        {"/bin/bash", "-c", "\"$0\" decode \"$1\" | true; echo ${PIPESTATUS[0]}", CORVANTA_TEXT, path});
    EXPECT_EQ(result.output, "1\n");
    EXPECT_EQ(result.errors, "corvanta-text: standard output: Broken pipe\n");
}

TEST_F(Call, LinksNoToolkit) {
    const ProgramResult libraries = runProgram({"ldd", CORVANTA_TEXT});
    ASSERT_EQ(libraries.status, 0) << libraries.errors;
    ASSERT_THAT(libraries.output, HasSubstr("libc.so"));
    for (const char* toolkit : {"gtk", "gdk", "adwaita", "webkit", "gtksource", "glib", "gobject", "gio",
                                "X11", "wayland", "cairo", "pango", "soup", "secret"})
        EXPECT_EQ(libraries.output.find(std::string("lib") + toolkit), std::string::npos) << toolkit;
}

} // namespace corvanta
