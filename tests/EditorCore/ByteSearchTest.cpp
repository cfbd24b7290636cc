#include "EditorCore/ByteSearch.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {

TEST(ByteSearch, FindsACharacterAtEveryPlaceOfTextsOfEveryLength) {
    for (std::size_t length = 0; length < 40; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            std::string text(length, '\xBE');
            text[place] = '>';
            for (std::size_t start = 0; start <= length; ++start)
                EXPECT_EQ(ByteSearch::next(text, start, '>'), start <= place ? place : length);
        }
    }
}

TEST(ByteSearch, FindsTheFirstOfSeveralCharacters) {
    const std::string text = "none of them here; 'then' \"this\" > that";
    EXPECT_EQ(ByteSearch::next(text, 0, '>', '"', '\''), text.find('\''));
    EXPECT_EQ(ByteSearch::next(text, text.find('"'), '>', '"', '\''), text.find('"'));
    EXPECT_EQ(ByteSearch::next(text, text.find('>'), '>', '"', '\''), text.find('>'));
    EXPECT_EQ(ByteSearch::next(text, text.find('>') + 1, '>', '"', '\''), text.size());
    EXPECT_EQ(ByteSearch::next(text, text.size(), '>'), text.size());
}

TEST(ByteSearch, FindsTheEndOfASignOfSeveralCharacters) {
    for (std::size_t before = 0; before < 30; ++before) {
        const std::string start = std::string(before, '-') + ">- ->";
        EXPECT_EQ(ByteSearch::endAfter("-->", start + "-->x", start.size()), start.size() + 3);
        EXPECT_EQ(ByteSearch::endAfter("-->", start, before), start.size());
        EXPECT_EQ(ByteSearch::endAfter("-->", start, 0), before < 2 ? start.size() : before + 1);
        EXPECT_EQ(ByteSearch::endAfter(">", start, 0), before + 1);
    }
    EXPECT_EQ(ByteSearch::endAfter("-->", "->-->", 0), 5U);
    EXPECT_EQ(ByteSearch::endAfter("-->", "<!-->", 4), 5U);
    EXPECT_EQ(ByteSearch::endAfter("-->", "--", 2), 2U);
    EXPECT_EQ(ByteSearch::endAfter("-->", "", 0), 0U);
}

} // namespace corvanta
