#pragma once

#include <array>
#include <string_view>

namespace corvanta {

/// A ready-made fragment of the menu "Einfügen".
struct InsertTemplate {
    /// The menu item, a German text to be looked up.
    std::string_view title;
    std::string_view text;
    /// Where the caret goes, in UTF-16 code units from the start of the fragment.
    int cursorOffset;

    /// In the order of the menu.
    static const std::array<InsertTemplate, 9> all;
};

inline constexpr std::array<InsertTemplate, 9> InsertTemplate::all{{
    {"Link", R"(<a href=""></a>)", 9},
    {"Bild", R"(<img src="" alt="">)", 10},
    {"Div-Container", "<div>\n\t\n</div>", 7},
    {"Span", "<span></span>", 6},
    {"Liste", "<ul>\n\t<li></li>\n\t<li></li>\n\t<li></li>\n</ul>", 9},
    {"Tabelle",
     "<table>\n"
     "\t<tr>\n\t\t<th></th>\n\t\t<th></th>\n\t</tr>\n"
     "\t<tr>\n\t\t<td></td>\n\t\t<td></td>\n\t</tr>\n"
     "</table>",
     17},
    {"Kommentar", "<!--  -->", 5},
    {"Zeilenumbruch", "<br>", 4},
    {"Trennlinie", "<hr>", 4},
}};

} // namespace corvanta
