#include "ToolTest.hpp"

namespace corvanta {

class IndentCommand : public ToolTest {};

TEST_F(IndentCommand, PrintsTheNumberOfTabsOfANewLine) {
    const ProgramResult result = runTool({"indent"}, "<body>\n<div>");
    EXPECT_EQ(result.output, "2\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(runTool({"indent"}).output, "0\n");
}

TEST_F(IndentCommand, DecodesTheTextFirst) {
    // UTF-16, little-endian, with its mark.
    const std::string page("\xFF\xFE<\0p\0>\0", 8);
    EXPECT_EQ(runTool({"indent", file("seite.html", page)}).output, "1\n");
}

} // namespace corvanta
