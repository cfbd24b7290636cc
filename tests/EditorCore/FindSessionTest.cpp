#include "EditorCore/FindSession.hpp"

#include "StringTextView.hpp"
#include "Support/ManualMainQueue.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvanta {
namespace {

using namespace std::chrono_literals;

class FindSessionTest : public testing::Test {
protected:
    void open(const std::string& text) {
        view.replaceWholeText(SharedText(text));
        view.setSelectedRange({});
    }

    void search(const FindRequest& wanted) {
        session.search(wanted);
        finish();
    }

    /// Lets the search come to its end.
    void finish() {
        queue.advance(1s);
        for (int i = 0; i < 1000 && session.state() == TextSearch::State::searching; ++i)
            queue.advance(1s);
    }

    std::string selected() const {
        const TextRange range = view.selectedRange();
        return view.text().substring(view.text().atCodeUnit(range.location).byte,
                                     view.text().atCodeUnit(range.end()).byte);
    }

    UndoHistory history;
    ManualMainQueue queue;
    Published<FindRequest> request;
    StringTextView view{SharedText(), history};
    FindSession session{view, request, queue};
};

TEST_F(FindSessionTest, SelectsTheFirstMatchFromTheCaretWhileTheStringGrows) {
    open("der die das dies");
    view.setSelectedRange({1, 0});
    search({"d"});
    EXPECT_EQ(view.selectedRange(), (TextRange{4, 1}));
    search({"da"});
    EXPECT_EQ(view.selectedRange(), (TextRange{8, 2}));
    EXPECT_EQ(session.matches().size(), 1U);
}

TEST_F(FindSessionTest, CountsAndSaysWhichMatchIsSelected) {
    open("a b a b a");
    search({"a"});
    EXPECT_EQ(session.matches().size(), 3U);
    EXPECT_EQ(session.selectedMatch(), 1U);
    session.findNext();
    EXPECT_EQ(session.selectedMatch(), 2U);
    view.setSelectedRange({1, 0});
    EXPECT_FALSE(session.selectedMatch());
}

TEST_F(FindSessionTest, GoesAroundAtBothEnds) {
    open("a b a");
    search({"a"});
    session.findPrevious();
    EXPECT_EQ(view.selectedRange(), (TextRange{4, 1}));
    session.findNext();
    EXPECT_EQ(view.selectedRange(), (TextRange{0, 1}));
}

TEST_F(FindSessionTest, LeavesTheSelectionWhenNothingIsFound) {
    open("eins");
    view.setSelectedRange({1, 2});
    search({"x"});
    session.findNext();
    session.findPrevious();
    EXPECT_EQ(view.selectedRange(), (TextRange{1, 2}));
    EXPECT_TRUE(session.matches().empty());
}

TEST_F(FindSessionTest, SelectsBehindCharactersBeyondTheBasicPlane) {
    open("😀😀 ziel");
    search({"ziel"});
    EXPECT_EQ(view.selectedRange(), (TextRange{5, 4}));
}

TEST_F(FindSessionTest, FindsTheNextMatchAlsoWithoutABar) {
    open("a b a");
    request = FindRequest{"a"};
    view.setSelectedRange({1, 0});
    session.findNext();
    finish();
    EXPECT_EQ(view.selectedRange(), (TextRange{4, 1}));
}

TEST_F(FindSessionTest, TakesTheSelectionAsTheStringForEveryWindow) {
    open("f(x) + f(x)");
    request = FindRequest{"a+", true, true};
    view.setSelectedRange({0, 4});
    session.useSelection();
    EXPECT_EQ(*request, (FindRequest{"f(x)", true, false}));
    view.setSelectedRange({1, 0});
    session.useSelection();
    EXPECT_EQ(request->text, "f(x)");
}

TEST_F(FindSessionTest, FollowsTheStringOfAnotherWindow) {
    open("eins zwei");
    session.setActive(true);
    request = FindRequest{"ei"};
    finish();
    EXPECT_EQ(session.matches().size(), 2U);
    EXPECT_EQ(view.selectedRange(), TextRange{});
}

TEST_F(FindSessionTest, MovesTheMatchesWithAnEditAndThenSearchesAnew) {
    open("a b a");
    search({"a"});
    view.insertText("xx", {2, 0});
    EXPECT_EQ(session.matches(), (std::vector<FindMatch>{{0, 1}, {6, 7}}));
    view.insertText("a", {3, 0});
    EXPECT_EQ(session.matches(), (std::vector<FindMatch>{{0, 1}, {7, 8}}));
    finish();
    EXPECT_EQ(session.matches(), (std::vector<FindMatch>{{0, 1}, {3, 4}, {7, 8}}));
}

TEST_F(FindSessionTest, DoesNotSearchWhileTheUserTypes) {
    open("a b a");
    search({"a"});
    view.type("a");
    queue.advance(100ms);
    view.type("a");
    queue.advance(100ms);
    EXPECT_EQ(session.state(), TextSearch::State::searching);
    queue.advance(50ms);
    EXPECT_EQ(session.state(), TextSearch::State::complete);
}

TEST_F(FindSessionTest, ReplacesTheSelectedMatchAndGoesOn) {
    open("a b a b a");
    search({"a"});
    session.replace("xyz");
    finish();
    EXPECT_EQ(view.text(), "xyz b a b a");
    EXPECT_EQ(view.selectedRange(), (TextRange{6, 1}));
    session.replace("");
    finish();
    EXPECT_EQ(view.text(), "xyz b  b a");
    EXPECT_EQ(selected(), "a");
}

TEST_F(FindSessionTest, ReplacesAMatchAtEachCallHoweverQuicklyTheyFollow) {
    open("a1 b a22 b a3");
    search({"a(\\d+)", false, true});
    session.replace("<$1>");
    EXPECT_EQ(selected(), "a22");
    session.replace("");
    EXPECT_EQ(selected(), "a3");
    session.replace("<$1>");
    EXPECT_EQ(view.text(), "<1> b  b <3>");
}

TEST_F(FindSessionTest, GoesAroundAtOnceBehindTheLastMatchThatIsReplaced) {
    open("a b a");
    search({"a"});
    session.findNext();
    session.replace("x");
    EXPECT_EQ(view.selectedRange(), (TextRange{0, 1}));
    session.replace("y");
    EXPECT_EQ(view.text(), "y b x");
}

TEST_F(FindSessionTest, ReplacesNothingThatIsNotAMatch) {
    open("b a");
    search({"a"});
    view.setSelectedRange({0, 1});
    session.replace("x");
    finish();
    EXPECT_EQ(view.text(), "b a");
    EXPECT_EQ(selected(), "a");
}

TEST_F(FindSessionTest, ReplacesAllInOneStep) {
    open("a1 b a22");
    search({"a(\\d+)", false, true});
    session.replaceAll("<$1>");
    EXPECT_EQ(view.text(), "<1> b <22>");
    view.undo();
    EXPECT_EQ(view.text(), "a1 b a22");
    view.redo();
    EXPECT_EQ(view.text(), "<1> b <22>");
}

TEST_F(FindSessionTest, ReplacesAllInTheTextAsItIsNow) {
    open("a b");
    search({"a"});
    view.insertText("a", {3, 0});
    session.replaceAll("c");
    finish();
    EXPECT_EQ(view.text(), "c bc");
}

TEST_F(FindSessionTest, ReplacesAllByWhatIsFoundItself) {
    open("aa");
    search({"a"});
    session.replaceAll("aa");
    EXPECT_EQ(view.text(), "aaaa");
}

TEST_F(FindSessionTest, ReplacesNothingWhenAGroupIsMissing) {
    open("a b");
    search({"a", false, true});
    session.replaceAll("$1");
    EXPECT_EQ(view.text(), "a b");
}

TEST_F(FindSessionTest, ForgetsTheMatchesWhenTheBarIsClosed) {
    open("a a");
    search({"a"});
    session.setActive(false);
    EXPECT_TRUE(session.matches().empty());
    view.type("x");
    finish();
    EXPECT_TRUE(session.matches().empty());
    EXPECT_EQ(queue.pendingCount(), 0U);
}

TEST_F(FindSessionTest, GivesTheMatchesOfAPartOfTheText) {
    open("a a a a");
    search({"a"});
    EXPECT_EQ(session.matches(1, 5), (std::vector<FindMatch>{{2, 3}, {4, 5}}));
}

TEST_F(FindSessionTest, GoesToAMatchFarBelowAsSoonAsItIsFound) {
    open(std::string(4'000'000, '.') + "ziel");
    session.search({"z[a-z]*", false, true});
    finish();
    EXPECT_EQ(selected(), "ziel");
}

} // namespace
} // namespace corvanta
