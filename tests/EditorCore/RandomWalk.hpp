#pragma once

#include "EditorCore/CommentToggle.hpp"
#include "EditorCore/EditorViewModel.hpp"
#include "EditorCore/HTMLFormatter.hpp"
#include "EditorCore/SharedText.hpp"
#include "EditorCore/SyntaxTokenizer.hpp"
#include "EditorCore/TextReplacement.hpp"
#include "EditorCore/TextView.hpp"
#include "EditorCore/Utf8.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// Works at random in a code pane, and holds the text of the model and of the view against a plain string
/// that is edited beside, and the colours against those of the whole text.
class RandomWalk {
public:
    /// The pane that is walked in. The view may be another one after `rebuild`.
    struct Pane {
        EditorViewModel& model;
        std::function<TextView&()> view;
        std::function<void()> undo;
        std::function<void()> redo;
        std::function<void()> rebuild;
        std::function<void(const std::string& themeID, double fontSize)> useSettings;
        std::function<std::vector<SyntaxSpan>()> runs;
    };

    RandomWalk(Pane pane, unsigned seed) : pane_(std::move(pane)), random_(seed) {
        plain_ = pane_.model.text->string();
    }

    /// 100,000 operations when long tests are asked for, else `usual`.
    static int operations(int usual) {
        return std::getenv("CORVANTA_LONG_TESTS") != nullptr ? 100'000 : usual;
    }

    /// Where a walk starts from: another one whenever a test is repeated.
    static unsigned nextSeed() {
        static unsigned last = 0;
        return ++last;
    }

    void walk(int operations) {
        for (int step = 0; step < operations; ++step) {
            const int kind = takeStep();
            const TextView& view = pane_.view();
            ASSERT_EQ(pane_.model.text->string(), plain_) << "step " << step << " of kind " << kind;
            ASSERT_EQ(view.text().string(), plain_) << "step " << step << " of kind " << kind;
            ASSERT_EQ(pane_.runs(), SyntaxTokenizer::tokenize(plain_))
                << "step " << step << " of kind " << kind;
            const TextRange selection = view.selectedRange();
            ASSERT_GE(selection.location, 0);
            ASSERT_LE(selection.end(), view.text().end().codeUnit) << "step " << step << " of kind " << kind;
        }
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }

    int takeStep() {
        const auto kind = static_cast<int>(below(20));
        if (plain_.size() > 6000)
            shorten();
        switch (kind) {
        case 0:
            takeBackAndMakeAgain();
            break;
        case 1:
            pane_.undo();
            plain_ = pane_.view().text().string();
            break;
        case 2:
            pane_.redo();
            plain_ = pane_.view().text().string();
            break;
        case 3:
            pane_.rebuild();
            break;
        case 4:
            pane_.useSettings(below(2) == 0 ? "dezent" : "kontrast", static_cast<double>(10 + below(15)));
            break;
        case 5:
            plain_ = HTMLFormatter::format(plain_);
            pane_.model.reformatIndentation();
            break;
        case 6:
            toggleComment();
            break;
        case 7:
            select(range());
            insert(pieces()[below(pieces().size())], true);
            break;
        case 8:
            select(range());
            insert("", false);
            break;
        case 9:
            receive();
            break;
        default:
            if (below(4) == 0)
                select({range().location, 0});
            insert(pieces()[below(pieces().size())], false);
            break;
        }
        return kind;
    }

    static const std::vector<std::string>& pieces() {
        static const std::vector<std::string> all{
            "<b>", "</b>", "<!--", "-->",      "\"",        "ü",       " x=1 ",    "a",      "b",  " ",
            "\n",  "\r\n", "\r",   "<script>", "</script>", "<style>", "</style>", "<?php",  "?>", "😀",
            "{",   "}",    "'",    "color:",   "#abc;",     "\u2028",  "// x",     "e\u0301"};
        return all;
    }

    /// Between two characters.
    TextRange range() {
        const SharedText text(plain_);
        const auto place = [&] {
            return text.atByte(static_cast<std::int64_t>(below(plain_.size() + 1))).codeUnit;
        };
        const std::int64_t first = place();
        const std::int64_t second = below(2) == 0 ? first : place();
        return {std::min(first, second), std::min<std::int64_t>(std::abs(second - first), 40)};
    }

    /// The view may move an end that lies inside a character.
    void select(TextRange range) { pane_.view().setSelectedRange(range); }

    void replacePlain(TextRange range, const std::string& inserted) {
        SharedText text(plain_);
        text.replace(text.atCodeUnit(range.location).byte, text.atCodeUnit(range.end()).byte, inserted);
        plain_ = text.string();
    }

    void insert(const std::string& inserted, bool fromMenu) {
        const TextRange selection = pane_.view().selectedRange();
        replacePlain(selection, inserted);
        if (fromMenu)
            pane_.model.insertAtCursor(inserted, std::nullopt);
        else
            pane_.view().insertText(inserted, selection);
        // A view may keep the caret out of a line end of two characters.
        const std::int64_t caret = selection.location + Utf8::codeUnitCount(inserted);
        ASSERT_LE(std::abs(pane_.view().selectedRange().location - caret), 1);
        ASSERT_EQ(pane_.view().selectedRange().length, 0);
    }

    void toggleComment() {
        select(range());
        const TextReplacement replacement = CommentToggle::toggled(plain_, pane_.view().selectedRange());
        replacePlain(replacement.range, replacement.text);
        pane_.model.toggleComment();
        ASSERT_LE(std::abs(pane_.view().selectedRange().location - replacement.selection.location), 1);
    }

    /// The text changes from outside.
    void receive() {
        replacePlain(range(), pieces()[below(pieces().size())]);
        pane_.model.text = SharedText(plain_);
    }

    void takeBackAndMakeAgain() {
        if (!pane_.model.undoHistory.canUndo())
            return;
        pane_.undo();
        pane_.redo();
    }

    void shorten() {
        pane_.view().insertText("", {0, 3000});
        replacePlain({0, 3000}, "");
    }

    Pane pane_;
    std::mt19937 random_;
    std::string plain_;
};

} // namespace corvanta
