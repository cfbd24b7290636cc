#include "DesignSystem/Sprache.hpp"

#include "DesignSystem/Plattformtexte.hpp"
#include "DesignSystem/Sprachdatei.hpp"
#include "DesignSystem/Textkatalog.hpp"
#include "DesignSystem/t.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Support/InMemoryUserDefaults.hpp"
#include "Support/TemporaryFolder.hpp"
#include "Support/UnprivilegedUser.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include <fstream>
#include <thread>
#include <unordered_set>

namespace corvanta {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The real file system, counting what is read.
class CountingFileManager final : public FileManager {
public:
    std::optional<std::string> contents(const std::filesystem::path& path,
                                        std::error_code& error) const override {
        ++reads;
        return files_.contents(path, error);
    }
    std::optional<std::uintmax_t> fileSize(const std::filesystem::path& path) const override {
        return files_.fileSize(path);
    }
    std::optional<std::vector<std::filesystem::path>>
    contentsOfFolder(const std::filesystem::path& path) const override {
        return files_.contentsOfFolder(path);
    }
    bool isListable(const std::filesystem::path& path) const override { return files_.isListable(path); }
    std::filesystem::path resolvingSymlinks(const std::filesystem::path& path) const override {
        return files_.resolvingSymlinks(path);
    }

    mutable std::atomic<int> reads = 0;

private:
    PosixFileManager files_;
};

class SpracheTest : public testing::Test {
protected:
    SpracheTest() {
        std::filesystem::create_directories(shipped);
        std::filesystem::create_directories(own);
    }

    static void write(const std::filesystem::path& file, const std::string& bytes) {
        std::ofstream(file, std::ios::binary) << bytes;
    }

    static std::string read(const std::filesystem::path& file) {
        std::error_code error;
        return PosixFileManager().contents(file, error).value_or("(unreadable)");
    }

    /// A language that says of itself which file it came from.
    static std::string language(const std::string& name, const std::string& link) {
        return nlohmann::json{{"_sprache", name}, {"Link", link}}.dump();
    }

    std::vector<std::string> codes() {
        std::vector<std::string> codes;
        for (const Sprachsatz& satz : sprache.verfuegbare())
            codes.push_back(satz.kennung);
        return codes;
    }

    std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const Sprachsatz& satz : sprache.verfuegbare())
            names.push_back(satz.name);
        return names;
    }

    TemporaryFolder folder;
    std::filesystem::path shipped = folder / "share/Sprachen";
    std::filesystem::path own = folder / "data/Corvanta/Sprachen";
    InMemoryUserDefaults defaults;
    CountingFileManager files;
    std::vector<std::string> preferred;
    Sprache sprache{{defaults, files, [this] { return preferred; }, folder / "share", folder / "data"}};
};

// Which language

TEST_F(SpracheTest, IsGermanWithoutAnyLanguageFile) {
    EXPECT_EQ(sprache.wirksameKennung(), "de");
    EXPECT_EQ(sprache.gewaehlteKennung(), "");
    EXPECT_THAT(codes(), IsEmpty());
    for (const std::string_view key : Textkatalog::alle)
        EXPECT_EQ(sprache.text(key), key);
}

TEST_F(SpracheTest, KeepsAChosenLanguageWithoutAFileAndShowsGerman) {
    write(shipped / "en.json", language("English", "Hyperlink"));
    preferred = {"en-GB"};
    sprache.setGewaehlteKennung("fr");
    EXPECT_EQ(sprache.wirksameKennung(), "fr");
    EXPECT_EQ(sprache.text("Link"), "Link");
}

TEST_F(SpracheTest, FollowsTheFirstPreferredLanguageThatThereIs) {
    write(shipped / "en.json", language("English", "Hyperlink"));
    preferred = {"en-GB", "de-DE"};
    EXPECT_EQ(sprache.wirksameKennung(), "en");
    EXPECT_EQ(sprache.text("Link"), "Hyperlink");
    preferred = {"fr", "pt-BR", "EN_US.UTF-8"};
    EXPECT_EQ(sprache.wirksameKennung(), "en");
}

TEST_F(SpracheTest, IsGermanWhenNoPreferredLanguageIsThere) {
    write(shipped / "en.json", language("English", "Hyperlink"));
    preferred = {"pt-BR"};
    EXPECT_EQ(sprache.wirksameKennung(), "de");
    preferred = {};
    EXPECT_EQ(sprache.wirksameKennung(), "de");
    preferred = {"", "C", "e", "\xC3", "ÄÖÜ"};
    EXPECT_EQ(sprache.wirksameKennung(), "de");
}

