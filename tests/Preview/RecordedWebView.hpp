#pragma once

#include "Preview/WebView.hpp"

#include <fmt/format.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvanta {

/// Keeps what it was asked for: "load <url>", "html <text>", "run <script>", "reveal", "end". A load that
/// shall scroll the page ends in " at <x> <y>".
class RecordedWebView final : public WebView {
public:
    void load(const std::string& url, const std::optional<ScrollOffset>& scroll) override {
        calls.push_back("load " + url + place(scroll));
    }
    void loadHTML(const std::string& html, const std::optional<ScrollOffset>& scroll) override {
        calls.push_back("html " + html + place(scroll));
    }
    void reveal() override { calls.emplace_back("reveal"); }
    void evaluate(const std::string& script) override { calls.push_back("run " + script); }
    void ask(std::function<void()> answered) override {
        if (!hangs)
            answered();
    }
    void endProcess() override {
        calls.emplace_back("end");
        hangs = false;
    }

    std::vector<std::string> calls;
    /// Whether the page's process answers no question.
    bool hangs = false;

private:
    static std::string place(const std::optional<ScrollOffset>& scroll) {
        return scroll ? fmt::format(" at {} {}", scroll->x, scroll->y) : std::string();
    }
};

} // namespace corvanta
