#include "ToolTest.hpp"

namespace corvanta {

class DecodeCommand : public ToolTest {};

TEST_F(DecodeCommand, PrintsTheTextAsUtf8AndNothingElse) {
    EXPECT_EQ(runTool({"decode"}, "<p>Grüße</p>\r\n").output, "<p>Grüße</p>\r\n");
    EXPECT_EQ(runTool({"decode"}, "\xEF\xBB\xBF<p>").output, "<p>");
    EXPECT_EQ(runTool({"decode"}, "M\xE4rz 5 \x80").output, "März 5 €");
    const ProgramResult empty = runTool({"decode"});
    EXPECT_EQ(empty.output, "");
    EXPECT_EQ(empty.status, 0);
}

TEST_F(DecodeCommand, KeepsNul) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(runTool({"decode"}, text).output, text);
}

TEST_F(DecodeCommand, ReadsAFileOfAnySize) {
    std::string text;
    for (int line = 0; line < 200'000; ++line)
        text += "<p>Zeile " + std::to_string(line) + " ü</p>\n";
    EXPECT_EQ(runTool({"decode", file("gross.html", text)}).output, text);
    EXPECT_EQ(runTool({"decode"}, text).output, text);
}

} // namespace corvanta
