#include "Corvanta/Unterstuetzung.hpp"

#include "Preview/PercentEncoding.hpp"

#include <fmt/format.h>

#include <utility>

namespace corvanta {

namespace {

constexpr const char* productName = "Corvanta";
constexpr const char* donationPage = "https://www.paypal.com/donate/";
constexpr const char* donationAccount = "spenden@corvanta.example";
constexpr const char* feedbackAddress = "rueckmeldung@corvanta.example";

std::string encoded(std::string_view text) {
    return PercentEncoding::encodingAllButLettersAndDigits(text);
}

} // namespace

Unterstuetzung::Unterstuetzung(std::optional<std::string> version, std::string systemVersion,
                               std::function<std::string()> wirksameKennung)
    : version_(std::move(version)),
      systemVersion_(std::move(systemVersion)),
      wirksameKennung_(std::move(wirksameKennung)) {}

std::string Unterstuetzung::fassung() const {
    return version_.value_or("2.0");
}

std::string Unterstuetzung::spende() {
    return fmt::format("{}?business={}&currency_code=EUR&item_name={}", donationPage,
                       encoded(donationAccount), encoded(productName));
}

std::string Unterstuetzung::rueckmeldung() const {
    const std::string subject = fmt::format("{} {}: Rückmeldung", productName, fassung());
    const std::string body = fmt::format("\n\n---\n{} {}\n{}\nSprache: {}", productName, fassung(),
                                         systemVersion_, wirksameKennung_());
    return fmt::format("mailto:{}?subject={}&body={}", feedbackAddress, encoded(subject), encoded(body));
}

} // namespace corvanta
