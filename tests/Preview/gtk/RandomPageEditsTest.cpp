// What a user may do to a page at random: either the source changes in exactly that place, so that the page
// that is loaded from it shows what the edited one showed, or it does not change at all.

#include "EditorCore/ReferenceMerge.hpp"
#include "EditorCore/TextDecoding.hpp"
#include "PreviewColumnFixture.hpp"
#include "Support/RealPages.hpp"

#include <fmt/format.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>
#include <string_view>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

/// The page's elements and texts one after another. White space is alike: what cannot be seen of it differs
/// between a page that was typed into and the same page as it is read.
constexpr std::string_view skeleton = R"((() => {
	let shown = "";
	const walk = (node) => {
		for (const child of node.childNodes) {
			if (child.nodeType === Node.TEXT_NODE) {
				shown += child.data;
			} else if (child.nodeType === Node.ELEMENT_NODE &&
				!["script", "style", "noscript", "template"].includes(child.localName)) {
				shown += "<" + child.localName + ">";
				walk(child);
				shown += "</" + child.localName + ">";
			}
		}
	};
	walk(document.body);
	return shown.replace(/\s+/g, " ").trim();
})())";

/// Chooses one of the texts that can be seen, and selects a stretch of it or of it and the next.
constexpr std::string_view selectAtRandom = R"(((text, start, length, both) => {
	const texts = [];
	const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
	const range = document.createRange();
	while (walker.nextNode()) {
		range.selectNodeContents(walker.currentNode);
		if (/\S/.test(walker.currentNode.data) && range.getClientRects().length > 0)
			texts.push(walker.currentNode);
	}
	if (texts.length < 2)
		return "nothing to see";
	const index = text % (texts.length - 1);
	const node = texts[index];
	const other = both ? texts[index + 1] : node;
	const from = start % (node.length + 1);
	const to = both ? length % (other.length + 1) : Math.min(node.length, from + length);
	window.focus();
	const selection = getSelection();
	selection.setBaseAndExtent(node, from, other, to);
	// To where the engine itself would put the caret.
	if (selection.isCollapsed) {
		selection.modify("move", "forward", "character");
		selection.modify("move", "backward", "character");
	}
	window.pressedKeys = 0;
	addEventListener("keyup", (event) => {
		if (!["Shift", "Control"].includes(event.key))
			++window.pressedKeys;
	}, true);
	// The program keeps the keys that paste to itself.
	addEventListener("input", (event) => {
		if (event.inputType === "insertFromPaste")
			++window.pressedKeys;
	}, true);
	window.chosenText = selection.anchorNode.nodeType === Node.TEXT_NODE ? selection.anchorNode.data : "";
	return node.parentNode.localName + " «" + node.data + "» " + from + " to " + to;
}))";

enum class Kind { typing, structural };

struct Edit {
    std::string_view name;
    Kind kind;
    /// How much is selected before, in UTF-16 code units.
    int selected;
    std::vector<std::string_view> keys;
    /// What lies on the clipboard.
    std::string_view clipboard;
};

const std::vector<Edit>& kindsOfEdits() {
    static const std::vector<Edit> all{
        {"a word", Kind::typing, 0, {"n", "e", "u"}, ""},
        {"a digit", Kind::typing, 0, {"7"}, ""},
        {"a blank", Kind::typing, 0, {"space"}, ""},
        {"a word with blanks", Kind::typing, 0, {"space", "e", "i", "n", "space"}, ""},
        {"markup", Kind::typing, 0, {"less", "b", "greater", "ampersand", "l", "t", "semicolon"}, ""},
        {"quotes", Kind::typing, 0, {"quotedbl", "apostrophe"}, ""},
        {"over a selection", Kind::typing, 4, {"x", "y"}, ""},
        {"Backspace", Kind::typing, 0, {"BackSpace"}, ""},
        {"Delete", Kind::typing, 0, {"Delete"}, ""},
        {"Backspace over a selection", Kind::typing, 3, {"BackSpace"}, ""},
        {"a word deleted backwards", Kind::typing, 0, {"Control+BackSpace"}, ""},
        {"a word deleted forwards", Kind::typing, 0, {"Control+Delete"}, ""},
        {"a word pasted", Kind::typing, 0, {"Control+v"}, "grün & „rot“ 😀"},
        {"a word pasted over a selection", Kind::typing, 5, {"Control+v"}, "blau"},
        {"cut", Kind::typing, 4, {"Control+x"}, ""},
        {"Enter", Kind::structural, 0, {"Return"}, ""},
        {"Shift+Enter", Kind::structural, 0, {"Shift+Return"}, ""},
        {"bold", Kind::structural, 4, {"Control+b"}, ""},
        {"lines pasted", Kind::structural, 0, {"Control+v"}, "rot\ngrün\nblau"},
        {"a word and Enter", Kind::structural, 0, {"n", "e", "u", "Return"}, ""},
    };
    return all;
}

