#include "DesignSystem/Sprachdatei.hpp"

#include <nlohmann/json.hpp>

#include <string>
#include <system_error>
#include <utility>

namespace corvanta {

namespace {

/// Takes in an object of strings while it is being read and stops at anything else, so that a deep or large
/// value of another kind is never built.
class Leser final : public nlohmann::json_sax<nlohmann::json> {
public:
    Texttabelle tabelle;

    bool start_object(std::size_t) override { return !std::exchange(imObjekt_, true); }
    bool end_object() override { return true; }

    bool key(string_t& name) override {
        name_ = std::move(name);
        return true;
    }
    bool string(string_t& wert) override {
        if (!imObjekt_)
            return false;
        tabelle.insert_or_assign(std::move(name_), std::move(wert));
        return true;
    }

    bool null() override { return false; }
    bool boolean(bool) override { return false; }
    bool number_integer(number_integer_t) override { return false; }
    bool number_unsigned(number_unsigned_t) override { return false; }
    bool number_float(number_float_t, const string_t&) override { return false; }
    bool binary(binary_t&) override { return false; }
    bool start_array(std::size_t) override { return false; }
    bool end_array() override { return false; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return false;
    }

private:
    bool imObjekt_ = false;
    std::string name_;
};

} // namespace

std::optional<Texttabelle> Sprachdatei::lies(const FileManager& dateien, const std::filesystem::path& ort) {
    const std::optional<std::uintmax_t> groesse = dateien.fileSize(ort);
    if (!groesse || *groesse > groessteDatei)
        return std::nullopt;
    std::error_code fehler;
    const std::optional<std::string> bytes = dateien.contents(ort, fehler);
    if (!bytes)
        return std::nullopt;
    Leser leser;
    if (!nlohmann::json::sax_parse(*bytes, &leser))
        return std::nullopt;
    return std::move(leser.tabelle);
}

} // namespace corvanta
