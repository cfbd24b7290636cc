#pragma once

#include "HostilePageFixture.hpp"
#include "Support/gtk/WindowPixels.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace corvanta {

/// Much is refused to a page anyway as long as nobody has clicked into it.
class ClickedPageFixture : public HostilePageFixture {
protected:
    /// Shows a page with `body` that runs `script` whenever it is clicked, and clicks into it.
    void click(const std::string& script, const std::string& body = "<h1>diese</h1>") {
        showEditable(
            "<style>body { margin: 0; background: red }</style>" + body +
            "<script>window.results = [];"
            "const ask = promise => Promise.resolve().then(promise).then(() => results.push('ja'), "
            "() => results.push('nein'));"
            "addEventListener('click', () => { if (!navigator.userActivation.isActive || window.clicked)"
            "return; window.clicked = true; " +
            script + " });</script>");
        ASSERT_TRUE(waitUntil([this] {
            return pixelOnScreen(*column.webView(), 300, 200) == PixelColor{255, 0, 0};
        }));
        // The engine does not take every click on a busy machine for the user's.
        for (int tries = 0; tries < 20 && inPage("window.clicked") != "true"; ++tries) {
            clickOnScreen(*column.webView(), 300, 200);
            letPass(std::chrono::milliseconds(300));
        }
        ASSERT_EQ(inPage("window.clicked"), "true");
    }
};

} // namespace corvanta
