#include "ToolTest.hpp"

#include <nlohmann/json.hpp>

namespace corvanta {

class MergeCommand : public ToolTest {
protected:
    static std::string edit(const std::string& before, const std::string& after, const std::string& source,
                            int total = 1) {
        const nlohmann::json edit{
            {"before", before}, {"after", after}, {"occurrence", 0}, {"total", total}, {"source", source}};
        return edit.dump() + "\n";
    }
};

TEST_F(MergeCommand, AnswersTheNewSource) {
    const ProgramResult result = runTool({"merge"}, edit("alt", "neu ü😀", "<p title=\"x\">alt</p>\n"));
    EXPECT_EQ(result.output, "{\"source\":\"<p title=\\\"x\\\">neu ü😀</p>\\n\"}\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST_F(MergeCommand, AnswersThatAnEditIsRefused) {
    const ProgramResult result = runTool({"merge"}, edit("fehlt", "neu", "<p>alt</p>"));
    EXPECT_EQ(result.output, "{\"refused\":true}\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST_F(MergeCommand, AnswersEachEditBeforeItReadsTheNext) {
    ChildProcess tool({CORVANTA_TEXT, "merge"});
    tool.write(edit("alt", "neu", "<p>alt"));
    EXPECT_EQ(tool.readLine(), "{\"source\":\"<p>neu\"}\n");
    tool.write(edit("fehlt", "neu", "<p>alt"));
    EXPECT_EQ(tool.readLine(), "{\"refused\":true}\n");
    EXPECT_EQ(tool.finish().status, 0);
}

TEST_F(MergeCommand, IgnoresMembersThatItDoesNotKnow) {
    EXPECT_EQ(runTool({"merge"}, R"({"kind":"text","before":"a","after":"b","occurrence":0,"total":1,)"
                                 R"("source":"<p>a"})")
                  .output,
              "{\"source\":\"<p>b\"}\n");
}

TEST_F(MergeCommand, NamesTheLinesThatAreNoEditAndAnswersTheOthers) {
    const std::string good = edit("alt", "neu", "<p>alt");
    for (const char* wrong :
         {"", "{", "[]", "null", "\"text\"", "{}", R"({"before":"a","after":"b","occurrence":0,"total":1})",
          R"({"before":1,"after":"b","occurrence":0,"total":1,"source":""})",
          R"({"before":"a","after":"b","occurrence":"0","total":1,"source":""})",
          R"({"before":"a","after":"b","occurrence":0,"total":1.5,"source":""})",
          R"({"before":"a","after":"b","occurrence":9223372036854775808,"total":1,"source":""})",
          "{\"before\":\"\xFF\",\"after\":\"b\",\"occurrence\":0,\"total\":1,\"source\":\"\"}",
          R"({"before":"\ud800","after":"b","occurrence":0,"total":1,"source":""})"}) {
        std::string input = good;
        input += wrong;
        input += "\n" + good;
        const ProgramResult result = runTool({"merge"}, input);
        EXPECT_EQ(result.output, "{\"source\":\"<p>neu\"}\n{\"source\":\"<p>neu\"}\n") << wrong;
        EXPECT_EQ(result.errors, "corvanta-text: merge: line 2 is no edit\n") << wrong;
        EXPECT_EQ(result.status, 2) << wrong;
    }
}

TEST_F(MergeCommand, ReadsAnEditAsDeepAsItLikes) {
    const ProgramResult result = runTool({"merge"}, std::string(200'000, '['));
    EXPECT_EQ(result.errors, "corvanta-text: merge: line 1 is no edit\n");
}

TEST_F(MergeCommand, PrintsNothingWithoutAnEdit) {
    const ProgramResult result = runTool({"merge"});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 0);
}

} // namespace corvanta
