#include "DesignSystem/Platzhalter.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace corvanta {

namespace {

enum class Art : std::uint8_t { prozentzeichen, text, ganzzahl, kommazahl };

/// One placeholder as it was written.
struct Fund {
    Art art = Art::text;

    /// Counted from 0; nothing when the placeholder takes the next value.
    std::optional<std::size_t> stelle;

    /// Decimal places.
    int nachkommastellen = 6;

    /// In bytes, with the percent sign.
    std::size_t laenge = 0;
};

/// Reads a text from the percent sign on that it starts with.
class Zeichenfolge {
public:
    explicit Zeichenfolge(std::string_view text) : text_(text) {}

    std::size_t gelesen() const { return gelesen_; }

    bool nimm(std::string_view teil) {
        if (!text_.substr(gelesen_).starts_with(teil))
            return false;
        gelesen_ += teil.size();
        return true;
    }

    /// A number of one or two digits. More would ask for gigabytes of decimal places.
    std::optional<int> zahl() {
        std::optional<int> wert;
        for (int ziffern = 0; ziffern < 2 && istZiffer(); ++ziffern)
            wert = wert.value_or(0) * 10 + (text_[gelesen_++] - '0');
        return wert;
    }

    /// What `lies` takes, or no step at all when it takes nothing.
    template <typename Lesen>
    auto versuche(Lesen lies) {
        const std::size_t anfang = gelesen_;
        auto ergebnis = lies();
        if (!ergebnis)
            gelesen_ = anfang;
        return ergebnis;
    }

private:
    bool istZiffer() const {
        return gelesen_ < text_.size() && text_[gelesen_] >= '0' && text_[gelesen_] <= '9';
    }

    std::string_view text_;
    std::size_t gelesen_ = 0;
};

std::optional<std::size_t> stelle(Zeichenfolge& folge) {
    return folge.versuche([&]() -> std::optional<std::size_t> {
        const std::optional<int> nummer = folge.zahl();
        if (!nummer || *nummer == 0 || !folge.nimm("$"))
            return std::nullopt;
        return static_cast<std::size_t>(*nummer) - 1;
    });
}

/// The placeholder that `text` starts with; its first character is a percent sign.
std::optional<Fund> fund(std::string_view text) {
    Zeichenfolge folge(text);
    Fund fund;
    folge.nimm("%");
    fund.stelle = stelle(folge);
    if (!fund.stelle && folge.nimm("%")) {
        fund.art = Art::prozentzeichen;
    } else if (folge.nimm("@")) {
        fund.art = Art::text;
    } else if (folge.nimm("d") || folge.nimm("ld") || folge.nimm("lld")) {
        fund.art = Art::ganzzahl;
    } else {
        fund.art = Art::kommazahl;
        if (folge.nimm("."))
            fund.nachkommastellen = folge.zahl().value_or(0);
        if (!folge.nimm("f"))
            return std::nullopt;
    }
    fund.laenge = folge.gelesen();
    return fund;
}

std::string alsText(const Textwert& wert, const Fund& fund) {
    switch (fund.art) {
    case Art::ganzzahl:
        return wert.ganzzahl();
    case Art::kommazahl:
        return wert.kommazahl(fund.nachkommastellen);
    default:
        return wert.text();
    }
}

} // namespace

std::string Platzhalter::fuellen(std::string_view vorlage, std::span<const Textwert> werte) {
    std::string text;
    std::size_t naechster = 0;
    for (;;) {
        const std::size_t vorher = std::min(vorlage.find('%'), vorlage.size());
        text += vorlage.substr(0, vorher);
        vorlage.remove_prefix(vorher);
        if (vorlage.empty())
            return text;

        const std::optional<Fund> platzhalter = fund(vorlage);
        const std::string_view wortlaut = vorlage.substr(0, platzhalter ? platzhalter->laenge : 1);
        vorlage.remove_prefix(wortlaut.size());
        if (!platzhalter) {
            text += wortlaut;
        } else if (platzhalter->art == Art::prozentzeichen) {
            text += '%';
        } else {
            const std::size_t stelle = platzhalter->stelle ? *platzhalter->stelle : naechster++;
            text += stelle < werte.size() ? alsText(werte[stelle], *platzhalter) : std::string(wortlaut);
        }
    }
}

} // namespace corvanta
