#include "Corvanta/LaunchTexts.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvanta {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

TEST(LaunchTexts, ExplainEveryOption) {
    const std::string help = LaunchTexts::help();
    for (const char* line : {"\n  -           ", "\n  --          ", "\n  -h, --help  ", "\n  --version   "})
        EXPECT_THAT(help, HasSubstr(line));
    EXPECT_THAT(help, EndsWith("\n"));
}

TEST(LaunchTexts, NameTheProgramAndItsVersion) {
    EXPECT_EQ(LaunchTexts::version("1.2"), "Corvanta 1.2\n");
}

TEST(LaunchTexts, ComplainInOneLineThatNamesTheOption) {
    EXPECT_EQ(LaunchTexts::unknownOption("--100%"),
              "corvanta: Die Option --100% gibt es nicht. corvanta --help nennt alle.\n");
    EXPECT_THAT(LaunchTexts::inputTooLarge(), EndsWith(".\n"));
}

} // namespace
} // namespace corvanta
