#include "Corvanta/InsertTemplate.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

struct Expected {
    std::string_view title;
    std::string_view beforeCaret;
    std::string_view afterCaret;
    std::size_t length;
};

constexpr std::array<Expected, 9> expected{{
    {"Link", "<a href=\"", "\"></a>", 15},
    {"Bild", "<img src=\"", "\" alt=\"\">", 19},
    {"Div-Container", "<div>\n\t", "\n</div>", 14},
    {"Span", "<span>", "</span>", 13},
    {"Liste", "<ul>\n\t<li", "></li>\n\t<li></li>\n\t<li></li>\n</ul>", 43},
    {"Tabelle", "<table>\n\t<tr>\n\t\t<", // the first header cell
     "th></th>\n\t\t<th></th>\n\t</tr>\n\t<tr>\n\t\t<td></td>\n\t\t<td></td>\n\t</tr>\n</table>", 90},
    {"Kommentar", "<!-- ", " -->", 9},
    {"Zeilenumbruch", "<br>", "", 4},
    {"Trennlinie", "<hr>", "", 4},
}};

TEST(InsertTemplate, PutsTheCaretWhereOneTypesOn) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const InsertTemplate& fragment = InsertTemplate::all[i];
        const auto offset = static_cast<std::size_t>(fragment.cursorOffset);
        EXPECT_EQ(fragment.title, expected[i].title);
        EXPECT_EQ(fragment.text.substr(0, offset), expected[i].beforeCaret) << fragment.title;
        EXPECT_EQ(fragment.text.substr(offset), expected[i].afterCaret) << fragment.title;
        EXPECT_EQ(fragment.text.size(), expected[i].length) << fragment.title;
    }
}

} // namespace
} // namespace corvanta
