#include "ToolTest.hpp"

namespace corvanta {

namespace {

/// `text` without the sequences that begin with escape and end with "m".
std::string withoutColours(std::string text) {
    for (std::size_t start = text.find('\x1b'); start != std::string::npos; start = text.find('\x1b', start))
        text.erase(start, text.find('m', start) + 1 - start);
    return text;
}

} // namespace

class HighlightCommand : public ToolTest {
protected:
    static std::string html(const std::string& text, std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"highlight", "--html"});
        return runTool(options, text).output;
    }
};

TEST_F(HighlightCommand, ColoursForATerminal) {
    const ProgramResult result = runTool({"highlight"}, "a<br>b");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "a\x1b[38;2;74;76;78m<br\x1b[39m\x1b[38;2;74;76;78m>\x1b[39m"
                             "b");
}

TEST_F(HighlightCommand, ChangesNoCharacterOfTheText) {
    const std::string text =
        "<!-- ü😀\n -->\r\n<p title='€'>😀 x</p><script>let a = `1\n2`; // ß\n</script>ende";
    const std::string colored = runTool({"highlight", "--theme", "kontrast", "--dark"}, text).output;
    EXPECT_NE(colored, text);
    EXPECT_EQ(withoutColours(colored), text);
}

TEST_F(HighlightCommand, CutsBetweenCharactersOfSeveralBytes) {
    EXPECT_EQ(html("ü😀<!--😀ß-->€"),
              "<pre class=\"corvanta\">ü😀<span style=\"color:#B0B2B4\">&lt;!--😀ß--&gt;</span>€</pre>\n");
}

TEST_F(HighlightCommand, WritesAFragmentOfHTML) {
    EXPECT_EQ(html("a & <b>c</b>"),
              "<pre class=\"corvanta\">a &amp; <span style=\"color:#4A4C4E\">&lt;b</span>"
              "<span style=\"color:#4A4C4E\">&gt;</span>c<span style=\"color:#4A4C4E\">&lt;/b"
              "</span><span style=\"color:#4A4C4E\">&gt;</span></pre>\n");
    EXPECT_EQ(html(""), "<pre class=\"corvanta\"></pre>\n");
}

TEST_F(HighlightCommand, KeepsLineEndsThatAParserWouldDrop) {
    EXPECT_EQ(html("\nx"), "<pre class=\"corvanta\">\n\nx</pre>\n");
    EXPECT_EQ(html("a\r\nb"), "<pre class=\"corvanta\">a&#13;\nb</pre>\n");
}

TEST_F(HighlightCommand, TakesThemeAndAppearance) {
    const auto colour = [](const std::vector<std::string>& options) {
        const std::string output = html("<!-- -->", options);
        return output.substr(output.find('#'), 7);
    };
    EXPECT_EQ(colour({}), "#B0B2B4");
    EXPECT_EQ(colour({"--dark"}), "#5A5C5E");
    EXPECT_EQ(colour({"--theme", "klassisch"}), "#177500");
    EXPECT_EQ(colour({"--theme=klassisch", "--dark"}), "#6C9955");
    EXPECT_EQ(colour({"--theme", "kontrast"}), "#5A5A5A");
    EXPECT_EQ(colour({"--dark", "--theme", "kontrast"}), "#A8A8A8");
}

TEST_F(HighlightCommand, UsesTheDefaultThemeForAnUnknownOne) {
    for (const char* theme : {"Dezent", "", "unbekannt"})
        EXPECT_EQ(html("<!-- -->", {"--theme", theme}), html("<!-- -->")) << theme;
}

} // namespace corvanta