TEST_F(SpracheTest, DoesNotPreferALanguageWhoseFileIsDamaged) {
    write(shipped / "fr.json", "{");
    write(shipped / "en.json", language("English", "Hyperlink"));
    preferred = {"fr", "en"};
    EXPECT_EQ(sprache.wirksameKennung(), "en");
}

TEST_F(SpracheTest, IgnoresAStoredChoiceOfAnotherType) {
    defaults.set("sprache", 7.0);
    EXPECT_EQ(sprache.gewaehlteKennung(), "");
}

TEST_F(SpracheTest, StoresTheChoiceForItselfAndForTheToolkit) {
    sprache.setGewaehlteKennung("en");
    EXPECT_EQ(defaults.get<std::string>("sprache"), "en");
    EXPECT_EQ(defaults.get<std::vector<std::string>>("AppleLanguages"), std::vector<std::string>{"en"});
    EXPECT_EQ(sprache.gewaehlteKennung(), "en");
}

TEST_F(SpracheTest, StoresAnEmptyChoiceAndRemovesTheToolkitsForTheSystem) {
    sprache.setGewaehlteKennung("en");
    sprache.setGewaehlteKennung("");
    EXPECT_EQ(defaults.get<std::string>("sprache"), "");
    EXPECT_EQ(defaults.value("AppleLanguages"), std::nullopt);
}

// Which files

TEST_F(SpracheTest, ListsFilesByTheirLowerCasedNames) {
    write(own / "EN.JSON", "{\"Link\":\"x\"}");
    write(own / "pt-BR.json", "{\"Link\":\"x\"}");
    EXPECT_THAT(codes(), ElementsAre("en", "pt-br"));
    EXPECT_EQ(sprache.verfuegbare().front().ort, own / "EN.JSON");
}

TEST_F(SpracheTest, IgnoresTemplatesAndOtherFiles) {
    for (const char* name : {"_Vorlage.json", "_en.json", "notes.txt", ".json", "en", "en.json.bak", "json"})
        write(own / name, language("x", "x"));
    EXPECT_THAT(codes(), IsEmpty());
}

TEST_F(SpracheTest, NamesALanguageAfterItsCodeWhenItsFileDoesNot) {
    write(own / "en.json", "{\"Link\":\"x\"}");
    write(own / "fr.json", "{\"_sprache\":\"\",\"Link\":\"x\"}");
    EXPECT_THAT(names(), ElementsAre("EN", "FR"));
}

TEST_F(SpracheTest, PrefersTheUsersFileOfTheSameCode) {
    write(shipped / "en.json", language("English", "shipped"));
    write(own / "en.json", language("Mine", "own"));
    preferred = {"en"};
    EXPECT_THAT(sprache.verfuegbare(), ElementsAre(Sprachsatz{"en", "Mine", true, own / "en.json"}));
    EXPECT_EQ(sprache.text("Link"), "own");
}

TEST_F(SpracheTest, FallsBackToTheShippedFileWhenTheUsersIsDamagedOrEmpty) {
    write(shipped / "en.json", language("English", "shipped"));
    preferred = {"en"};
    for (const char* damaged : {"", "{}", "[]", "{\"Link\":"}) {
        write(own / "en.json", damaged);
        sprache.neuLaden();
        EXPECT_EQ(sprache.verfuegbare().front().eigen, false) << damaged;
        EXPECT_EQ(sprache.text("Link"), "shipped") << damaged;
    }
}

TEST_F(SpracheTest, ShowsTheLanguageThatItListsWhenTwoFilesDifferInCaseOnly) {
    write(own / "EN.json", language("Large", "large"));
    write(own / "en.json", language("Small", "small"));
    preferred = {"en"};
    EXPECT_THAT(names(), ElementsAre("Small"));
    EXPECT_EQ(sprache.text("Link"), "small");
}

