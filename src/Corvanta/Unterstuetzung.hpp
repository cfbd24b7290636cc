#pragma once

#include <functional>
#include <optional>
#include <string>

namespace corvanta {

/// The addresses with which users support the program: a donation, and a mail with what they noticed. All
/// texts are UTF-8.
class Unterstuetzung {
public:
    /// `version` is the program's, if it knows it; `systemVersion` the name and version of the operating
    /// system; `wirksameKennung` tells the identifier of the interface language at any time.
    Unterstuetzung(std::optional<std::string> version, std::string systemVersion,
                   std::function<std::string()> wirksameKennung);

    /// The version of the program as the mail names it.
    std::string fassung() const;

    /// The page that takes donations.
    static std::string spende();

    /// A mail to the maker, with a subject and a body that leaves room for the text and ends with the
    /// versions.
    std::string rueckmeldung() const;

private:
    std::optional<std::string> version_;
    std::string systemVersion_;
    std::function<std::string()> wirksameKennung_;
};

} // namespace corvanta
