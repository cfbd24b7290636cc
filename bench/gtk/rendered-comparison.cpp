// Shows real pages before and after formatting in the same web view and compares what is seen: the text, and
// the box of every element. Prints a Markdown table of the differences with their causes.
//
//   rendered-comparison FOLDER [COUNT]     COUNT: about how many pages of the folder (300)

#include "EditorCore/HTMLFormatter.hpp"
#include "EditorCore/TextDecoding.hpp"
#include "PageRenderer.hpp"
#include "RealPageSelection.hpp"
#include "RenderedComparisonScript.hpp"

#include <fmt/format.h>
#include <gtk/gtk.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvanta {

namespace {

using Json = nlohmann::json;

constexpr std::size_t usualCount = 300;
constexpr std::size_t examplesShown = 3;

std::string rowText(std::string text) {
    for (std::size_t at = 0; (at = text.find('|', at)) != std::string::npos; at += 2)
        text.insert(at, 1, '\\');
    return text;
}

class Comparison {
public:
    explicit Comparison(std::filesystem::path input) : input_(std::move(input)) {
        std::cout << "| page | boxes that differ | by at most, px | first element that differs | box before "
                     "→ after "
                     "| text before → after | causes | proof |\n|---|---|---|---|---|---|---|---|\n";
    }

    void compare(const RealPageSelection::Page& page) {
        const std::string name = page.file.lexically_relative(input_).string();
        std::error_code error;
        const std::optional<std::string> bytes = files_.contents(page.file, error);
        const std::optional<PreviewSite> site = PreviewSite::make(page.file, page.package, files_);
        if (!bytes || !site) {
            fail(name, "cannot be read");
            return;
        }
        const std::string before = TextDecoding::string(*bytes);
        const std::string after = HTMLFormatter::format(before);
        if (before == after) {
            ++untouched_;
            return;
        }
        const std::optional<std::string> seen = look(*site, before, "return await collect();", {}, name);
        if (!seen)
            return;
        const std::optional<Json> result = compareWith(*site, *seen, after, name);
        if (!result)
            return;
        if (result->at("same")) {
            ++same_;
            row(name, *result, {}, {});
            return;
        }
        const std::optional<Json> again = compareWith(*site, *seen, before, name);
        if (!again)
            return;
        if (again->at("same"))
            report(name, *result);
        else
            fail(name, "differs from itself when loaded twice");
    }

    /// Returns whether every page was compared and every difference has a cause.
    bool conclude() const {
        std::cout << "\n| cause | pages | places | for example |\n|---|---|---|---|\n";
        for (const auto& [cause, sum] : causes_) {
            std::string examples;
            for (const std::string& page : sum.examples)
                examples += (examples.empty() ? "" : ", ") + page;
            std::cout << fmt::format("| {} | {} | {} | {} |\n", rowText(cause), sum.pages, sum.places,
                                     examples);
        }
        std::cout << fmt::format(
            "\n{} elements compared: {} pages look the same, {} differ, {} of these without a proven "
            "cause; the formatter changed nothing in {}, {} could not be compared\n",
            elements_, same_, different_, unproven_, untouched_, failed_);
        return failed_ == 0 && unproven_ == 0;
    }

private:
    struct Sum {
        std::size_t pages = 0;
        std::size_t places = 0;
        std::vector<std::string> examples;
    };

    std::optional<std::string> look(const PreviewSite& site, const std::string& text, std::string_view call,
                                    const std::string& argument, const std::string& name) {
        if (!renderer_.load(site, text)) {
            fail(name, "does not load");
            return std::nullopt;
        }
        std::string error;
        std::optional<std::string> answer =
            renderer_.call(std::string(renderedComparisonScript).append(call), argument, error);
        if (!answer)
            fail(name, error);
        return answer;
    }

    std::optional<Json> compareWith(const PreviewSite& site, const std::string& seen, const std::string& text,
                                    const std::string& name) {
        const std::optional<std::string> answer =
            look(site, text, "return await compare(argument);", seen, name);
        if (!answer)
            return std::nullopt;
        return Json::parse(*answer);
    }

    void report(const std::string& name, const Json& result) {
        ++different_;
        std::string causes;
        for (const auto& [cause, places] : result.at("causes").items()) {
            count(cause, places, name);
            causes += fmt::format("{}{} × {}", causes.empty() ? "" : "; ", places.get<std::size_t>(), cause);
        }
        std::string proof = result.at("proof");
        if (proof == "none") {
            ++unproven_;
            count("not proven", 1, name);
            proof += ": " + result.at("rest").dump();
        }
        row(name, result, causes, proof);
    }

    void row(const std::string& name, const Json& result, const std::string& causes,
             const std::string& proof) {
        const auto elements = result.at("elements").get<std::size_t>();
        elements_ += elements;
        const auto change = [&result](const char* before, const char* after) {
            return result.at(before) == result.at(after)
                       ? std::string()
                       : rowText(result[before].dump() + " → " + result[after].dump());
        };
        std::cout << fmt::format("| {} | {} of {} | {} | {} | {} | {} | {} | {} |\n", name,
                                 result.at("differingBoxes").get<std::size_t>(), elements,
                                 result.at("farthest").dump(), rowText(result.at("element")),
                                 change("boxBefore", "boxAfter"), change("lineBefore", "lineAfter"),
                                 rowText(causes), rowText(proof))
                  << std::flush;
    }

    void count(const std::string& cause, std::size_t places, const std::string& page) {
        Sum& sum = causes_[cause];
        ++sum.pages;
        sum.places += places;
        if (sum.examples.size() < examplesShown)
            sum.examples.push_back(page);
    }

    void fail(const std::string& name, const std::string& why) {
        ++failed_;
        std::cerr << name << ": " << why << '\n';
    }

    std::filesystem::path input_;
    PosixFileManager files_;
    PageRenderer renderer_;
    std::map<std::string, Sum> causes_;
    std::size_t same_ = 0;
    std::size_t elements_ = 0;
    std::size_t untouched_ = 0;
    std::size_t different_ = 0;
    std::size_t unproven_ = 0;
    std::size_t failed_ = 0;
};

} // namespace

} // namespace corvanta

int main(int argc, char** argv) {
    const std::size_t count = argc == 3 ? std::strtoul(argv[2], nullptr, 10) : corvanta::usualCount;
    if (argc < 2 || argc > 3 || count == 0) {
        std::cerr << "usage: rendered-comparison FOLDER [COUNT]\n";
        return 2;
    }
    if (gtk_init_check() == FALSE) {
        std::cerr << "rendered-comparison needs a display; run it through scripts/with-virtual-display\n";
        return 2;
    }
    const std::filesystem::path input = std::filesystem::canonical(argv[1]);
    corvanta::Comparison comparison(input);
    for (const auto& page : corvanta::RealPageSelection::pages(input, count))
        comparison.compare(page);
    return comparison.conclude() ? EXIT_SUCCESS : EXIT_FAILURE;
}
