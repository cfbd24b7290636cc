#include "Corvanta/Unterstuetzung.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

Unterstuetzung withVersion(std::optional<std::string> version) {
    return {std::move(version), "Debian GNU/Linux 12", [] { return std::string("de"); }};
}

TEST(Unterstuetzung, AsksForDonationsInEurosForTheProduct) {
    EXPECT_EQ(Unterstuetzung::spende(), "https://www.paypal.com/donate/"
                                        "?business=spenden%40corvanta%2Eexample"
                                        "&currency_code=EUR&item_name=Corvanta");
}

TEST(Unterstuetzung, NamesTheVersionInTheSubjectOfTheMail) {
    EXPECT_NE(withVersion("1.4").rueckmeldung().find("?subject=Corvanta%201%2E4%3A%20R%C3%BCckmeldung&body="),
              std::string::npos);
}

TEST(Unterstuetzung, EndsTheMailWithVersionsAndLanguage) {
    const std::string mail = withVersion("1.4").rueckmeldung();
    EXPECT_TRUE(mail.ends_with("&body=%0A%0A%2D%2D%2D%0ACorvanta%201%2E4%0ADebian%20GNU%2FLinux%2012%0A"
                               "Sprache%3A%20de"))
        << mail;
}

TEST(Unterstuetzung, WritesToTheMaker) {
    EXPECT_TRUE(
        withVersion("1.4").rueckmeldung().starts_with("mailto:rueckmeldung@corvanta.example?subject="));
}

TEST(Unterstuetzung, AsksForTheLanguageWhenTheMailIsWritten) {
    std::string kennung = "de";
    const Unterstuetzung unterstuetzung("1.0", "Linux", [&kennung] { return kennung; });
    kennung = "en";
    EXPECT_TRUE(unterstuetzung.rueckmeldung().ends_with("Sprache%3A%20en"));
}

TEST(Unterstuetzung, HasAVersionEvenWhenTheProgramKnowsNone) {
    EXPECT_EQ(withVersion(std::nullopt).fassung(), "2.0");
}

} // namespace
} // namespace corvanta
