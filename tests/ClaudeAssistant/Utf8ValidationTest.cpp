#include "ClaudeAssistant/Utf8Validation.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

using namespace std::string_view_literals;

TEST(Utf8Validation, AcceptsTheFirstAndLastCharacterOfEveryLength) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("\0\x7f"sv));
    EXPECT_TRUE(isUtf8("\u0080\u07ff\u0800\uffff\U00010000\U0010ffff"));
    EXPECT_TRUE(isUtf8("\ud7ff\ue000"));
    EXPECT_TRUE(isUtf8("sk-ant-äöü€😀"));
}

TEST(Utf8Validation, RefusesWhatIsNoCharacter) {
    for (const std::string_view bytes :
         {"\x80"sv, "a\xff"sv, "\xc3"sv, "\xc3x"sv, "\xe2\x82"sv, "\xf0\x9f\x98"sv, "\xe2\x82\x41"sv})
        EXPECT_FALSE(isUtf8(bytes));
}

TEST(Utf8Validation, RefusesOverlongFormsSurrogatesAndWhatIsBeyondUnicode) {
    for (const std::string_view bytes : {"\xc0\x80"sv, "\xc1\xbf"sv, "\xe0\x9f\xbf"sv, "\xf0\x8f\xbf\xbf"sv,
                                         "\xed\xa0\x80"sv, "\xf4\x90\x80\x80"sv, "\xf5\x80\x80\x80"sv})
        EXPECT_FALSE(isUtf8(bytes));
}

} // namespace
} // namespace corvanta
