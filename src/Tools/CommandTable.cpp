#include "Tools/CommandTable.hpp"

#include "Tools/Commands.hpp"

namespace corvanta {

std::span<const Command> commandTable() {
    static const std::vector<Command> commands{
        {.name = "format",
         .options = {{"write", "", "rewrites the files in place, as UTF-8, only when they change"},
                     {"check", "", "names the files that would change, one a line; exits with 1 if any"}},
         .operands = "[FILE…]",
         .minimumOperandCount = 0,
         .maximumOperandCount = Command::anyNumber,
         .help = "Indents and breaks the lines of pages to fit their elements. Prints the texts one after\n"
                 "the other.",
         .example = "corvanta-text format --write index.html kontakt.html",
         .run = runFormat},
        {.name = "tokens",
         .options = {},
         .operands = "[FILE]",
         .minimumOperandCount = 0,
         .maximumOperandCount = 1,
         .help = "Prints what the editor colours, one JSON object a line. Locations and lengths count\n"
                 "UTF-16 code units.",
         .example = "corvanta-text tokens index.html",
         .run = runTokens},
        {.name = "highlight",
         .options = {{"theme", "ID", "dezent (also for an unknown ID), klassisch or kontrast"},
                     {"dark", "", "the theme's colours for a dark background"},
                     {"html", "", "an HTML fragment instead of colours for a terminal"}},
         .operands = "[FILE]",
         .minimumOperandCount = 0,
         .maximumOperandCount = 1,
         .help = "Prints the text in the colours of a theme.",
         .example = "corvanta-text highlight --theme kontrast --dark index.php",
         .run = runHighlight},
        {.name = "indent",
         .options = {},
         .operands = "[FILE]",
         .minimumOperandCount = 0,
         .maximumOperandCount = 1,
         .help = "Prints the number of tabs that a new line behind the text receives.",
         .example = "head -n 20 index.html | corvanta-text indent",
         .run = runIndent},
        {.name = "decode",
         .options = {},
         .operands = "[FILE]",
         .minimumOperandCount = 0,
         .maximumOperandCount = 1,
         .help = "Prints the text as UTF-8, whatever encoding the file has.",
         .example = "corvanta-text decode old.html > new.html",
         .run = runDecode},
        {.name = "merge",
         .options = {},
         .operands = "",
         .minimumOperandCount = 0,
         .maximumOperandCount = 0,
         .help = "Reads JSON objects, one a line, of a text that was edited in the preview (before, after),\n"
                 "its place among the same texts of the page (occurrence, total) and the page's source.\n"
                 "Prints for each the new source or {\"refused\":true}. A line that is no such object is\n"
                 "named on standard error and has no answer; the exit status is 2 then.",
         .example =
             "echo '{\"before\":\"a\",\"after\":\"b\",\"occurrence\":0,\"total\":1,\"source\":\"<p>a\"}' |\n"
             "      corvanta-text merge",
         .run = runMerge},
        {.name = "site",
         .options = {{"root", "DIR", "the root folder of the web site", Option::Necessity::required},
                     {"document", "FILE", "the page that is previewed", Option::Necessity::required}},
         .operands = "",
         .minimumOperandCount = 0,
         .maximumOperandCount = 0,
         .help = "Reads request URLs of the preview, one a line, and prints for each, as a JSON object,\n"
                 "what it asks for. Exits with 1 when FILE does not lie inside DIR.",
         .example = "echo vmpreview://dokument/style.css |\n"
                    "      corvanta-text site --root www --document www/index.html",
         .run = runSite},
        {.name = "links",
         .options = {},
         .operands = "[FILE]",
         .minimumOperandCount = 0,
         .maximumOperandCount = 1,
         .help = "Prints true or false: whether the page links local files.",
         .example = "corvanta-text links index.html",
         .run = runLinks},
        {.name = "newer",
         .options = {},
         .operands = "A B",
         .minimumOperandCount = 2,
         .maximumOperandCount = 2,
         .help = "Prints true or false: whether version A is newer than version B.",
         .example = "corvanta-text newer 1.10 1.9",
         .run = runNewer},
        {.name = "comment",
         .options = {{"location", "N", "where the selection starts", Option::Necessity::required},
                     {"length", "N", "how long it is; 0 is a caret", Option::Necessity::required}},
         .operands = "[FILE]",
         .minimumOperandCount = 0,
         .maximumOperandCount = 1,
         .help = "Makes the selection an HTML comment, or such a comment plain text again. Prints the whole\n"
                 "text and the new selection as a JSON object. Counts UTF-16 code units.",
         .example = "corvanta-text comment --location 120 --length 40 index.html",
         .run = runComment},
    };
    return commands;
}

} // namespace corvanta
