#include "DesignSystem/Plattformtexte.hpp"
#include "DesignSystem/Sprachdatei.hpp"
#include "DesignSystem/Textkatalog.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Platform/ResourceFolder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {
namespace {

std::set<std::string> catalogueKeys() {
    return {Textkatalog::alle.begin(), Textkatalog::alle.end()};
}

std::set<std::string> allKeys() {
    std::set<std::string> keys = catalogueKeys();
    keys.insert(Plattformtexte::alle.begin(), Plattformtexte::alle.end());
    return keys;
}

/// The whole and the first group of each match of a regular expression. ICU's, because g++ warns about the
/// standard library's own under the sanitizers.
std::vector<std::pair<std::string, std::string>> matches(const char* expression, const std::string& text) {
    UErrorCode error = U_ZERO_ERROR;
    const icu::UnicodeString subject = icu::UnicodeString::fromUTF8(text);
    icu::RegexMatcher matcher(icu::UnicodeString::fromUTF8(expression), subject, 0, error);
    std::vector<std::pair<std::string, std::string>> found;
    while (matcher.find(error)) {
        auto& [whole, group] = found.emplace_back();
        matcher.group(error).toUTF8String(whole);
        matcher.group(1, error).toUTF8String(group);
    }
    EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
    return found;
}

/// The placeholders of a text in a fixed order, without their numbers.
std::vector<std::string> placeholders(const std::string& text) {
    std::vector<std::string> found;
    for (const auto& [whole, kind] : matches(R"(%(?:\d+\$)?(@|l{0,2}d|(?:\.\d*)?f|%))", text))
        found.push_back(kind);
    std::ranges::sort(found);
    return found;
}

/// The shipped language file as it is installed.
Texttabelle shipped(const std::string& code) {
    const auto resources = resourceFolder(runningExecutable());
    if (!resources)
        return {};
    return Sprachdatei::lies(PosixFileManager(), *resources / "Sprachen" / (code + ".json"))
        .value_or(Texttabelle());
}

TEST(TextkatalogTest, HasDifferentTextsOnly) {
    EXPECT_EQ(Textkatalog::alle.size(), 78U);
    EXPECT_EQ(catalogueKeys().size(), 78U);
    EXPECT_FALSE(catalogueKeys().contains(""));
}

TEST(TextkatalogTest, KeepsItsOrder) {
    EXPECT_EQ(Textkatalog::alle[0], "Version %@");
    EXPECT_EQ(Textkatalog::alle[19], "Kommentar ein/aus");
    EXPECT_EQ(Textkatalog::alle[35], "Claude");
    EXPECT_EQ(Textkatalog::alle[47], "Corvanta");
    EXPECT_EQ(Textkatalog::alle[61], "Freigeben");
    EXPECT_EQ(Textkatalog::alle[70], "Oberfläche");
    EXPECT_EQ(Textkatalog::alle[77], "Kontrast");
}

TEST(TextkatalogTest, SaysTheCreditOnOneLineAsOnTwo) {
    std::string credit(Textkatalog::alle[1]);
    EXPECT_EQ(std::ranges::count(credit, '\n'), 1);
    std::ranges::replace(credit, '\n', ' ');
    EXPECT_EQ(Textkatalog::alle[50], credit);
}

TEST(PlattformtexteTest, HasNoTextTwiceAndNoneOfTheCatalogues) {
    EXPECT_EQ(allKeys().size(), Textkatalog::alle.size() + Plattformtexte::alle.size());
    EXPECT_FALSE(allKeys().contains(""));
}

TEST(ShippedLanguagesTest, TranslateEveryTextIntoEnglish) {
    const Texttabelle english = shipped("en");
    EXPECT_EQ(english.size(), allKeys().size() + 1);
    EXPECT_EQ(english.at("_sprache"), "English");
    for (const std::string& key : allKeys()) {
        const auto translation = english.find(key);
        ASSERT_NE(translation, english.end()) << key;
        EXPECT_NE(translation->second, "") << key;
    }
}

TEST(ShippedLanguagesTest, TranslateOnlyTextsThatThereAre) {
    for (const char* code : {"en", "de"}) {
        for (const auto& [key, translation] : shipped(code))
            EXPECT_TRUE(key == "_sprache" || allKeys().contains(key)) << code << ": " << key;
    }
}

TEST(ShippedLanguagesTest, KeepThePlaceholdersOfTheirKeys) {
    for (const char* code : {"en", "de"}) {
        for (const auto& [key, translation] : shipped(code))
            EXPECT_EQ(placeholders(translation), placeholders(key)) << code << ": " << key;
    }
}

TEST(ShippedLanguagesTest, SayNothingOfAnotherSystem) {
    const Texttabelle german = shipped("de");
    const Texttabelle english = shipped("en");
    EXPECT_EQ(german.at("_sprache"), "Deutsch");
    for (const std::string& key : allKeys()) {
        const auto found = german.find(key);
        const std::string& inGerman = found == german.end() ? key : found->second;
        for (const std::string& text : {inGerman, english.at(key)}) {
            for (const char* foreign : {"macOS", "Mac", "Finder", "⌘", "⌃", "⌥", "⇧"})
                EXPECT_EQ(text.find(foreign), std::string::npos) << text;
        }
    }
}

TEST(ShippedLanguagesTest, NameTheWebSiteOfThisBuild) {
    for (const char* code : {"en", "de"}) {
        for (const auto& [key, translation] : shipped(code))
            EXPECT_EQ((key + translation).find("@CORVANTA"), std::string::npos) << key;
    }
    EXPECT_THAT(shipped("en").at(std::string(Textkatalog::alle[72])), testing::HasSubstr(CORVANTA_WEBSITE));
}

/// The text of the string literals, joined as the compiler does, that are the first argument of a call of `t`
/// in C++ source; a call with another first argument is passed over.
std::vector<std::string> textsLookedUpIn(const std::string& source) {
    constexpr const char* call =
        R"re((?:^|[^\w.>:])t\(\s*((?:(?:"(?:[^"\\]|\\.)*+"|CORVANTA_WEBSITE)\s*+)++)[,)])re";
    std::vector<std::string> texts;
    for (const auto& [wholeCall, literals] : matches(call, source)) {
        std::string& text = texts.emplace_back();
        for (const auto& [piece, inside] : matches(R"re("((?:[^"\\]|\\.)*+)"|CORVANTA_WEBSITE)re", literals))
            text += piece == "CORVANTA_WEBSITE" ? CORVANTA_WEBSITE : inside;
        for (auto escape = text.find("\\n"); escape != std::string::npos; escape = text.find("\\n"))
            text.replace(escape, 2, "\n");
    }
    return texts;
}

TEST(LookedUpTextsTest, AreFoundInSource) {
    EXPECT_THAT(textsLookedUpIn(R"(a(t("eins"), t("zwei " "\n"
                                  "drei", x), format("nicht"), t(key), at("nicht"), x.t("nicht"));)"),
                testing::ElementsAre("eins", "zwei \ndrei"));
    EXPECT_THAT(textsLookedUpIn(R"(return t("bei " CORVANTA_WEBSITE " nach");)"),
                testing::ElementsAre("bei " CORVANTA_WEBSITE " nach"));
    EXPECT_THAT(textsLookedUpIn("t(\n    \"eins\")"), testing::ElementsAre("eins"));
}

TEST(LookedUpTextsTest, AreAllInTheLists) {
    const std::set<std::string> known = allKeys();
    const std::filesystem::path sources = std::filesystem::path(CORVANTA_SOURCE_FOLDER) / "src";
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources)) {
        if (entry.path().extension() != ".cpp" && entry.path().extension() != ".hpp")
            continue;
        ++files;
        std::ifstream file(entry.path());
        const std::string source{std::istreambuf_iterator<char>(file), {}};
        for (const std::string& text : textsLookedUpIn(source))
            EXPECT_TRUE(known.contains(text)) << entry.path().filename() << ": " << text;
    }
    EXPECT_GT(files, 100);
}

} // namespace
} // namespace corvanta
