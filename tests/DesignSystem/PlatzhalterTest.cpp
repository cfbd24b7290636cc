#include "DesignSystem/Platzhalter.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace corvanta {
namespace {

std::string fuellen(std::string_view vorlage, const std::vector<Textwert>& werte = {}) {
    return Platzhalter::fuellen(vorlage, werte);
}

TEST(PlatzhalterTest, FillsTextsAndNumbersInOrder) {
    EXPECT_EQ(fuellen("„%@“ ist %lld MB groß.", {"seite.html", 70}), "„seite.html“ ist 70 MB groß.");
    EXPECT_EQ(fuellen("%ld von %ld", {3, 17}), "3 von 17");
    EXPECT_EQ(fuellen("%d%@", {-1, "%@"}), "-1%@");
}

TEST(PlatzhalterTest, RoundsToTheDecimalPlacesThatAreAskedFor) {
    EXPECT_EQ(fuellen("%.0f pt", {14.0}), "14 pt");
    EXPECT_EQ(fuellen("%.0f", {13.9}), "14");
    EXPECT_EQ(fuellen("%.2f", {3.14159}), "3.14");
    EXPECT_EQ(fuellen("%f", {0.5}), "0.500000");
    EXPECT_EQ(fuellen("%.f", {2.7}), "3");
}

TEST(PlatzhalterTest, CutsOffWhatIsBehindThePointOfAWholeNumber) {
    EXPECT_EQ(fuellen("%lld pt", {13.9}), "13 pt");
    EXPECT_EQ(fuellen("%ld", {-13.9}), "-13");
    EXPECT_EQ(fuellen("%ld", {1e300}).size(), 301U);
    EXPECT_EQ(fuellen("%ld", {std::numeric_limits<double>::infinity()}), "inf");
}

TEST(PlatzhalterTest, WritesTheLargestAndSmallestNumbers) {
    EXPECT_EQ(fuellen("%lld", {std::numeric_limits<std::int64_t>::min()}), "-9223372036854775808");
    EXPECT_EQ(fuellen("%lld", {std::numeric_limits<std::int64_t>::max()}), "9223372036854775807");
}

TEST(PlatzhalterTest, TakesWhateverKindOfValueItIsGiven) {
    EXPECT_EQ(fuellen("%@ %@", {7, 1.5}), "7 1.5");
    EXPECT_EQ(fuellen("%ld %.1f", {"sieben", "halb"}), "sieben halb");
    EXPECT_EQ(fuellen("%.1f", {2}), "2.0");
}

TEST(PlatzhalterTest, MakesOnePercentSignOfTwo) {
    EXPECT_EQ(fuellen("100 %% von %@", {"a"}), "100 % von a");
    EXPECT_EQ(fuellen("%%@", {"a"}), "%@");
    EXPECT_EQ(fuellen("%%%@", {"a"}), "%a");
}

TEST(PlatzhalterTest, TakesValuesInAnotherOrderByNumber) {
    EXPECT_EQ(fuellen("%2$@ vor %1$@", {"a", "b"}), "b vor a");
    EXPECT_EQ(fuellen("%1$@ und %1$@", {"a"}), "a und a");
    EXPECT_EQ(fuellen("%2$lld %@", {"a", 5}), "5 a");
    EXPECT_EQ(fuellen("%1$.1f", {0.25}), "0.2");
}

TEST(PlatzhalterTest, LeavesPlaceholdersWithoutAValue) {
    EXPECT_EQ(fuellen("%@%@%@", {"a"}), "a%@%@");
    EXPECT_EQ(fuellen("%3$@ %0$@ %99$@", {"a"}), "%3$@ %0$@ %99$@");
    EXPECT_EQ(fuellen("%ld %.0f %%"), "%ld %.0f %");
}

TEST(PlatzhalterTest, LeavesOutValuesWithoutAPlaceholder) {
    EXPECT_EQ(fuellen("nichts", {"a", 1}), "nichts");
    EXPECT_EQ(fuellen("", {"a"}), "");
}

TEST(PlatzhalterTest, LeavesForeignPlaceholdersAndLonePercentSigns) {
    for (const char* vorlage :
         {"%n",   "%s",  "%",    "100 % sicher", "%.",           "%.0",  "%1$",  "%1$n", "%100$@", "%l",
          "%lll", "%*d", "%.*f", "%.100f",       "%.999999999f", "%08x", "%-5d", "%1",   "%ä",     "%1$%"})
        EXPECT_EQ(fuellen(vorlage, {"a", "b"}), vorlage);
}

TEST(PlatzhalterTest, GoesOnBehindAForeignPlaceholder) {
    EXPECT_EQ(fuellen("%s%n%@", {"a"}), "%s%na");
    EXPECT_EQ(fuellen("50 % %@", {"a"}), "50 % a");
}

TEST(PlatzhalterTest, KeepsNulBytesAndUmlautsInValues) {
    EXPECT_EQ(fuellen("<%@>", {std::string("ä\0ö", 5)}), std::string("<ä\0ö>", 7));
}

TEST(PlatzhalterTest, SurvivesEveryMixtureOfItsOwnCharacters) {
    constexpr std::string_view zeichen = "%%%%@ldf.$0129 n";
    std::mt19937 zufall(1);
    for (int versuch = 0; versuch < 20'000; ++versuch) {
        std::string vorlage;
        for (auto laenge = zufall() % 12; laenge > 0; --laenge)
            vorlage += zeichen[zufall() % zeichen.size()];
        // At most 99 decimal places of a number below ten for every placeholder.
        EXPECT_LE(fuellen(vorlage, {"a", 7, 1.5}).size(), vorlage.size() * 50) << vorlage;
    }
}

} // namespace
} // namespace corvanta