/// About `count` of `pages`, as many from every folder of real input, one folder after the other by turns,
/// the same ones in every run.
std::vector<std::filesystem::path> evenly(const std::vector<std::filesystem::path>& pages,
                                          std::size_t count) {
    if (pages.empty())
        return {};
    std::map<std::filesystem::path, std::vector<std::filesystem::path>> folders;
    for (const auto& page : pages)
        folders[*page.lexically_relative(std::getenv("CORVANTA_REAL_INPUT")).begin()].push_back(page);
    std::vector<std::filesystem::path> chosen;
    const std::size_t share = std::max<std::size_t>(count / folders.size(), 1);
    for (std::size_t i = 0; i < share; ++i) {
        for (const auto& [folder, own] : folders)
            chosen.push_back(own[i * own.size() / share]);
    }
    return chosen;
}

class RandomPageEditsTest : public PreviewColumnFixture {
protected:
    /// Loads `html` as the page in `file` and waits until it can be typed into.
    void load(const std::string& html, const std::filesystem::path& file) {
        document = file;
        show(html);
        ASSERT_TRUE(waitUntil([this] { return column.coordinator()->isSettled(); })) << file;
        ASSERT_TRUE(becomes("document.readyState + document.designMode", "completeon")) << file;
        gtk_widget_grab_focus(GTK_WIDGET(column.webView()->webView()));
    }

    /// Loads the page of the current source anew.
    void reload() {
        std::string other = source;
        if (other.ends_with('\n'))
            other.pop_back();
        else
            other += '\n';
        load(other, document);
    }

    std::string shown() { return inPage(std::string(skeleton)); }

    /// Waits until nothing changes in the page any more, which it may do by itself after it was loaded.
    /// False when it never comes to rest.
    bool comesToRest() {
        std::string last;
        int same = 0;
        return waitUntil(
            [&] {
                letPass(100ms);
                const std::string now = shown();
                same = now == last ? same + 1 : 0;
                last = now;
                return same >= 2;
            },
            5s);
    }

    /// Whether the page is not the same each time it is loaded.
    bool differsFromItself(const std::string& loaded) {
        reload();
        return !waitUntil([&] { return shown() == loaded; }, 3s);
    }

    /// Types `edit` and waits until the page has reported it, or would have. False when the page does not get
    /// all the keys.
    bool carryOut(const Edit& edit) {
        if (!edit.clipboard.empty())
            gdk_clipboard_set_text(gtk_widget_get_clipboard(GTK_WIDGET(window.window().gobj())),
                                   edit.clipboard.data());
        for (const std::string_view keys : edit.keys)
            keyboard.press(keys);
        if (!waitUntil(
                [&] { return inPage(fmt::format("window.pressedKeys >= {}", edit.keys.size())) == "true"; },
                20s))
            return false;
        // The report waits for the page as it is written, which the page script asks for at the first edit.
        inPage("fetch(location.href).finally(() => setTimeout(() => { window.isReported = true; }, 300)); 1");
        return waitUntil([&] { return inPage("window.isReported") == "true"; });
    }

