#include "ToolTest.hpp"

namespace corvanta {

class CommentCommand : public ToolTest {
protected:
    static std::string toggled(const std::string& text, const std::string& location,
                               const std::string& length) {
        const ProgramResult result = runTool({"comment", "--location", location, "--length", length}, text);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        return result.output;
    }
};

TEST_F(CommentCommand, PrintsTheWholeTextAndTheNewSelection) {
    EXPECT_EQ(toggled("ein Wort hier", "4", "4"),
              "{\"text\":\"ein <!-- Wort --> hier\",\"location\":17,\"length\":0}\n");
    EXPECT_EQ(toggled("ein <!-- Wort --> hier\n", "4", "13"),
              "{\"text\":\"ein Wort hier\\n\",\"location\":8,\"length\":0}\n");
}

TEST_F(CommentCommand, PutsTheCaretBetweenTheMarks) {
    EXPECT_EQ(toggled("ab", "1", "0"), "{\"text\":\"a<!--  -->b\",\"location\":6,\"length\":0}\n");
    EXPECT_EQ(toggled("", "0", "0"), "{\"text\":\"<!--  -->\",\"location\":5,\"length\":0}\n");
}

TEST_F(CommentCommand, CountsUtf16CodeUnits) {
    EXPECT_EQ(toggled("ü😀Wort€", "3", "4"), "{\"text\":\"ü😀<!-- Wort -->€\",\"location\":16,\"length\":0}\n");
}

TEST_F(CommentCommand, IgnoresWhatOfTheSelectionLiesBehindTheText) {
    EXPECT_EQ(toggled("ab", "1", "9223372036854775807"),
              "{\"text\":\"a<!-- b -->\",\"location\":11,\"length\":0}\n");
}

TEST_F(CommentCommand, ReadsAFile) {
    const std::string path = file("seite.html", "M\xE4rz");
    EXPECT_EQ(runTool({"comment", "--location=0", "--length=4", path}).output,
              "{\"text\":\"<!-- März -->\",\"location\":13,\"length\":0}\n");
}

TEST_F(CommentCommand, TakesOnlyNumbersForTheSelection) {
    for (const char* wrong : {"x", "-1", "1.5", "", "99999999999999999999", " 1", "1 "}) {
        expectFailure(runTool({"comment", "--location", wrong, "--length", "0"}), 2,
                      std::string("comment: --location takes a number from 0 on, not ") + wrong);
        expectFailure(runTool({"comment", "--location", "0", "--length", wrong}), 2,
                      std::string("comment: --length takes a number from 0 on, not ") + wrong);
    }
    expectFailure(runTool({"comment", "--length", "0"}), 2, "comment: --location N is missing");
}

} // namespace corvanta
