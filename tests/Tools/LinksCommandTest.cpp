#include "ToolTest.hpp"

namespace corvanta {

class LinksCommand : public ToolTest {};

TEST_F(LinksCommand, TellsWhetherThePageLinksLocalFiles) {
    EXPECT_EQ(runTool({"links"}, "<img SRC=logo.svg>").output, "true\n");
    EXPECT_EQ(runTool({"links"}, "<a href=\"https://example.org\">").output, "false\n");
    EXPECT_EQ(runTool({"links"}).output, "false\n");
    EXPECT_EQ(runTool({"links"}, "<img src=logo.svg>").status, 0);
    EXPECT_EQ(runTool({"links"}, "<p>").status, 0);
}

TEST_F(LinksCommand, DecodesThePageFirst) {
    // UTF-16, little-endian, with its mark.
    const std::string page("\xFF\xFEs\0r\0c\0=\0a\0", 12);
    EXPECT_EQ(runTool({"links", file("seite.html", page)}).output, "true\n");
}

} // namespace corvanta
