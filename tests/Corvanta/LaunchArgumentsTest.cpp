#include "Corvanta/LaunchArguments.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace corvanta {
namespace {

using testing::ElementsAre;
using File = LaunchArguments::File;
using Request = LaunchArguments::Request;

LaunchArguments parsed(const std::vector<std::string>& words, const std::set<std::string>& existing = {}) {
    return LaunchArguments::parse(words, [&](const std::string& name) { return existing.contains(name); });
}

TEST(LaunchArguments, AskForNothingInParticularWithoutWords) {
    const LaunchArguments arguments = parsed({});
    EXPECT_EQ(arguments.request, Request::open);
    EXPECT_TRUE(arguments.files.empty());
    EXPECT_FALSE(arguments.readsStandardInput);
}

TEST(LaunchArguments, OpenSeveralFilesInTheirOrder) {
    EXPECT_THAT(parsed({"b.html", "a.css", "file:///c.js"}).files,
                ElementsAre(File{"b.html", {}}, File{"a.css", {}}, File{"file:///c.js", {}}));
}

TEST(LaunchArguments, JumpToTheLineBehindTheColon) {
    EXPECT_THAT(parsed({"datei.html:120"}, {"datei.html"}).files, ElementsAre(File{"datei.html", 120}));
    EXPECT_THAT(parsed({"datei.html:007"}, {"datei.html"}).files, ElementsAre(File{"datei.html", 7}));
}

TEST(LaunchArguments, OpenAFileThatIsReallyNamedSo) {
    EXPECT_THAT(parsed({"datei.html:120"}, {"datei.html", "datei.html:120"}).files,
                ElementsAre(File{"datei.html:120", {}}));
    EXPECT_THAT(parsed({"datei.html:120:3"}, {"datei.html", "datei.html:120"}).files,
                ElementsAre(File{"datei.html:120", 3}));
}

TEST(LaunchArguments, TakeTheWholeNameOfAFileThatIsNotThere) {
    EXPECT_THAT(parsed({"datei.html:120"}).files, ElementsAre(File{"datei.html:120", {}}));
}

TEST(LaunchArguments, TakeNothingButACountingNumberForALine) {
    for (const char* word : {"a:", "a:0", "a:-1", "a:+1", "a:1x", "a: 1", "a:99999999999999999999", "a:1:"})
        EXPECT_THAT(parsed({word}, {"a"}).files, ElementsAre(File{word, {}})) << word;
    EXPECT_THAT(parsed({":12"}, {""}).files, ElementsAre(File{":12", {}}));
}

TEST(LaunchArguments, MakeTheStandardInputADocumentBesideFiles) {
    const LaunchArguments arguments = parsed({"a.html", "-", "-"});
    EXPECT_TRUE(arguments.readsStandardInput);
    EXPECT_THAT(arguments.files, ElementsAre(File{"a.html", {}}));
}

TEST(LaunchArguments, EndTheOptionsWithTwoHyphens) {
    const LaunchArguments arguments = parsed({"--", "--help", "-x", "--", "-"});
    EXPECT_EQ(arguments.request, Request::open);
    EXPECT_THAT(arguments.files, ElementsAre(File{"--help", {}}, File{"-x", {}}, File{"--", {}}));
    EXPECT_TRUE(arguments.readsStandardInput);
}

TEST(LaunchArguments, KnowTheirOptions) {
    EXPECT_EQ(parsed({"--help"}).request, Request::help);
    EXPECT_EQ(parsed({"-h"}).request, Request::help);
    EXPECT_EQ(parsed({"a.html", "--version"}).request, Request::version);
    EXPECT_EQ(parsed({"--gapplication-service"}).request, Request::service);
}

TEST(LaunchArguments, NameAnOptionThatThereIsNot) {
    for (const char* word : {"--hilfe", "-v", "--help=ja", "---"}) {
        const LaunchArguments arguments = parsed({"a.html", word});
        EXPECT_EQ(arguments.request, Request::wrongCall) << word;
        EXPECT_EQ(arguments.unknownOption, word);
    }
}

} // namespace
} // namespace corvanta