    /// Tries one edit on the page that is shown, and loads the page again.
    void tryOne() {
        const Edit& edit = kindsOfEdits()[random() % kindsOfEdits().size()];
        const std::string place = inPage(fmt::format("{}({}, {}, {}, false)", selectAtRandom, random() >> 1U,
                                                     random() >> 1U, edit.selected));
        if (place == "nothing to see")
            return;
        const std::string trial = fmt::format("{}: {} in {}", document.string(), edit.name, place);
        const std::string text = inPage("window.chosenText");
        const std::size_t heard = log.lines.size();
        const std::string before = source;
        if (!carryOut(edit)) {
            count("not to be judged: the page does not get the keys", trial);
            reload();
            return;
        }
        ++trials;
        const std::string edited = shown();
        const bool isMerged = source != before;
        if (!isMerged)
            count("refused: " + reason(edit, text, heard), trial);
        reload();
        if (!isMerged)
            return;
        // Where line breaks are kept, in a <pre>, several lines are but a text.
        if (waitUntil([&] { return shown() == edited; }, 3s)) {
            count("merged", trial);
            return;
        }
        const std::string loaded = shown();
        if (differsFromItself(loaded)) {
            count("not to be judged: the page differs from itself", trial);
            return;
        }
        const auto at = static_cast<std::size_t>(std::ranges::mismatch(edited, loaded).in1 - edited.begin());
        const std::size_t from = at < 60 ? 0 : at - 60;
        ADD_FAILURE() << trial << "\nedited:   …" << edited.substr(from, 200) << "\nreloaded: …"
                      << loaded.substr(from, 200);
    }

    /// Why an edit of `text` did not reach the source.
    std::string reason(const Edit& edit, const std::string& text, std::size_t heard) const {
        if (edit.kind == Kind::structural)
            return "the edit changes the page's structure";
        const bool isReported =
            std::any_of(log.lines.begin() + static_cast<std::ptrdiff_t>(heard), log.lines.end(),
                        [](const std::string& line) { return line.starts_with("preview: edit refused"); });
        if (!isReported)
            return "the page script does not report it";
        const auto runs = ReferenceMerge::textRuns(source);
        const bool isInTheSource =
            std::ranges::any_of(runs, [&](const auto& run) { return run.text == text; });
        return isInTheSource ? "the text is in the page more or less often than in the source"
                             : "the text is not in the source as it is in the page";
    }

    void count(const std::string& outcome, const std::string& trial) {
        std::vector<std::string>& list = outcomes[outcome];
        list.push_back(trial);
    }

    void tell() const {
        std::cout << trials << " edits\n";
        for (const auto& [outcome, list] : outcomes) {
            std::cout << fmt::format("{:6} {}\n", list.size(), outcome);
            if (std::getenv("CORVANTA_LONG_TESTS") != nullptr && outcome != "merged") {
                for (std::size_t i = 0; i < std::min<std::size_t>(list.size(), 4); ++i)
                    std::cout << "          " << list[i].substr(0, 400) << "\n";
            }
        }
    }

    /// Tries `wanted` edits, four on each of `pages` that has a text to be seen, as long as there are pages.
    void tryOn(const std::vector<std::filesystem::path>& pages, std::size_t wanted) {
        for (const std::filesystem::path& page : pages) {
            if (trials >= wanted || HasFatalFailure())
                break;
            load(TextDecoding::string(bytesOf(page)), page);
            for (int i = 0; i < 4; ++i) {
                if (comesToRest())
                    tryOne();
                else
                    count("not to be judged: the page never comes to rest", page);
            }
        }
        tell();
        EXPECT_GE(trials, wanted) << "too few pages have a text to be seen";
        EXPECT_GT(outcomes["merged"].size(), wanted / 5) << "too few edits are merged to try much";
    }

    std::mt19937 random{1};
    std::size_t trials = 0;
    std::map<std::string, std::vector<std::string>> outcomes;
};

TEST_F(RandomPageEditsTest, ChangeTheSourceOfOurOwnPagesExactlyOrNotAtAll) {
    tryOn(markupAmong(ownPages()), 8);
}

TEST_F(RandomPageEditsTest, ChangeTheSourceOfOthersPagesExactlyOrNotAtAll) {
    const bool isLong = std::getenv("CORVANTA_LONG_TESTS") != nullptr;
    const auto pages = evenly(markupAmong(realPages(40)), isLong ? 500 : 6);
    if (!pages.empty())
        tryOn(pages, isLong ? 1000 : 12);
}

} // namespace
} // namespace corvanta
