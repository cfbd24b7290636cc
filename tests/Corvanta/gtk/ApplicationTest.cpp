#include "ApplicationTest.hpp"

#include "Support/gtk/MainLoop.hpp"
#include "Support/gtk/PageScripting.hpp"

#include <gtkmm/eventcontrollerkey.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace corvanta {

namespace {

/// The first document window of `app` that `isWanted`, as soon as there is one.
template <typename Predicate>
DocumentWindow& windowOnce(CorvantaApp& app, const Predicate& isWanted) {
    DocumentWindow* found = nullptr;
    waitUntil([&] {
        for (Gtk::Window* window : app.get_windows())
            if (auto* document = dynamic_cast<DocumentWindow*>(window); document && isWanted(*document))
                found = document;
        return found != nullptr;
    });
    if (found == nullptr)
        throw std::runtime_error("no such document window");
    return *found;
}

bool hasKeyboardInText(DocumentWindow& window) {
    return window.is_active() && window.contentView().codeEditor().textView().has_focus();
}

bool shows(DocumentWindow& window, const std::filesystem::path& path) {
    std::error_code error;
    const auto& file = window.document().fileLocation();
    return file && std::filesystem::equivalent(*file, path, error);
}

} // namespace

void ApplicationTest::SetUpTestSuite() {
    if (app != nullptr)
        return;
    app = new CorvantaApp();
    ASSERT_TRUE(app->register_application());
}

void ApplicationTest::TearDown() {
    for (Gtk::Window* window : app->get_windows())
        if (auto* documentWindow = dynamic_cast<DocumentWindow*>(window))
            documentWindow->closeForGood();
        else
            window->close();
    EXPECT_TRUE(waitUntil([] { return app->get_windows().empty(); }));
}

DocumentWindow& ApplicationTest::open(const std::filesystem::path& path) {
    app->open(Gio::File::create_for_path(path.string()));
    return windowOnce(
        *app, [&](DocumentWindow& window) { return shows(window, path) && hasKeyboardInText(window); });
}

DocumentWindow& ApplicationTest::openNothing() {
    app->activate();
    return windowOnce(*app, hasKeyboardInText);
}

DocumentWindow& ApplicationTest::activeWindow() {
    return windowOnce(*app, [](DocumentWindow& window) { return window.is_active(); });
}

DocumentWindow* ApplicationTest::windowTitled(const std::string& title) {
    for (Gtk::Window* window : app->get_windows())
        if (auto* documentWindow = dynamic_cast<DocumentWindow*>(window);
            documentWindow != nullptr && documentWindow->get_title().raw() == title)
            return documentWindow;
    return nullptr;
}

bool ApplicationTest::isAt(DocumentWindow& window) {
    return waitUntil([&] { return window.is_active(); });
}

void ApplicationTest::typeInto(DocumentWindow& window, std::string_view letters) {
    EXPECT_TRUE(waitUntil([&] { return hasKeyboardInText(window); }));
    for (const char letter : letters) {
        const std::size_t before = text(window).size();
        keyboard.type({&letter, 1});
        EXPECT_TRUE(waitUntil([&] { return text(window).size() > before; })) << letter;
    }
}

void ApplicationTest::letKeysArrive(Gtk::Window& window) {
    bool isLastHere = false;
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [&isLastHere](guint key, guint, Gdk::ModifierType) {
            isLastHere = isLastHere || key == GDK_KEY_Shift_L;
            return false;
        },
        false);
    window.add_controller(keys);
    keyboard.press("Shift");
    EXPECT_TRUE(waitUntil([&] { return isLastHere; }));
    window.remove_controller(keys);
}

Gtk::MessageDialog* ApplicationTest::dialog() {
    for (Gtk::Widget* window : Gtk::Window::list_toplevels())
        if (auto* dialog = dynamic_cast<Gtk::MessageDialog*>(window);
            dialog && dialog->get_visible() && dialog->is_active())
            return dialog;
    return nullptr;
}

void ApplicationTest::answer(Gtk::ResponseType response) {
    ASSERT_TRUE(waitUntil([] { return dialog() != nullptr; }));
    dialog()->response(response);
    ASSERT_TRUE(waitUntil([] { return dialog() == nullptr; }));
}

void ApplicationTest::dismissDialog() {
    ASSERT_TRUE(waitUntil([] { return dialog() != nullptr; }));
    keyboard.press("Escape");
    ASSERT_TRUE(waitUntil([] { return dialog() == nullptr; }));
}

std::string ApplicationTest::inPreview(DocumentWindow& window, const std::string& expression) {
    PreviewWebView* view = window.contentView().preview().webView();
    return view == nullptr ? "" : evaluateInPage(view->webView(), expression);
}

testing::AssertionResult ApplicationTest::previewShows(DocumentWindow& window, const std::string& content) {
    std::string shown;
    const bool same = waitUntil([&] {
        shown = inPreview(window, "document.body ? document.body.textContent.trim() : ''");
        return shown == content;
    });
    return (same ? testing::AssertionSuccess() : testing::AssertionFailure())
           << "the preview shows " << shown;
}

std::size_t ApplicationTest::journalCount() {
    std::size_t count = 0;
    for (const auto& journal : std::filesystem::directory_iterator(CorvantaApp::journalFolder())) {
        std::error_code error;
        const auto size = std::filesystem::file_size(journal.path() / "1", error);
        if (!error && size > 0)
            ++count;
    }
    return count;
}

std::string ApplicationTest::fileContent(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace corvanta
