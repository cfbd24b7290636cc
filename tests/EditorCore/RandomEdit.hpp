#pragma once

#include "ReferenceMerge.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace corvanta {

/// An edit of a page that is put together from the pieces that the merge treats in a way of their own.
struct RandomEdit {
    std::string source;
    std::string before;
    std::string after;
    std::int64_t occurrence = 0;
    std::int64_t total = 0;

    template <typename Generator>
    static RandomEdit from(Generator& random) {
        RandomEdit edit;
        edit.source = text(random, 40);
        const auto runs = ReferenceMerge::textRuns(edit.source);
        edit.before = text(random, 4);
        if (!runs.empty() && below(random, 8) != 0) {
            const auto& run = runs[below(random, runs.size())];
            edit.before = below(random, 3) == 0 ? part(random, run.text) : run.text;
        }
        edit.after = changed(random, edit.before);
        edit.total = static_cast<std::int64_t>(below(random, 5));
        edit.occurrence = static_cast<std::int64_t>(below(random, 5)) - 1;
        return edit;
    }

private:
    template <typename Generator>
    static std::size_t below(Generator& random, std::size_t limit) {
        return static_cast<std::size_t>(random()) % limit;
    }

    template <typename Generator>
    static std::string text(Generator& random, std::size_t longest) {
        static constexpr std::array<std::string_view, 60> pieces{
            "a",          "a",          "b",          "ab",         " ",          "\u00A0",    "\n",
            "\r\n",       "\r",         "\t",         "<p>",        "</p>",       "<br>",      "<b>",
            "<",          ">",          "<!--",       "-->",        "-",          "<a b=\"",   "\"",
            "'",          "<i c='>'>",  "&amp;",      "&nbsp;",     "&",          ";",         "&lt;",
            "&uuml;",     "&#117;",     "&#x61;",     "&#x301;",    "&#xD800;",   "&unknown;", "&thetasym;x",
            "\u00FC",     "u\u0308",    "\u0301",     "\u0308",     "\u200D",     "\uFE0F",    "\u0903",
            "\u0600",     "\u1100",     "\u1161",     "\u11A8",     "\uAC00",     "\uAC01",    "\u2764",
            "\U0001F469", "\U0001F467", "\U0001F1E9", "\U0001F1EA", "\U0001F3FD", "\u212A",    "\u0958",
            "\u4E00",     "\u200B",     "\u00AD",     "\u00A9"};
        std::string text;
        for (std::size_t count = below(random, longest + 1); count > 0; --count)
            text += pieces[below(random, pieces.size())];
        return text;
    }

    template <typename Generator>
    static std::string part(Generator& random, const std::string& text) {
        const auto characters = ReferenceMerge::characters(text);
        std::string part;
        std::size_t count = below(random, characters.size() + 1);
        for (std::size_t i = below(random, characters.size()); i < characters.size() && count > 0;
             ++i, --count)
            part += characters[i];
        return part;
    }

    template <typename Generator>
    static std::string changed(Generator& random, const std::string& before) {
        const auto characters = ReferenceMerge::characters(before);
        const std::size_t begin = below(random, characters.size() + 1);
        const std::size_t end = begin + below(random, characters.size() - begin + 1);
        std::string after;
        for (std::size_t i = 0; i < begin; ++i)
            after += characters[i];
        after += text(random, 3);
        for (std::size_t i = end; i < characters.size(); ++i)
            after += characters[i];
        return after;
    }
};

} // namespace corvanta