TEST_F(SpracheTest, SortsNamesAsTheUsersLanguageDoes) {
    write(shipped / "a.json", "{\"_sprache\":\"Zulu\"}");
    write(shipped / "b.json", "{\"_sprache\":\"Ägyptisch\"}");
    write(shipped / "c.json", "{\"_sprache\":\"bretonisch\"}");
    write(shipped / "d.json", "{\"_sprache\":\"Chinesisch\"}");
    for (const char* german : {"de_DE.UTF-8", "de-DE", "C", ""}) {
        preferred = {german};
        EXPECT_THAT(names(), ElementsAre("Ägyptisch", "bretonisch", "Chinesisch", "Zulu")) << german;
    }
    preferred = {};
    EXPECT_THAT(names(), ElementsAre("Ägyptisch", "bretonisch", "Chinesisch", "Zulu"));
    preferred = {"sv_SE"};
    EXPECT_THAT(names(), ElementsAre("bretonisch", "Chinesisch", "Zulu", "Ägyptisch"));
}

TEST_F(SpracheTest, SortsEqualNamesByTheirCodes) {
    for (const char* code : {"e", "c", "a", "d", "b"})
        write(own / (std::string(code) + ".json"), "{\"_sprache\":\"Gleich\"}");
    EXPECT_THAT(codes(), ElementsAre("a", "b", "c", "d", "e"));
}

TEST_F(SpracheTest, WorksWithoutResources) {
    Sprache bare(
        {defaults, files, [] { return std::vector<std::string>{"en"}; }, std::nullopt, folder / "data"});
    write(own / "en.json", language("Mine", "own"));
    EXPECT_EQ(bare.mitgelieferterOrdner(), std::nullopt);
    EXPECT_EQ(bare.text("Link"), "own");
}

TEST_F(SpracheTest, WorksWithoutEitherFolder) {
    std::filesystem::remove_all(folder / "share");
    std::filesystem::remove_all(folder / "data");
    write(folder / "data", "a file in the way");
    EXPECT_EQ(sprache.text("Link"), "Link");
    EXPECT_THAT(codes(), IsEmpty());
    sprache.vorbereiten();
    EXPECT_EQ(sprache.eigenerOrdner(), own);
}

TEST_F(SpracheTest, MakesTheUsersFolderAtEachQuestion) {
    std::filesystem::remove_all(folder / "data");
    EXPECT_EQ(sprache.eigenerOrdner(), own);
    EXPECT_TRUE(std::filesystem::is_directory(own));
    std::filesystem::remove_all(folder / "data");
    EXPECT_EQ(sprache.eigenerOrdner(), own);
    EXPECT_TRUE(std::filesystem::is_directory(own));
}

TEST_F(SpracheTest, DoesNotStartWithoutAFolderForTheUsersData) {
    EXPECT_THROW(Sprache({defaults, files, [] { return std::vector<std::string>(); }, std::nullopt, {}}),
                 std::invalid_argument);
}

// Bad files

