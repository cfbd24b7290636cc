#include "Preview/PreviewCoordinator.hpp"

#include "EditorCore/Graphemes.hpp"
#include "EditorCore/PreviewEditMerge.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace corvanta {

namespace {

constexpr std::string_view logCategory = "preview";

/// Some pages find their layout only after they have loaded; they are put back a second time after this.
constexpr MainQueue::Duration lateLayout{250};

/// A page that is not on screen is never laid out; a page that is takes this long only beside much other
/// work.
constexpr MainQueue::Duration lateReveal{1000};

/// Long enough for a page to appear on the screen before the next one replaces it.
constexpr MainQueue::Duration onePicture{50};

constexpr std::size_t stride = 64;

/// The highest bit is set unless `byte` is a character of its own as long as the byte behind it is one, too.
unsigned char mark(char byte) {
    return static_cast<unsigned char>(byte) | (byte == '\r' ? 0x80 : 0);
}

/// Whether `stride` bytes and the one behind them are such characters. One mark for all of them lets the
/// compiler look at many at once.
bool areCharacters(const char* bytes) {
    unsigned char marks = mark(bytes[stride]);
    for (std::size_t index = 0; index < stride; ++index)
        marks |= mark(bytes[index]);
    return marks < 0x80;
}

/// Most of a page is ASCII, which is counted in strides.
std::int64_t characterCount(std::string_view text) {
    std::int64_t count = 0;
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t end = position + stride;
        if (end < text.size() && areCharacters(text.data() + position)) {
            position = end;
            count += std::int64_t{stride};
        } else {
            for (; position < std::min(end, text.size()); ++count)
                position = Graphemes::end(text, position);
        }
    }
    return count;
}

/// The number of that name, when it is an integer that a script can hold exactly.
std::optional<std::int64_t> integer(const BridgeMessage& message, const std::string& field) {
    constexpr double largest = 9007199254740991;
    const std::optional<double> number = message.number(field);
    if (!number || std::trunc(*number) != *number || std::abs(*number) > largest)
        return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

} // namespace

PreviewCoordinator::PreviewCoordinator(WebView& webView, PreviewSchemeHandler& schemeHandler,
                                       MainQueue& mainQueue, Log& log, HTMLChange onHTMLChange)
    : webView_(webView),
      schemeHandler_(schemeHandler),
      mainQueue_(mainQueue),
      log_(log),
      onHTMLChange_(std::move(onHTMLChange)) {}

void PreviewCoordinator::update(const std::string& html, const std::optional<PreviewSite>& site) {
    if (lastHTML_ == html && schemeHandler_.site() == site)
        return;
    lastHTML_ = html;
    authoredSource_ = html;
    schemeHandler_.setSite(site);
    schemeHandler_.setCurrentHTML([this] { return lastHTML_.value_or(std::string()); });
    scrollToRestore_ = lastReportedScroll_;
    loadNewestText();
}

void PreviewCoordinator::loadNewestText() {
    if (loading_ == Loading::nothing) {
        load();
        return;
    }
    isOutdated_ = true;
    if (!watch_)
        watch();
}

void PreviewCoordinator::load() {
    secondScroll_.reset();
    lateReveal_.reset();
    nextLoad_.reset();
    isOutdated_ = false;
    loading_ = Loading::requested;
    if (const std::optional<PreviewSite>& site = schemeHandler_.site())
        webView_.load(site->documentRequestURL(), scrollToRestore_);
    else
        webView_.loadHTML(*lastHTML_, scrollToRestore_);
    watch();
}

void PreviewCoordinator::watch() {
    answered_ = std::make_shared<bool>(false);
    webView_.ask([answered = answered_] { *answered = true; });
    watch_ = mainQueue_.after(isStarting_ ? patienceAtStart : patience, [this] { loadIsStuck(); });
}

void PreviewCoordinator::loadIsStuck() {
    const std::unique_ptr<MainQueue::Handle> over = std::move(watch_);
    const bool hangs = !*answered_;
    if (hangs) {
        endProcess();
        if (!isHopeless())
            load();
    } else if (isOutdated_) {
        load();
    } else {
        // The load came to nothing although the page's process is alive; the last page stays.
        settle();
    }
}

void PreviewCoordinator::settle() {
    loading_ = Loading::nothing;
    watch_.reset();
    webView_.reveal();
    if (isOutdated_)
        nextLoad_ = mainQueue_.after(onePicture, [this] { load(); });
}

