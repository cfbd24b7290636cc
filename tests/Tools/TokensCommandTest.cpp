#include "ToolTest.hpp"

namespace corvanta {

class TokensCommand : public ToolTest {};

TEST_F(TokensCommand, PrintsOneObjectALine) {
    const ProgramResult result = runTool({"tokens"}, "<p class=\"a\">1</p>");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, "{\"location\":0,\"length\":2,\"token\":\"tag\"}\n"
                             "{\"location\":3,\"length\":5,\"token\":\"attribute\"}\n"
                             "{\"location\":9,\"length\":3,\"token\":\"string\"}\n"
                             "{\"location\":12,\"length\":1,\"token\":\"tag\"}\n"
                             "{\"location\":14,\"length\":3,\"token\":\"tag\"}\n"
                             "{\"location\":17,\"length\":1,\"token\":\"tag\"}\n");
}

TEST_F(TokensCommand, NamesEveryKind) {
    EXPECT_EQ(runTool({"tokens"}, "<?php # x\n1 $a 'b' echo").output,
              "{\"location\":0,\"length\":5,\"token\":\"keyword\"}\n"
              "{\"location\":6,\"length\":3,\"token\":\"comment\"}\n"
              "{\"location\":10,\"length\":1,\"token\":\"number\"}\n"
              "{\"location\":12,\"length\":2,\"token\":\"attribute\"}\n"
              "{\"location\":15,\"length\":3,\"token\":\"string\"}\n"
              "{\"location\":19,\"length\":4,\"token\":\"keyword\"}\n");
}

TEST_F(TokensCommand, CountsUtf16CodeUnits) {
    EXPECT_EQ(runTool({"tokens"}, "ü😀<!--😀-->").output,
              "{\"location\":3,\"length\":9,\"token\":\"comment\"}\n");
}

TEST_F(TokensCommand, PrintsNothingForTextWithoutColour) {
    const ProgramResult result = runTool({"tokens"}, "nur Text");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 0);
}

} // namespace corvanta
