#include "ToolTest.hpp"

namespace corvanta {

class NewerCommand : public ToolTest {};

TEST_F(NewerCommand, TellsWhetherTheFirstVersionIsNewer) {
    EXPECT_EQ(runTool({"newer", "1.10", "1.9"}).output, "true\n");
    EXPECT_EQ(runTool({"newer", "1.2", "1.2.0"}).output, "false\n");
    EXPECT_EQ(runTool({"newer", "1.9", "1.10"}).output, "false\n");
    EXPECT_EQ(runTool({"newer", "1.10", "1.9"}).status, 0);
    EXPECT_EQ(runTool({"newer", "1.9", "1.10"}).status, 0);
}

TEST_F(NewerCommand, TakesEveryTextForAVersion) {
    EXPECT_EQ(runTool({"newer", "", ""}).output, "false\n");
    EXPECT_EQ(runTool({"newer", "2.0-beta", "1.9"}).output, "true\n");
    EXPECT_EQ(runTool({"newer", "1", "--", "-1"}).output, "true\n");
}

TEST_F(NewerCommand, NeedsTwoVersions) {
    expectFailure(runTool({"newer"}), 2, "newer: A B are needed");
    expectFailure(runTool({"newer", "1"}), 2, "newer: A B are needed");
    expectFailure(runTool({"newer", "1", "2", "3"}), 2, "newer: one argument too many: 3");
}

} // namespace corvanta
