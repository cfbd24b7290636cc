#pragma once

#include "Platform/PosixFileManager.hpp"
#include "Platform/gtk/GLibMainQueue.hpp"
#include "Preview/PosixFolderBookmarks.hpp"
#include "Preview/SharedMimeInfo.hpp"
#include "Preview/gtk/PreviewColumn.hpp"
#include "Support/InMemoryUserDefaults.hpp"
#include "Support/RecordedLog.hpp"
#include "Support/TemporaryFolder.hpp"
#include "Support/gtk/Keyboard.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/PageScripting.hpp"
#include "Support/gtk/TestWindow.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace corvanta {

/// A preview column in a window, with the real web engine and a folder of its own.
class PreviewColumnFixture : public testing::Test {
protected:
    void SetUp() override {
        column.start();
        ASSERT_TRUE(waitUntil([this] { return column.webView() != nullptr; }))
            << "the web engine cannot start";
    }

    void show(const std::string& html) {
        source = html;
        column.update(html, document);
    }

    std::string inPage(const std::string& expression) {
        return evaluateInPage(column.webView()->webView(), expression);
    }

    /// Waits until `expression` gives `value` in the page.
    testing::AssertionResult becomes(const std::string& expression, const std::string& value) {
        std::string last;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (std::chrono::steady_clock::now() < deadline) {
            last = inPage(expression);
            if (last == value)
                return testing::AssertionSuccess();
            letPass(std::chrono::milliseconds(20));
        }
        return testing::AssertionFailure() << expression << " is " << last << ", not " << value;
    }

    /// Shows `html` and waits until it can be typed into.
    void showEditable(const std::string& html) {
        show(html);
        ASSERT_TRUE(waitUntil([this] { return column.coordinator()->isSettled(); }));
        ASSERT_TRUE(becomes("document.designMode + location.href", "onvmpreview://dokument/index.html"));
        gtk_widget_grab_focus(GTK_WIDGET(column.webView()->webView()));
    }

    /// Puts the caret into the first text below the element that `selector` finds, behind `offset` UTF-16
    /// code units.
    void putCaret(const std::string& selector, int offset) { select(selector, offset, selector, offset); }

    void select(const std::string& from, int start, const std::string& to, int end) {
        const auto text = [](const std::string& selector) {
            return "document.createTreeWalker(document.querySelector('" + selector +
                   "'), NodeFilter.SHOW_TEXT).nextNode()";
        };
        ASSERT_EQ(inPage("window.focus(); getSelection().setBaseAndExtent(" + text(from) + ", " +
                         std::to_string(start) + ", " + text(to) + ", " + std::to_string(end) + "); 1"),
                  "1");
    }

    /// The source that the column handed to the editor becomes `html`.
    testing::AssertionResult sourceBecomes(const std::string& html) {
        if (waitUntil([&] { return source == html; }, std::chrono::seconds(5)))
            return testing::AssertionSuccess();
        testing::AssertionResult failure = testing::AssertionFailure();
        failure << "the source is " << source << "\n";
        for (const std::string& line : log.lines)
            failure << line << "\n";
        return failure << "the page is " << inPage("document.body.innerHTML");
    }

    TemporaryFolder folder;
    std::filesystem::path document = folder / "index.html";
    Keyboard keyboard;
    PosixFileManager fileManager;
    SharedMimeInfo typeRegistry{fileManager, SharedMimeInfo::environmentDataFolders()};
    GLibMainQueue queue;
    RecordedLog log;
    InMemoryUserDefaults defaults;
    PosixFolderBookmarks bookmarks;
    PreviewFolderAccess folderAccess{defaults, bookmarks, fileManager, log};
    PreviewEngine engine;

    /// The document's text: what was shown last or what the page's edits made of it.
    std::string source;
    /// How often an edit in the page changed the source.
    int edits = 0;
    std::vector<std::string> openedLinks;

    PreviewColumn::Services services{
        engine, folderAccess, fileManager, typeRegistry, queue, log, [this](const std::string& url) {
            openedLinks.push_back(url);
        }};
    PreviewColumn column{services, [this](const std::string& html) {
                             source = html;
                             ++edits;
                             column.update(html, document);
                         }};
    TestWindow window{column};
};

} // namespace corvanta
