// Reloads a page in the preview as typing in the code does, types into the page, and kills its process; loads
// the same page in a bare web view for comparison.
//
//   preview-reloads FILE RELOADS
//
// Each load gives the page, which has a head, a border at its top in another colour. Prints one line each:
//   bare: the page in a bare web view of the same size until it has finished loading
//   bare picture: the same until the border is on the screen
//   reload: from the new text until its border is on the screen, without the wait for the next key
//   memory: proportional memory of all processes after the first 50 reloads and at the end, and its growth;
//     each the median over 50 reloads, since the engine clears up only now and then
//   page key: from a key press in the page to the changed source
//   crash: from the death of the page's process until the preview has noticed, and until the page is back

#include "Platform/PosixFileManager.hpp"
#include "Platform/gtk/GLibMainQueue.hpp"
#include "Platform/gtk/SignalConnection.hpp"
#include "Preview/PosixFolderBookmarks.hpp"
#include "Preview/SharedMimeInfo.hpp"
#include "Preview/gtk/PreviewColumn.hpp"
#include "Preview/gtk/WebProcess.hpp"
#include "Samples.hpp"
#include "Support/gtk/WindowPixels.hpp"

#include <fmt/format.h>
#include <glibmm/main.h>
#include <gtkmm/init.h>
#include <gtkmm/window.h>
#include <unistd.h>
#include <webkit/webkit.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

// Xlib's words get in the way of the toolkit's headers.
#include "Support/screen/ObservedScreen.hpp"

#include <X11/keysym.h>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// As long as the preview waits for the next key; what the engine does behind a picture is over by then.
constexpr auto rest = 350ms;

class NoDefaults final : public UserDefaults {
public:
    std::optional<Value> value(std::string_view) const override { return std::nullopt; }
    void set(std::string_view, Value) override {}
    void remove(std::string_view) override {}
};

class NoLog final : public Log {
public:
    void write(Level, std::string_view, const std::string&) override {}
};

/// Runs the main loop until `condition` holds; throws when that takes longer than a minute.
void runUntil(const std::function<bool()>& condition) {
    const auto end = Clock::now() + 1min;
    sigc::connection clock = Glib::signal_timeout().connect([] { return true; }, 100);
    while (!condition()) {
        if (Clock::now() >= end)
            throw std::runtime_error("the preview does not come to an end");
        Glib::MainContext::get_default()->iteration(true);
    }
    clock.disconnect();
}

void pause(std::chrono::milliseconds duration) {
    const auto end = Clock::now() + duration;
    runUntil([end] { return Clock::now() >= end; });
}

double millisecondsOf(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Proportional memory of `process` in kilobytes.
long memoryOf(const std::filesystem::path& process) {
    std::ifstream file(process / "smaps_rollup");
    for (std::string word; file >> word;) {
        long kilobytes = 0;
        if (word == "Pss:" && file >> kilobytes)
            return kilobytes;
    }
    return 0;
}

/// The same for this process and all that descend from it, in megabytes.
double memoryOfTheTree() {
    std::map<int, int> parents;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string number = entry.path().filename();
        if (number.find_first_not_of("0123456789") != std::string::npos)
            continue;
        const std::string stat = contentOf(entry.path() / "stat");
        const std::size_t name = stat.rfind(')');
        if (name != std::string::npos && name + 4 < stat.size())
            parents[std::stoi(number)] = std::stoi(stat.substr(name + 4));
    }
    long kilobytes = 0;
    for (const auto& [process, parent] : parents) {
        int ancestor = process;
        while (ancestor > 1 && ancestor != ::getpid())
            ancestor = parents[ancestor];
        if (ancestor == ::getpid())
            kilobytes += memoryOf(std::filesystem::path("/proc") / std::to_string(process));
    }
    return static_cast<double>(kilobytes) / 1024;
}

void print(std::string_view what, const Samples& samples) {
    fmt::print("{}: count={} median_ms={:.1f} p95_ms={:.1f} maximum_ms={:.1f}\n", what, samples.count(),
               samples.median(), samples.percentile(0.95), samples.maximum());
    std::cout << std::flush;
}

/// The page again and again, never twice the same: a border at its top has a colour of its own.
std::string version(std::string page, int number) {
    const std::size_t head = page.find("</head>");
    if (head == std::string::npos)
        throw std::runtime_error("the page has no head");
    return page.insert(head, fmt::format("<style>html {{ border-top: 4px solid rgb(200, {}, {}) }}</style>",
                                         number / 256, number % 256));
}

/// Waits until `view` shows the page with that border.
void runUntilOnScreen(Gtk::Widget& view, int number) {
    const PixelColor border{200, static_cast<std::uint8_t>(number / 256),
                            static_cast<std::uint8_t>(number % 256)};
    runUntil([&] { return pixelOnScreen(view, view.get_width() / 2, 1) == border; });
}

void measureBareLoads(Gtk::Window& window, const std::string& page, int loads) {
    GtkWidget* view = webkit_web_view_new();
    gtk_window_set_child(window.gobj(), view);
    bool isFinished = false;
    const SignalConnection loading(
        view, "load-changed",
        +[](WebKitWebView*, WebKitLoadEvent event, gpointer flag) {
            if (event == WEBKIT_LOAD_FINISHED)
                *static_cast<bool*>(flag) = true;
        },
        &isFinished);
    Samples finished;
    Samples onScreen;
    // The first load also starts the engine.
    for (int load = 0; load <= loads; ++load) {
        const std::string text = version(page, load);
        double untilFinished = 0;
        const double untilOnScreen = millisecondsOf([&] {
            untilFinished = millisecondsOf([&] {
                isFinished = false;
                webkit_web_view_load_html(WEBKIT_WEB_VIEW(view), text.c_str(), nullptr);
                runUntil([&] { return isFinished; });
            });
            runUntilOnScreen(*Glib::wrap(view), load);
        });
        if (load > 0) {
            finished.add(untilFinished);
            onScreen.add(untilOnScreen);
        }
        pause(rest);
    }
    print("bare", finished);
    print("bare picture", onScreen);
    gtk_window_set_child(window.gobj(), nullptr);
}