void PreviewCoordinator::didCommit() {
    if (loading_ != Loading::requested)
        return;
    loading_ = Loading::committed;
    isStarting_ = false;
    watch_.reset();
    // The page on its way may take its time, and for ever; the newer text does not wait as long.
    if (isOutdated_)
        watch();
}

void PreviewCoordinator::didLayOut() {
    if (loading_ == Loading::committed)
        settle();
}

void PreviewCoordinator::didFinish() {
    // A load that was given up for a newer one finishes too.
    if (loading_ == Loading::requested)
        return;
    // A page that is editable already would be styled and laid out anew all the same.
    webView_.evaluate("if (document.designMode !== 'on') { document.designMode = 'on'; }");
    if (scrollToRestore_)
        restoreScroll(*scrollToRestore_);
    secondScroll_ = mainQueue_.after(lateLayout, [this, offset = scrollToRestore_] {
        if (offset) {
            webView_.evaluate(fmt::format(
                "(function () {{\n  if (window.scrollY === 0) {{ window.scrollTo({}, {}); }}\n}})()",
                offset->x, offset->y));
        }
    });
    lateReveal_ = mainQueue_.after(lateReveal, [this] { didLayOut(); });
}

void PreviewCoordinator::restoreScroll(const ScrollOffset& offset) {
    webView_.evaluate(fmt::format("window.scrollTo({}, {})", offset.x, offset.y));
}

void PreviewCoordinator::didLeave() {
    forgetLoad();
    if (isHopeless())
        endProcess();
    else
        load();
}

void PreviewCoordinator::endProcess() {
    forgetLoad();
    isStarting_ = true;
    webView_.endProcess();
}

void PreviewCoordinator::processDidTerminate() {
    forgetLoad();
    isStarting_ = true;
    if (!isHopeless())
        load();
}

void PreviewCoordinator::forgetLoad() {
    loading_ = Loading::nothing;
    secondScroll_.reset();
    lateReveal_.reset();
    watch_.reset();
    nextLoad_.reset();
}

/// Counts one more loss of the page.
bool PreviewCoordinator::isHopeless() {
    const MainQueue::Duration now = mainQueue_.now();
    std::erase_if(crashes_, [now](MainQueue::Duration crash) { return now - crash >= crashWindow; });
    crashes_.push_back(now);
    return crashes_.size() >= crashesAtMost;
}

void PreviewCoordinator::didReceive(const BridgeMessage& message) {
    const std::optional<std::string> kind = message.string("kind");
    if (kind == "scroll")
        scrolled(message);
    else if (kind == "text")
        edited(message);
    else
        log_.info(logCategory, "bridge message not understood");
}

void PreviewCoordinator::scrolled(const BridgeMessage& message) {
    const std::optional<double> x = message.number("x");
    const std::optional<double> y = message.number("y");
    if (!x || !y || !std::isfinite(*x) || !std::isfinite(*y)) {
        log_.info(logCategory, "bridge message not understood");
        return;
    }
    lastReportedScroll_ = ScrollOffset{*x, *y};
    if (loading_ == Loading::requested)
        scrollToRestore_ = lastReportedScroll_;
}

void PreviewCoordinator::edited(const BridgeMessage& message) {
    const std::optional<std::string> before = message.string("before");
    const std::optional<std::string> after = message.string("after");
    const std::optional<std::int64_t> occurrence = integer(message, "occurrence");
    const std::optional<std::int64_t> total = integer(message, "total");
    if (!before || !after || !occurrence || !total) {
        log_.info(logCategory, "edit message incomplete");
        return;
    }
    if (!authoredSource_) {
        log_.info(logCategory, "edit arrived but no source is held — edit dropped");
        return;
    }
    log_.info(logCategory, "edit arrived: node {} → {} chars, source {} chars", characterCount(*before),
              characterCount(*after), characterCount(*authoredSource_));
    // What a script of the page made must not be looked for among what is written, where it may be, too.
    const bool isUnwritten = message.number("unwritten") == 1;
    std::optional<std::string> merged =
        isUnwritten ? std::nullopt
                    : PreviewEditMerge::applyTextEdit(*before, *after, *occurrence, *total, *authoredSource_);
    if (!merged) {
        log_.info(logCategory, "edit refused: text not locatable (occurrence {} of {})", *occurrence, *total);
        return;
    }
    log_.info(logCategory, "edit merged, handing {} chars to the editor", characterCount(*merged));
    authoredSource_ = *merged;
    lastHTML_ = *merged;
    // The page that is about to come was read from the source before this edit.
    if (loading_ == Loading::requested)
        isOutdated_ = true;
    onHTMLChange_(*merged);
}

} // namespace corvanta