TEST_F(SpracheTest, SkipsFilesThatAreNoObjectOfStrings) {
    const std::string deep(100'000, '[');
    for (const std::string& bad : std::vector<std::string>{"",
                                                           " ",
                                                           "null",
                                                           "7",
                                                           "\"Link\"",
                                                           "[]",
                                                           "[\"Link\"]",
                                                           "{}",
                                                           "{\"Link\":{\"a\":\"b\"}}",
                                                           "{\"Link\":7}",
                                                           "{\"Link\":1.5}",
                                                           "{\"Link\":-7}",
                                                           "{\"Link\":true}",
                                                           "{\"Link\":null}",
                                                           "{\"Link\":[]}",
                                                           "{\"Link\":\"x\"",
                                                           "{\"Link\":\"x\"} x",
                                                           "{\"Link\":\"x\"}{}",
                                                           "{\"Link\":\"x\",}",
                                                           "{Link:\"x\"}",
                                                           "{\"Link\":\"\xFF\"}",
                                                           "{\"Link\":\"\xC3\"}",
                                                           "{\"Link\":\"\\ud800\"}",
                                                           "{\"Li\0nk\":\"x\"}",
                                                           std::string("{\0\"\0", 4),
                                                           std::string("\xFF\xFE{\0}\0", 6),
                                                           deep,
                                                           "{\"a\":" + deep,
                                                           "{\"Link\":\"line\nbreak\"}"}) {
        write(own / "xx.json", bad);
        EXPECT_THAT(codes(), IsEmpty()) << bad.substr(0, 40);
    }
}

TEST_F(SpracheTest, KeepsTheOtherLanguagesWhenOneIsBad) {
    write(own / "aa.json", "{\"Link\":7}");
    write(own / "en.json", language("English", "Hyperlink"));
    write(own / "zz.json", "{");
    EXPECT_THAT(codes(), ElementsAre("en"));
    sprache.setGewaehlteKennung("zz");
    EXPECT_EQ(sprache.text("Link"), "Link");
    sprache.setGewaehlteKennung("en");
    EXPECT_EQ(sprache.text("Link"), "Hyperlink");
}

TEST_F(SpracheTest, ReadsBehindAByteOrderMark) {
    write(own / "en.json", "\xEF\xBB\xBF" + language("English", "Hyperlink"));
    EXPECT_THAT(names(), ElementsAre("English"));
}

TEST_F(SpracheTest, TakesTheLastOfSeveralEqualKeys) {
    write(own / "en.json", R"({"Link":"eins","Link":"zwei"})");
    sprache.setGewaehlteKennung("en");
    EXPECT_EQ(sprache.text("Link"), "zwei");
}

TEST_F(SpracheTest, SkipsAFileThatIsTooLargeWithoutReadingIt) {
    write(own / "en.json", language("English", "Hyperlink"));
    write(own / "xx.json", "{");
    std::filesystem::resize_file(own / "xx.json", std::uintmax_t{1} << 30U);
    EXPECT_THAT(codes(), ElementsAre("en"));
    EXPECT_EQ(files.reads, 1);
}

TEST_F(SpracheTest, ReadsAFileOfTheLargestSize) {
    std::string text = language("English", "Hyperlink");
    text.resize(Sprachdatei::groessteDatei, ' ');
    write(own / "en.json", text);
    EXPECT_THAT(codes(), ElementsAre("en"));
    write(own / "en.json", text + ' ');
    EXPECT_THAT(codes(), IsEmpty());
}

TEST_F(SpracheTest, SkipsWhatIsNoFile) {
    std::filesystem::create_directory(own / "aa.json");
    ASSERT_EQ(::mkfifo((own / "bb.json").c_str(), 0600), 0);
    std::filesystem::create_symlink("cc.json", own / "cc.json");
    std::filesystem::create_symlink("nirgends", own / "dd.json");
    std::filesystem::create_symlink("/dev/zero", own / "ee.json");
    write(own / "en.json", language("English", "Hyperlink"));
    EXPECT_THAT(codes(), ElementsAre("en"));
    for (const char* code : {"aa", "bb", "cc", "dd", "ee"}) {
        sprache.setGewaehlteKennung(code);
        EXPECT_EQ(sprache.text("Link"), "Link");
    }
}

TEST_F(SpracheTest, FollowsALinkToAFile) {
    write(folder / "anderswo", language("English", "Hyperlink"));
    std::filesystem::create_symlink(folder / "anderswo", own / "en.json");
    EXPECT_THAT(codes(), ElementsAre("en"));
}

TEST_F(SpracheTest, SkipsAnUnreadableFile) {
    write(shipped / "en.json", language("English", "Hyperlink"));
    write(own / "fr.json", language("Français", "Lien"));
    write(own / "xx.json", language("x", "x"));
    ASSERT_EQ(::chmod((own / "xx.json").c_str(), 0), 0);
    const UnprivilegedUser user(folder.path());
    EXPECT_THAT(codes(), ElementsAre("en", "fr"));
}

TEST_F(SpracheTest, SkipsAFolderThatMayNotBeListed) {
    write(shipped / "en.json", language("English", "Hyperlink"));
    write(own / "fr.json", language("Français", "Lien"));
    ASSERT_EQ(::chmod(own.c_str(), 0), 0);
    {
        const UnprivilegedUser user(folder.path());
        EXPECT_THAT(codes(), ElementsAre("en"));
    }
    ASSERT_EQ(::chmod(own.c_str(), 0700), 0);
}

TEST_F(SpracheTest, ReadsOnlyTheFileInUseOfTenThousand) {
    for (int i = 0; i < 10'000; ++i)
        write(own / ("x" + std::to_string(i) + ".json"), "{\"Link\":\"x\"}");
    write(shipped / "en.json", language("English", "Hyperlink"));
    preferred = {"en"};
    EXPECT_EQ(sprache.text("Link"), "Hyperlink");
    EXPECT_LE(files.reads, 2);
    EXPECT_EQ(codes().size(), 10'001U);
}

TEST_F(SpracheTest, ListsAFileWhoseNameIsNotUtf8) {
    write(own / "x\xFF.json", "{\"Link\":\"x\"}");
    EXPECT_THAT(codes(), ElementsAre("x\uFFFD"));
}

// Texts

TEST_F(SpracheTest, FallsBackToTheKeyForAnEmptyOrMissingTranslation) {
    write(own / "en.json", R"({"Link":"","Bild":"Image"})");
    sprache.setGewaehlteKennung("en");
    EXPECT_EQ(sprache.text("Link"), "Link");
    EXPECT_EQ(sprache.text("Bild"), "Image");
    EXPECT_EQ(sprache.text("Span"), "Span");
    EXPECT_EQ(sprache.text(""), "");
}

TEST_F(SpracheTest, KeepsItsTextsUntilItIsToldToReadAgain) {
    write(own / "en.json", language("English", "before"));
    sprache.setGewaehlteKennung("en");
    EXPECT_EQ(sprache.text("Link"), "before");
    write(own / "en.json", language("English", "after"));
    EXPECT_EQ(sprache.text("Link"), "before");
    sprache.neuLaden();
    EXPECT_EQ(sprache.text("Link"), "after");
}

TEST_F(SpracheTest, ReadsAgainAfterAChoice) {
    write(own / "en.json", language("English", "Hyperlink"));
    write(own / "fr.json", language("Français", "Lien"));
    sprache.setGewaehlteKennung("en");
    EXPECT_EQ(sprache.text("Link"), "Hyperlink");
    sprache.setGewaehlteKennung("fr");
    EXPECT_EQ(sprache.text("Link"), "Lien");
    sprache.setGewaehlteKennung("");
    EXPECT_EQ(sprache.text("Link"), "Link");
}

TEST_F(SpracheTest, DoesNotTryAgainByItselfAfterAFailure) {
    sprache.setGewaehlteKennung("en");
    EXPECT_EQ(sprache.text("Link"), "Link");
    write(own / "en.json", language("English", "Hyperlink"));
    EXPECT_EQ(sprache.text("Link"), "Link");
    sprache.neuLaden();
    EXPECT_EQ(sprache.text("Link"), "Hyperlink");
}

TEST_F(SpracheTest, ReadsOnceForManyThreads) {
    write(own / "en.json", language("English", "Hyperlink"));
    sprache.setGewaehlteKennung("en");
    std::vector<std::string> answers(8);
    {
        std::vector<std::jthread> threads;
        for (std::string& answer : answers)
            threads.emplace_back([&] { answer = sprache.text("Link"); });
    }
    EXPECT_THAT(answers, testing::Each("Hyperlink"));
    EXPECT_EQ(files.reads, 1);
}

TEST_F(SpracheTest, AnswersWhileAnotherThreadResets) {
    write(own / "en.json", language("English", "Hyperlink"));
    sprache.setGewaehlteKennung("en");
    const std::jthread resetting([&](const std::stop_token& stopped) {
        while (!stopped.stop_requested())
            sprache.neuLaden();
    });
    for (int i = 0; i < 200; ++i)
        ASSERT_EQ(sprache.text("Link"), "Hyperlink");
}

TEST_F(SpracheTest, MayBeAskedByAnObserverOfTheChoice) {
    write(own / "en.json", language("English", "Hyperlink"));
    std::string seen;
    const Subscription subscription = defaults.observe("sprache", [&] { seen = sprache.text("Link"); });
    sprache.setGewaehlteKennung("en");
    EXPECT_FALSE(seen.empty());
    EXPECT_EQ(sprache.text("Link"), "Hyperlink");
}

// Template

TEST_F(SpracheTest, WritesATemplateWithEveryText) {
    sprache.vorbereiten();
    const auto vorlage = nlohmann::json::parse(read(own / "_Vorlage.json"));
    EXPECT_EQ(vorlage.size(), 79U);
    EXPECT_EQ(vorlage.at("_sprache"), "Name dieser Sprache");
    for (const std::string_view key : Textkatalog::alle)
        EXPECT_EQ(vorlage.at(std::string(key)), "");
}

TEST_F(SpracheTest, WritesATemplateOfItsOwnForTheTextsOfThePlatform) {
    sprache.vorbereiten();
    const auto vorlage = nlohmann::json::parse(read(own / "_Vorlage_Plattform.json"));
    EXPECT_EQ(vorlage.size(), Plattformtexte::alle.size());
    for (const std::string_view key : Plattformtexte::alle)
        EXPECT_EQ(vorlage.at(std::string(key)), "");
}

TEST_F(SpracheTest, WritesTheTemplateReadablySortedAndWithPlainSlashes) {
    sprache.vorbereiten();
    const std::string text = read(own / "_Vorlage.json");
    EXPECT_THAT(text, testing::HasSubstr("\"Vorschau ein-/ausblenden\""));
    EXPECT_THAT(text, testing::HasSubstr("Suchen …"));
    EXPECT_GE(std::ranges::count(text, '\n'), 79);
    std::vector<std::string> keys;
    const auto members = nlohmann::ordered_json::parse(text);
    for (const auto& [key, value] : members.items())
        keys.push_back(key);
    EXPECT_TRUE(std::ranges::is_sorted(keys));
}

TEST_F(SpracheTest, ReplacesAnEarlierTemplate) {
    write(own / "_Vorlage.json", "{\"alt\":\"ä\"}");
    sprache.vorbereiten();
    EXPECT_THAT(read(own / "_Vorlage.json"), testing::Not(testing::HasSubstr("\"alt\"")));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(own), {}), 2);
}

TEST_F(SpracheTest, DoesNotTouchATemplateThatIsUpToDate) {
    sprache.vorbereiten();
    const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(48);
    std::filesystem::last_write_time(own / "_Vorlage.json", longAgo);
    sprache.vorbereiten();
    EXPECT_EQ(std::filesystem::last_write_time(own / "_Vorlage.json"), longAgo);
}

TEST_F(SpracheTest, IgnoresThatATemplateCannotBeWritten) {
    std::filesystem::create_directory(own / "_Vorlage.json");
    sprache.vorbereiten();
    EXPECT_TRUE(std::filesystem::is_directory(own / "_Vorlage.json"));
    EXPECT_TRUE(std::filesystem::is_regular_file(own / "_Vorlage_Plattform.json"));
}

TEST_F(SpracheTest, TakesACopyOfTheTemplateAsALanguageWithGermanTexts) {
    sprache.vorbereiten();
    std::filesystem::copy_file(own / "_Vorlage.json", own / "fr.json");
    EXPECT_THAT(names(), ElementsAre("Name dieser Sprache"));
    sprache.setGewaehlteKennung("fr");
    EXPECT_EQ(sprache.text("Link"), "Link");
}

// The shared catalogue

TEST_F(SpracheTest, AnswersForTheViewsAsLongAsItIsTheSharedCatalogue) {
    write(own / "en.json",
          R"({"Link":"Hyperlink","Version %@":"Release %@","Nicht gefunden: %@":"%s %@%@"})");
    sprache.setGewaehlteKennung("en");
    EXPECT_EQ(Sprache::sitzung(), nullptr);
    EXPECT_EQ(t("Link"), "Link");
    {
        const Sprache::Sitzung sitzung(sprache);
        EXPECT_EQ(Sprache::sitzung(), &sprache);
        EXPECT_EQ(t("Link"), "Hyperlink");
        EXPECT_EQ(t("Version %@"), "Release %@");
        EXPECT_EQ(t("Version %@", "1.2"), "Release 1.2");
        EXPECT_EQ(t("Version %@", std::string("1.2")), "Release 1.2");
        EXPECT_EQ(t("Nicht gefunden: %@", "/a.css"), "%s /a.css%@");
        EXPECT_EQ(t("%lld von %lld", 3, std::size_t{7}), "3 von 7");
    }
    EXPECT_EQ(t("Link"), "Link");
}

TEST_F(SpracheTest, GivesThePlaceOfTheSharedCatalogueBack) {
    Sprache other(
        {defaults, files, [] { return std::vector<std::string>(); }, std::nullopt, folder / "data"});
    const Sprache::Sitzung sitzung(sprache);
    {
        const Sprache::Sitzung inner(other);
        EXPECT_EQ(Sprache::sitzung(), &other);
    }
    EXPECT_EQ(Sprache::sitzung(), &sprache);
}

TEST_F(SpracheTest, HasLanguagesThatCanBeKeptInASet) {
    const Sprachsatz english{"en", "English", false, "/en.json"};
    const std::unordered_set<Sprachsatz> set{english, english, {"fr", "Français", false, "/fr.json"}};
    EXPECT_EQ(set.size(), 2U);
    EXPECT_TRUE(set.contains(english));
}

} // namespace
} // namespace corvanta