/// A preview in a window, as a document window has it.
class Preview {
public:
    Preview(Gtk::Window& window, std::filesystem::path file)
        : file_(std::move(file)), page_(contentOf(file_)), window_(window) {
        column_.set_expand(true);
        window_.set_child(column_);
        column_.start();
        runUntil([this] { return column_.coordinator() != nullptr; });
        show(version(page_, 0));
    }
    ~Preview() { window_.unset_child(); }

    Preview(const Preview&) = delete;
    Preview& operator=(const Preview&) = delete;

    void measureReloads(int reloads) {
        Samples samples;
        Samples memoryEarly;
        Samples memoryLate;
        for (int reload = 1; reload <= reloads; ++reload) {
            const std::string text = version(page_, reload);
            samples.add(millisecondsOf([&] {
                column_.update(text, file_);
                runUntilOnScreen(*column_.webView(), reload);
            }));
            runUntil([this] { return column_.coordinator()->isSettled(); });
            if (reload > 50 && reload <= 100)
                memoryEarly.add(memoryOfTheTree());
            if (reload > 50 && reload > reloads - 50)
                memoryLate.add(memoryOfTheTree());
            pause(rest);
        }
        print("reload", samples);
        if (reloads > 50) {
            fmt::print("memory: after_50_mb={:.0f} end_mb={:.0f} growth_percent={:.1f}\n",
                       memoryEarly.median(), memoryLate.median(),
                       100 * (memoryLate.median() / memoryEarly.median() - 1));
        }
    }

    void measureKeysInThePage(int keys) {
        ObservedScreen screen;
        gtk_widget_grab_focus(GTK_WIDGET(column_.webView()->webView()));
        pause(500ms);
        column_.webView()->evaluate("(() => { const texts = []; const walker = "
                                    "document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);"
                                    "while (walker.nextNode()) if (/\\w{3}/.test(walker.currentNode.data) && "
                                    "!/SCRIPT|STYLE/.test(walker.currentNode.parentNode.nodeName)) "
                                    "texts.push(walker.currentNode);"
                                    "const text = texts[texts.length >> 1]; window.focus();"
                                    "text.parentNode.scrollIntoView();"
                                    "getSelection().collapse(text, text.length); })()");
        pause(500ms);
        Samples samples;
        for (int key = 0; key < keys; ++key) {
            const std::size_t before = edits_;
            samples.add(millisecondsOf([&] {
                screen.pressKey(XK_x);
                screen.releaseKey(XK_x);
                runUntil([&] { return edits_ > before; });
            }));
            pause(100ms);
        }
        print("page key", samples);
    }

    void measureCrashes(int crashes) {
        Samples noticed;
        Samples back;
        for (int crash = 0; crash < crashes; ++crash) {
            // So many within ten seconds are stood.
            pause(5100ms);
            const std::vector<pid_t> processes = webProcesses();
            if (processes.size() != 1)
                throw std::runtime_error("not one page process");
            const auto start = Clock::now();
            ::kill(processes.front(), SIGKILL);
            runUntil([this] { return !column_.coordinator()->isSettled(); });
            noticed.add(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
            runUntil([this] { return column_.coordinator()->isSettled(); });
            back.add(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        }
        print("crash noticed", noticed);
        print("crash back", back);
    }

private:
    void show(const std::string& text) {
        column_.update(text, file_);
        runUntil([this] { return column_.coordinator()->isSettled(); });
    }

    std::filesystem::path file_;
    std::string page_;
    Gtk::Window& window_;

    PosixFileManager fileManager_;
    SharedMimeInfo typeRegistry_{fileManager_, SharedMimeInfo::environmentDataFolders()};
    PosixFolderBookmarks bookmarks_;
    GLibMainQueue queue_;
    NoLog log_;
    NoDefaults defaults_;
    PreviewFolderAccess access_{defaults_, bookmarks_, fileManager_, log_};
    PreviewEngine engine_;
    std::size_t edits_ = 0;
    PreviewColumn column_{
        {engine_, access_, fileManager_, typeRegistry_, queue_, log_, [](const std::string&) {}},
        [this](const std::string& html) {
            ++edits_;
            column_.update(html, file_);
        }};
};

void measure(const std::filesystem::path& file, int reloads) {
    Gtk::Window window;
    window.set_default_size(700, 900);
    window.present();
    measureBareLoads(window, contentOf(file), 20);
    Preview preview(window, file);
    preview.measureReloads(reloads);
    preview.measureKeysInThePage(20);
    preview.measureCrashes(5);
}

} // namespace
} // namespace corvanta

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: preview-reloads FILE RELOADS\n";
        return 2;
    }
    if (gtk_init_check() == FALSE) {
        std::cerr << "preview-reloads needs a display; run it through scripts/with-virtual-display\n";
        return 2;
    }
    Gtk::init_gtkmm_internals();
    try {
        corvanta::measure(std::filesystem::absolute(argv[1]), std::stoi(argv[2]));
    } catch (const std::exception& error) {
        std::cerr << "preview-reloads: " << error.what() << '\n';
        return 1;
    }
}
